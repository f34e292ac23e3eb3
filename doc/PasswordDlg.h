#pragma once

#include "platform/qt/Dialog.h"

#include <QString>

#include <memory>

namespace Ui
{
class PasswordDlg;
}

/// Asks for the centre's password. Does not know whether it is right.
class CPasswordDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CPasswordDlg(QWidget* parent = nullptr);
    ~CPasswordDlg() override;

    QString m_strPassword; ///< as entered, also empty; shown masked when the dialog opens again

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::PasswordDlg> const m_ui;
};
