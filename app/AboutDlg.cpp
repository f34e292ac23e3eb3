#include "app/AboutDlg.h"

#include "ui_AboutDlg.h"

#include "ui/ControlID.h"

#include <QIcon>
#include <QStyle>

namespace
{

constexpr int kDialogID = 100;

} // namespace

CAboutDlg::CAboutDlg(QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::AboutDlg>())
{
    m_ui->setupUi(this);
    SetControlID(this, kDialogID);
    auto const size = 2 * style()->pixelMetric(QStyle::PM_LargeIconSize);
    m_ui->iconLabel->setPixmap(windowIcon().pixmap(size, size));
}

CAboutDlg::~CAboutDlg() = default;
