#pragma once

#include "platform/qt/Dialog.h"
#include "store/EFOleDateTime.h"

#include <memory>

namespace Ui
{
class DateDlg;
}

/// Asks for one day.
class CDateDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CDateDlg(QWidget* parent = nullptr);
    ~CDateDlg() override;

    /// Now, unless the caller sets it. Keeps its time of day when the day is left as it is.
    CEFOleDateTime m_dtDate = CEFOleDateTime::GetCurrentTime();
    bool m_bNoFuture = true; ///< a day after today is not accepted

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::DateDlg> const m_ui;
};
