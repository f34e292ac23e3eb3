#include "ui/ProgressDlg.h"

#include "ui/ControlID.h"

#include <QBoxLayout>
#include <QProgressBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kTextID = 1267;
constexpr int kBarID = 1265;
constexpr QSize kDialogUnits(157, 44);
constexpr int kBarValues = 65536; // the bar counts in 16 bits

} // namespace

CProgressDlg::CProgressDlg(QWidget* owner, QString const& sentence, int count, CStoppable stoppable)
    : CWaitDlg(sentence, owner, kTextID, kDialogUnits)
    , m_pBar(new QProgressBar)
    , m_nMaximum(count % kBarValues)
{
    m_pBar->setRange(0, std::max(m_nMaximum, 1)); // a range of 0 would show a busy bar
    m_pBar->setValue(0);
    m_pBar->setObjectName(u"progressBar"_s);
    m_pBar->setAccessibleName(tr("Progress"));
    SetControlID(m_pBar, kBarID);
    Content()->addWidget(m_pBar);
    if (stoppable == CStoppable::yes) {
        AddStopButton();
    }
    Present();
}

CProgressDlg::~CProgressDlg()
{
    m_pBar->setValue(m_nPosition);
}

void CProgressDlg::Step(int rows)
{
    if (m_nMaximum > 0 && rows > 0) {
        m_nPosition = (m_nPosition + rows - 1) % m_nMaximum + 1;
    }
    if (IsPumpDue()) {
        m_pBar->setValue(m_nPosition);
        Pump();
    }
}
