#include "app/CorvanaApp.h"

#include "app/AboutDlg.h"
#include "app/MainFrame.h"
#include "doc/CorvanaDoc.h"
#include "platform/qt/Companions.h"
#include "platform/qt/Settings.h"
#include "platform/qt/SingleInstance.h"
#include "store/sets/DatabaseSession.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

#include <QDeadlineTimer>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLocale>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QWindow>

#include <clocale>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kSection = "settings";
constexpr std::int32_t kAbsent = -1;
constexpr int kMaxExposeMs = 5000;

std::int32_t CCorvanaApp::*MemberOf(CAppOption option)
{
    switch (option) {
    case CAppOption::loadMembers:
        return &CCorvanaApp::m_bLoadMembers;
    case CAppOption::autoBackup:
        return &CCorvanaApp::m_bAutoBackup;
    case CAppOption::reportServer:
        break;
    }
    return &CCorvanaApp::m_bReportServer;
}

/// Finds the companion or starts it; whether it runs afterwards.
bool EnsureCompanion(CCompanion const& companion)
{
    CWaitCursor const wait;
    return FindCompanion(companion) || StartCompanion(companion);
}

} // namespace

CCorvanaApp::CCorvanaApp(int& argc, char** argv)
    : QApplication(argc, argv)
{
    // The user's locale came with the application object. Texts here are English everywhere, and
    // numbers in files must never meet a comma.
    std::setlocale(LC_NUMERIC, "C");
    QLocale locale(QLocale::English, QLocale::UnitedStates);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QLocale::setDefault(locale);

    Q_INIT_RESOURCE(app);
    setApplicationName(u"corvana"_s);
    setApplicationDisplayName({}); // titles stand without the program's name behind them
    setDesktopFileName(u"corvana"_s);
    setWindowIcon(QIcon(u":/icons/corvana.png"_s));
}

CCorvanaApp::~CCorvanaApp()
{
    CloseDocument();
    CDatabaseSession::Get().ShutDown();
}

CCorvanaApp::Start CCorvanaApp::InitInstance()
{
    if (IsCORVAppRunning("Corvana", true)) {
        return Start::secondCopy;
    }
    CDatabaseSession::Get().ShutDown(); // every run starts from a fresh engine
    LoadOptions();
    return OpenDocument();
}

CCorvanaApp::Start CCorvanaApp::InitForPicture()
{
    LoadOptions();
    m_bReportServer = 0;
    return OpenDocument();
}

CCorvanaApp::Start CCorvanaApp::OpenDocument()
{
    m_doc = std::make_unique<CCorvanaDoc>(*this);
    m_frame = std::make_unique<CMainFrame>(*m_doc, *this);
    m_doc->SetViews(m_frame.get());
    if (!m_doc->OnNewDocument()) {
        return Start::failed;
    }
    m_frame->show();
    return Start::shown;
}

void CCorvanaApp::CloseDocument()
{
    if (m_doc != nullptr) {
        m_doc->SetViews(nullptr);
    }
    m_frame.reset();
    m_doc.reset();
}

int CCorvanaApp::ExitInstance(int code)
{
    CloseDocument();
    StartBackupUtility();
    StopReportServer();
    CDatabaseSession::Get().ShutDown();
    if (!StoreOptions()) {
        Tell(nullptr, tr("Error: the options could not be saved."));
    }
    return code;
}

bool CCorvanaApp::SavePicture(QString const& file)
{
    QDeadlineTimer const limit(kMaxExposeMs);
    while (!m_frame->windowHandle()->isExposed() && !limit.hasExpired()) {
        processEvents(QEventLoop::AllEvents, 10);
    }
    processEvents(); // the tree loads after its first paint if the user wants it
    return m_frame->grab().save(file, "PNG");
}

void CCorvanaApp::LoadOptions()
{
    auto const load = [](char const* entry, std::int32_t& option) {
        auto const value = GetProfileInt(kSection, entry, kAbsent);
        option = value == kAbsent ? option : value;
    };
    load("report_server", m_bReportServer);
    load("load_members", m_bLoadMembers);
    load("auto_backup", m_bAutoBackup);
}

bool CCorvanaApp::StoreOptions() const
{
    bool stored = WriteProfileInt(kSection, "report_server", m_bReportServer);
    stored = WriteProfileInt(kSection, "load_members", m_bLoadMembers) && stored;
    return WriteProfileInt(kSection, "auto_backup", m_bAutoBackup) && stored;
}

bool CCorvanaApp::IsOptionOn(CAppOption option) const
{
    return this->*MemberOf(option) != 0;
}

void CCorvanaApp::ToggleOption(CAppOption option)
{
    auto& value = this->*MemberOf(option);
    value = value == 0 ? 1 : 0;
}

bool CCorvanaApp::StartReportServer()
{
    return EnsureCompanion(kReportServer);
}

bool CCorvanaApp::StartBackupUtility()
{
    if (m_bAutoBackup == 0 || EnsureCompanion(kBackupUtility)) {
        return true;
    }
    Tell(m_frame.get(), tr("Error: the Corvana backup utility failed to initialize on this PC."));
    return false;
}

void CCorvanaApp::StopReportServer()
{
    QuitCompanion(kReportServer);
}

void CCorvanaApp::ShowAbout()
{
    CAboutDlg(m_frame.get()).exec();
}

void CCorvanaApp::SetUpPrinter()
{
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        Tell(m_frame.get(), tr("Sorry, no printer is installed on this PC."));
        return;
    }
    if (m_printer == nullptr) {
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    QPrintDialog dialog(m_printer.get(), m_frame.get());
    dialog.setWindowTitle(tr("Print Setup"));
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (auto* const buttons = dialog.findChild<QDialogButtonBox*>()) {
        buttons->button(QDialogButtonBox::Ok)->setText(tr("OK")); // not "Print": nothing is
    }
    dialog.exec();
}

void CCorvanaApp::Exit()
{
    m_frame->close();
}
