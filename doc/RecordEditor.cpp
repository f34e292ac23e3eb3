#include "doc/RecordEditor.h"

#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <QCoreApplication>

#include <optional>

namespace
{

QString Tr(char const* text)
{
    return QCoreApplication::translate("RecordEditor", text);
}

CSaveOutcome Save(QWidget& form, QString const& waitText, CRecordEditor& editor)
{
    CWaitCursor const waitCursor;
    std::optional<CWaitDlg> wait;
    if (!waitText.isEmpty()) {
        wait.emplace(waitText, &form);
    }
    return editor.Save();
}

bool AskToTakeOver(QWidget& form, QString const& record, CSaveOutcome outcome)
{
    auto const text = outcome == CSaveOutcome::changed
        ? Tr("This %1 has been changed at another place\n"
             "since you opened the form.\n"
             "Do you want to replace those changes with yours?")
        : Tr("This %1 has been deleted at another place\n"
             "since you opened the form.\n"
             "Do you want to add the %1 again?");
    return Ask(&form, text.arg(record),
        outcome == CSaveOutcome::changed ? CQuestion::destroying : CQuestion::yesNo);
}

} // namespace

bool SaveForm(QWidget& form, QString const& record, QString const& waitText, CRecordEditor& editor,
    std::function<void()> const& tellRefused)
{
    for (;;) {
        auto const outcome = Save(form, waitText, editor);
        switch (outcome) {
        case CSaveOutcome::saved:
            return true;
        case CSaveOutcome::changed:
        case CSaveOutcome::deleted:
            if (!AskToTakeOver(form, record, outcome)) {
                return false;
            }
            editor.TakeOver();
            break;
        case CSaveOutcome::refused:
            tellRefused();
            return false;
        case CSaveOutcome::failed:
            Tell(&form,
                Tr("Error: the %1 was not saved.\nYour entries are still in the form.").arg(record),
                CMessageIcon::exclamation, ToQt(editor.Status().Text()));
            return false;
        }
    }
}
