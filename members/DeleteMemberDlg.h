#pragma once

#include "platform/qt/Dialog.h"

#include <QString>

#include <memory>

namespace Ui
{
class DeleteMemberDlg;
}

/// Shows which member is about to be deleted, and asks.
class CDeleteMemberDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CDeleteMemberDlg(QWidget* parent = nullptr);
    ~CDeleteMemberDlg() override;

    QString m_strMember; ///< name
    QString m_strID;
    QString m_strStatus;
    QString m_strExpiration; ///< date, may be empty

protected:
    void ShowFields() override;

private:
    std::unique_ptr<Ui::DeleteMemberDlg> const m_ui;
};
