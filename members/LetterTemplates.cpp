#include "members/LetterTemplates.h"

#include "store/text/EFFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringConverter>

using namespace Qt::StringLiterals;

namespace
{

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CLetterTemplates)
};

constexpr int kMostNameBytes = 1 << 16;
constexpr int kMostBodyBytes = 1 << 20;
constexpr int kLineLetters = 199;

/// As many letters from the front as there may be, without half of one.
qsizetype Fitting(QStringView text, qsizetype most)
{
    if (text.size() <= most) {
        return text.size();
    }
    return text[most - 1].isHighSurrogate() && most > 1 ? most - 1 : most;
}

/// Nothing when these bytes are no text.
std::optional<QString> Decode(QByteArray const& bytes)
{
    auto const mark = QStringConverter::encodingForData(bytes);
    QStringDecoder decoder(mark.value_or(QStringConverter::Utf8));
    QString text = decoder(bytes);
    if (decoder.hasError() && !mark) {
        QStringDecoder windows("windows-1252");
        text = windows.isValid() ? QString(windows(bytes)) : QString::fromLatin1(bytes);
    } else if (decoder.hasError()) {
        return {};
    }
    return text.contains(QChar::Null) ? std::nullopt : std::optional(text);
}

/// Each line with its end.
QString Lines(QStringList const& lines)
{
    return lines.isEmpty() ? QString() : lines.join(u'\n') + u'\n';
}

QString TooLarge(int mostBytes)
{
    return CTexts::tr("It has more than %1 bytes.").arg(mostBytes);
}

} // namespace

CLetterTemplates::CLetterTemplates(std::string folder)
{
    CEFFile::ParsePath(folder);
    m_strFolder = QFile::decodeName(folder.c_str());
}

QString CLetterTemplates::NamesFile() const
{
    return m_strFolder + u"tnames.txt"_s;
}

QString CLetterTemplates::BodyFile(int index) const
{
    return m_strFolder + u"templ%1.txt"_s.arg(index);
}

std::optional<QStringList> CLetterTemplates::ReadNames(int letters)
{
    auto const text = ReadText(NamesFile(), kMostNameBytes);
    if (!text) {
        return {};
    }
    auto lines = text->split(u'\n');
    if (lines.constLast().isEmpty()) {
        lines.removeLast(); // behind the last line end
    }
    QStringList names;
    for (auto const& line : lines) {
        if (line.startsWith(kEndMark)) {
            break;
        }
        names += line.left(Fitting(line, letters));
    }
    return names;
}

std::optional<QString> CLetterTemplates::ReadBody(int index)
{
    auto const text = ReadText(BodyFile(index), kMostBodyBytes);
    if (!text) {
        return {};
    }
    QString body;
    for (auto rest : QStringView(*text).split(u'\n')) {
        do {
            auto const size = Fitting(rest, kLineLetters);
            body += rest.first(size);
            body += u'\n';
            rest = rest.sliced(size);
        } while (!rest.isEmpty());
    }
    return body;
}

bool CLetterTemplates::Write(
    QStringList const& names, int index, std::optional<QStringList> const& body)
{
    QSaveFile namesFile(NamesFile());
    QSaveFile bodyFile(BodyFile(index));
    // Both are whole and beside the old ones before either takes its place.
    return Put(namesFile, Lines(names.mid(0, kMostNames)) + kEndMark, kMostNameBytes)
        && (!body || Put(bodyFile, Lines(*body), kMostBodyBytes)) && (!body || Exchange(bodyFile))
        && Exchange(namesFile);
}

bool CLetterTemplates::Put(QSaveFile& file, QString const& text, int mostBytes)
{
    auto const bytes = text.toUtf8();
    if (bytes.size() > mostBytes) {
        return Fail(file.fileName(), TooLarge(mostBytes));
    }
    return (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
        || Fail(file.fileName(), file.errorString());
}

bool CLetterTemplates::Exchange(QSaveFile& file)
{
    return file.commit() || Fail(file.fileName(), file.errorString());
}

/// The text of a file, its lines ended by line feeds alone.
std::optional<QString> CLetterTemplates::ReadText(QString const& path, int mostBytes)
{
    QFile file(path);
    // To open what is no file may take until somebody writes into it.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        Fail(path, CTexts::tr("It is no file."));
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        Fail(path, file.errorString());
        return {};
    }
    auto const bytes = file.read(mostBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        Fail(path, file.errorString());
        return {};
    }
    if (bytes.size() > mostBytes) {
        Fail(path, TooLarge(mostBytes));
        return {};
    }
    auto text = Decode(bytes);
    if (!text) {
        Fail(path, CTexts::tr("It is not a text file."));
        return {};
    }
    return text->replace(u"\r\n"_s, u"\n"_s);
}

bool CLetterTemplates::Fail(QString const& path, QString const& reason)
{
    m_strFailedFile = path;
    m_strReason = reason;
    return false;
}
