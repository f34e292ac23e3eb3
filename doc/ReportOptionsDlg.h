#pragma once

#include "platform/qt/Dialog.h"
#include "store/sets/DAOReport.h"
#include "ui/FormFields.h"

#include <memory>

namespace Ui
{
class ReportOptionsDlg;
}

/// Asks what a list of members or a summary of workouts is to contain.
class CReportOptionsDlg : public CDialog
{
    Q_OBJECT
public:
    enum class Kind
    {
        members,
        workouts ///< asks for the range of dates too
    };

    explicit CReportOptionsDlg(Kind kind, QWidget* parent = nullptr);
    ~CReportOptionsDlg() override;

    bool m_bMemberIDs = true;
    std::int32_t m_nStatus = CDAOReport::roAll; ///< roAll, roCurrent or roPast
    bool m_bAllWorkouts = true; ///< false: those from the first to the second day
    CEFOleDateTime m_dtFrom = CEFOleDateTime::GetCurrentTime(); ///< its time of day means nothing
    CEFOleDateTime m_dtTo = m_dtFrom; ///< the same

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::ReportOptionsDlg> const m_ui;
    CFormFields m_fields;
    CFormFields m_range; ///< which is only taken when it is asked for
};
