#include "doc/CorvanaDoc.h"
#include "doc/PasswordDlg.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

namespace
{

bool IsRight(CDAOCenter const& center, QString const& password)
{
    CWaitCursor const wait;
    return center.ChkPassword(FromQt(password).c_str());
}

} // namespace

bool CCorvanaDoc::VerifyPassword()
{
    CPasswordDlg dialog(Window());
    while (dialog.exec() == QDialog::Accepted) {
        if (IsRight(m_setCenter, dialog.m_strPassword)) {
            return true;
        }
        if (!Ask(Window(), tr("Sorry, you have entered an incorrect password"),
                CQuestion::retryCancel)) {
            return false;
        }
    }
    return false;
}
