#pragma once

#include <QString>

class QWidget;

/// One question for a file as the user gets to see it.
struct CFileQuestion
{
    QString m_strTitle;
    QString m_strName; ///< suggested, with or without folder; may be empty
    QString m_strFilter; ///< "Data Files (*.dat)", several separated by ";;"
    bool m_bSave = false; ///< false: the file must exist
    bool m_bFolder = false; ///< asks for a folder that exists instead
};

/// Asks for files and folders. The usual one opens file dialogs.
class CFileAsker
{
public:
    CFileAsker() = default;
    virtual ~CFileAsker() = default;
    CFileAsker(CFileAsker const&) = delete;
    CFileAsker& operator=(CFileAsker const&) = delete;

    /// Returns the full path, empty when the user cancels.
    virtual QString Ask(QWidget* parent, CFileQuestion const& question) = 0;
};

/// Puts another one in charge, null for the usual one, and returns the one before. Not owned.
CFileAsker* SetFileAsker(CFileAsker* asker);

/// Asks the user for a file, with the wait cursor put away. No other code opens a file dialog.
/// Whoever writes the file finds out that it exists and asks what to do about it.
QString AskForFile(QWidget* parent, CFileQuestion const& question);
