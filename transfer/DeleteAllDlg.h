#pragma once

#include "platform/qt/Dialog.h"

#include <cstdint>
#include <memory>

namespace Ui
{
class DeleteAllDlg;
}

/// Asks whose records are to be deleted.
class CDeleteAllDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CDeleteAllDlg(QString const& caption, QWidget* parent = nullptr);
    ~CDeleteAllDlg() override;

    std::int32_t m_lMemberID = 0; ///< 0 for all members

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::DeleteAllDlg> const m_ui;
};
