#include "ui/WaitDlg.h"

#include "ui/ControlID.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QFrame>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kTextID = 1302;
constexpr QSize kDialogUnits(140, 27);
constexpr int kFrameMs = 1000 / 60;
constexpr int kMaxExposeMs = 500; // a window manager that never shows the window stops no work

QWidget* OwnerOf(QWidget* asked)
{
    if (asked != nullptr) {
        return asked->window();
    }
    if (auto* const dialog = QApplication::activeModalWidget()) {
        return dialog;
    }
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMainWindow*>(window) != nullptr && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

} // namespace

CWaitDlg::CWaitDlg(QString const& sentence, QWidget* owner)
    : CWaitDlg(sentence, owner, kTextID, kDialogUnits)
{
    Present();
}

CWaitDlg::CWaitDlg(QString const& sentence, QWidget* owner, int textID, QSize dialogUnits)
    : QDialog(OwnerOf(owner), Qt::Dialog | Qt::FramelessWindowHint)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(tr("Please Wait")); // read out, though there is no caption to show it

    auto* const frame = new QFrame(this);
    frame->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    // A dialog unit is a quarter of a letter wide and an eighth of one high.
    auto const letter = fontMetrics();
    frame->setMinimumSize(dialogUnits.width() * letter.averageCharWidth() / 4,
        dialogUnits.height() * letter.height() / 8);
    auto* const outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(frame);

    auto* const text = new QLabel(sentence.isEmpty() ? tr("Please wait...") : sentence, frame);
    text->setTextFormat(Qt::PlainText);
    text->setAlignment(Qt::AlignCenter);
    text->setObjectName(u"waitText"_s);
    SetControlID(text, textID);
    m_pContent = new QVBoxLayout(frame);
    m_pContent->addWidget(text);
}

CWaitDlg::~CWaitDlg()
{
    // Input that waits in the queue must meet a modal window, or it reaches the one behind.
    Pump();
    hide();
}

void CWaitDlg::Present()
{
    // By itself a dialog is placed with room for a caption, which this one has not.
    adjustSize();
    auto const around = parentWidget() != nullptr ? parentWidget()->frameGeometry()
                                                  : screen()->availableGeometry();
    move(around.center() - rect().center());
    show();
    QDeadlineTimer const limit(kMaxExposeMs);
    while (!windowHandle()->isExposed() && !limit.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
    }
    repaint(); // before the window is exposed this paints nothing
    Pump();
}

void CWaitDlg::Pump()
{
    QCoreApplication::processEvents();
    m_lastPump.start();
}

bool CWaitDlg::IsPumpDue() const
{
    return m_lastPump.hasExpired(kFrameMs);
}

void CWaitDlg::AddStopButton()
{
    m_pStopButton = new QPushButton(tr("&Stop"));
    m_pStopButton->setObjectName(u"stopButton"_s);
    m_pStopButton->setAutoDefault(false); // Enter may still be held from the question before
    connect(m_pStopButton, &QPushButton::clicked, this, &CWaitDlg::Stop);
    m_pContent->addWidget(m_pStopButton, 0, Qt::AlignHCenter);
}

void CWaitDlg::Stop()
{
    m_bStopped = true;
    m_pStopButton->setEnabled(false); // seen to be pressed, however long the last step takes
}

void CWaitDlg::reject()
{
    if (m_pStopButton != nullptr) {
        Stop();
    }
}

void CWaitDlg::closeEvent(QCloseEvent* event)
{
    event->ignore();
}
