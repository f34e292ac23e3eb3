#pragma once

#include "platform/qt/Dialog.h"

#include <QStringListModel>

#include <memory>

namespace Ui
{
class CompareDlg;
}

/// The texts of a comparison, which depend on the kind of record.
struct CCompareTexts
{
    int m_nDialogID = 0; ///< control number of the dialog
    QString m_strTitle;
    QString m_strPrompt;
    QString m_strFirst; ///< of the label over the first list, with its mnemonic
    QString m_strSecond;
    QString m_strNoneSelected; ///< refuses a list without a selection
    QString m_strSameSelected; ///< refuses the same record twice
};

/// Asks which two records of a member are to be compared.
class CCompareDlg : public CDialog
{
    Q_OBJECT
public:
    /// The dates of the records, in the order in which they are shown.
    CCompareDlg(CCompareTexts texts, QStringList const& dates, QWidget* parent = nullptr);
    ~CCompareDlg() override;

    // Places in the list of dates: selected at first, and after OK what was chosen.
    int m_nFirst = 0;
    int m_nSecond = 0;

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    CCompareTexts const m_texts;
    std::unique_ptr<Ui::CompareDlg> const m_ui;
    QStringListModel m_dates;
};
