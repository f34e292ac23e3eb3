#pragma once

#include "platform/qt/Dialog.h"
#include "reports/server/ReportPlan.h"

#include <memory>

namespace Ui
{
class ReportSettingsDlg;
}

/// Asks where reports go.
class CReportSettingsDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CReportSettingsDlg(QWidget* parent = nullptr);
    ~CReportSettingsDlg() override;

    CReportPlan m_plan;

protected:
    void FillLists() override;
    void ShowFields() override;
    bool TakeFields() override;

private:
    void EnableFields();
    void Browse();

    std::unique_ptr<Ui::ReportSettingsDlg> const m_ui;
    bool m_bFolderChosen = false; ///< of the folder that the field shows
};
