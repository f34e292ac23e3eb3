#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <string>

class QSaveFile;

/// The templates of merge letters, as text files in a folder: "tnames.txt" has a name on each line
/// and "@" behind the last, "templ0.txt" the letter's body of the first name, and so on.
///
/// The files come from elsewhere. What is no text, or larger than any letter, is not read; UTF-8,
/// UTF-16 with its mark, and else Windows-1252 is. Files are written in UTF-8, each beside the old
/// one, whose place it takes when it is on the disk.
class CLetterTemplates
{
public:
    static constexpr char16_t kEndMark = u'@'; ///< begins the line behind the last name
    static constexpr int kMostNames = 10; ///< that a file written here has
    static constexpr int kListedLetters = 49; ///< of a name, to show it
    static constexpr int kStoredLetters = 29; ///< of a name, to write it
    static constexpr int kMostLetters = 28; ///< of a name that is entered

    /// Of the folder that an environment variable names; empty for the current folder.
    explicit CLetterTemplates(std::string folder);

    /// The names, cut to so many letters. Nothing when the file cannot be read.
    std::optional<QStringList> ReadNames(int letters);
    /// The body as it is edited: each line of the file with its end, and an empty one behind the
    /// file's last line end. A line of more than 199 letters goes on in the next one. Nothing when
    /// the file cannot be read.
    std::optional<QString> ReadBody(int index);
    /// Writes the first names, and the body of a template, line by line; a body that is not given
    /// stays. False when something could not be written: then neither is, unless the disk failed in
    /// between.
    bool Write(QStringList const& names, int index, std::optional<QStringList> const& body);

    // Of the last of these that failed: the file and the reason.
    QString const& FailedFile() const { return m_strFailedFile; }
    QString const& Reason() const { return m_strReason; }

private:
    QString NamesFile() const;
    QString BodyFile(int index) const;
    std::optional<QString> ReadText(QString const& path, int mostBytes);
    bool Put(QSaveFile& file, QString const& text, int mostBytes);
    bool Exchange(QSaveFile& file);
    bool Fail(QString const& path, QString const& reason);

    QString m_strFolder;
    QString m_strFailedFile;
    QString m_strReason;
};
