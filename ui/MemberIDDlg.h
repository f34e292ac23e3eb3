#pragma once

#include "platform/qt/Dialog.h"

#include <cstdint>
#include <memory>

namespace Ui
{
class MemberIDDlg;
}

/// Asks which member a command is for. Looks the member up, if asked to; changes nothing.
class CMemberIDDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CMemberIDDlg(QWidget* parent = nullptr);
    ~CMemberIDDlg() override;

    std::int32_t m_lMemberID = 0; ///< 1 to 999999999 after OK; shown selected, also 0
    bool m_bMustExist = false; ///< only the ID of a member is accepted

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::MemberIDDlg> const m_ui;
};
