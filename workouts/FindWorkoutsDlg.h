#pragma once

#include "platform/qt/Dialog.h"
#include "store/sets/DAOWk.h"
#include "ui/FormFields.h"

#include <memory>

namespace Ui
{
class FindWorkoutsDlg;
}

/// Asks which workouts to look for.
class CFindWorkoutsDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CFindWorkoutsDlg(QWidget* parent = nullptr);
    ~CFindWorkoutsDlg() override;

    std::int32_t m_nOk = CDAOWk::okAll; ///< a CDAOWk::ok
    CEFOleDateTime m_dtFrom = CEFOleDateTime::GetCurrentTime(); ///< its time of day means nothing
    CEFOleDateTime m_dtTo = m_dtFrom; ///< the same
    std::int32_t m_lMemberID = 0; ///< 0 for all members

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    bool TakeMember(std::int32_t& memberID);

    std::unique_ptr<Ui::FindWorkoutsDlg> const m_ui;
    CFormFields m_fields;
};
