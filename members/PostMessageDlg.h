#pragma once

#include "platform/qt/Dialog.h"
#include "ui/FormFields.h"

#include <memory>
#include <string>

namespace Ui
{
class PostMessageDlg;
}

/// Asks for a message that members see at their next check-in.
class CPostMessageDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CPostMessageDlg(QWidget* parent = nullptr);
    ~CPostMessageDlg() override;

    std::string m_strMessage; ///< may be empty
    bool m_bReplace = false; ///< also where there is a message already

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::PostMessageDlg> const m_ui;
    CFormFields m_fields;
};
