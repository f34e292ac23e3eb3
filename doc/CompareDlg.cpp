#include "doc/CompareDlg.h"

#include "ui_CompareDlg.h"

#include "ui/ControlID.h"
#include "ui/Messages.h"

namespace
{

void Select(QListView& list, int row)
{
    list.setCurrentIndex(list.model()->index(row, 0));
}

/// -1 when there is none: the current row can be unselected.
int SelectedRow(QListView const& list)
{
    return list.selectionModel()->selectedRows().value(0).row();
}

} // namespace

CCompareDlg::CCompareDlg(CCompareTexts texts, QStringList const& dates, QWidget* parent)
    : CDialog(parent)
    , m_texts(std::move(texts))
    , m_ui(std::make_unique<Ui::CompareDlg>())
    , m_dates(dates)
{
    m_ui->setupUi(this);
    SetControlID(this, m_texts.m_nDialogID);
    setWindowTitle(m_texts.m_strTitle);
    m_ui->promptLabel->setText(m_texts.m_strPrompt);
    for (auto const& [label, list, text] :
        {std::tuple(m_ui->firstLabel, m_ui->firstList, m_texts.m_strFirst),
            {m_ui->secondLabel, m_ui->secondList, m_texts.m_strSecond}}) {
        label->setText(text);
        list->setAccessibleName(QString(text).remove(u'&').remove(u':')); // labels name no lists
        list->setModel(&m_dates);
    }
}

CCompareDlg::~CCompareDlg() = default;

void CCompareDlg::ShowFields()
{
    Select(*m_ui->firstList, m_nFirst);
    Select(*m_ui->secondList, m_nSecond);
}

bool CCompareDlg::TakeFields()
{
    int const first = SelectedRow(*m_ui->firstList);
    int const second = SelectedRow(*m_ui->secondList);
    if (first < 0) {
        return Refuse(m_ui->firstList, m_texts.m_strNoneSelected);
    }
    if (second < 0) {
        return Refuse(m_ui->secondList, m_texts.m_strNoneSelected);
    }
    if (first == second) {
        return Refuse(m_ui->secondList, m_texts.m_strSameSelected);
    }
    m_nFirst = first;
    m_nSecond = second;
    return true;
}
