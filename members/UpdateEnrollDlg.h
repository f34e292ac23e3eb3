#pragma once

#include "platform/qt/Dialog.h"
#include "store/EFOleDateTime.h"
#include "ui/FormFields.h"

#include <memory>

namespace Ui
{
class UpdateEnrollDlg;
}

/// Asks for the enrolment and the status that take the place of those of several members.
class CUpdateEnrollDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CUpdateEnrollDlg(QWidget* parent = nullptr);
    ~CUpdateEnrollDlg() override;

    CEFOleDateTime m_dtEnroll; ///< today, unless the caller sets it
    CEFOleDateTime m_dtExpire; ///< the same
    int m_nEnrollPer = -1; ///< a CDAODef::enrollper, -1 for none
    bool m_bIncentive = false; ///< in the incentive club
    bool m_bCurrent = false; ///< else a past member

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::UpdateEnrollDlg> const m_ui;
    CFormFields m_fields;
};
