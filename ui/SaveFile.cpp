#include "ui/SaveFile.h"

#include "ui/Messages.h"
#include "ui/WaitCursor.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

struct CSaveTexts
{
    Q_DECLARE_TR_FUNCTIONS(CSaveTexts)
};

bool Fail(QWidget* parent, QString const& name, QString const& reason)
{
    Tell(parent, CSaveTexts::tr("Error: the file \"%1\" was not saved.").arg(name),
        CMessageIcon::none, reason);
    return false;
}

} // namespace

bool SaveFile(QWidget* parent, CFileQuestion const& question, QString const& extension,
    std::function<bool(QIODevice&)> const& write)
{
    auto path = AskForFile(parent, question);
    if (path.isEmpty()) {
        return false;
    }
    if (QFileInfo(path).suffix().isEmpty()) {
        path += extension;
    }
    auto const name = QFileInfo(path).fileName();
    if (QFileInfo::exists(path)
        && !Ask(parent,
            CSaveTexts::tr("The file \"%1\" already exists.\nDo you want to replace it?").arg(name),
            CQuestion::destroying)) {
        return false;
    }
    CWaitCursor const wait;
    QSaveFile file(path);
    bool const isWritten = file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) && write(file);
    // Read first: a commit of what was not written has another reason.
    auto const reason = file.errorString();
    if (!isWritten) {
        file.cancelWriting();
        return Fail(parent, name, reason);
    }
    return file.commit() || Fail(parent, name, file.errorString());
}

QString FileNameOf(QString const& title)
{
    return QString(title).replace(u'/', u'-').simplified();
}
