#include "app/CorvanaApp.h"
#include "platform/db/Process.h"
#include "store/sets/DatabaseSession.h"
#include "ui/Convert.h"
#include "ui/Messages.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

/// For runs that nobody watches: messages go to the standard error output.
class CMessagePrinter : public CMessageShower
{
public:
    CMessagePrinter() { SetMessageShower(this); }
    ~CMessagePrinter() override { SetMessageShower(nullptr); }

    bool Show(QWidget*, CMessage const& message) override
    {
        Print(message.m_strText);
        if (!message.m_strDetail.isEmpty()) {
            Print(message.m_strDetail);
        }
        return false;
    }

    static void Print(QString const& text)
    {
        std::fprintf(stderr, "corvana: %s\n", qUtf8Printable(text));
    }
};

/// The arguments of the program.
class CArguments
{
public:
    CArguments(int argc, char** argv)
    {
        m_parser.setApplicationDescription(u"The administration console of a fitness center."_s);
        m_parser.addOptions({m_data, m_screenshot, m_help, m_version});
        QStringList words;
        for (int i = 0; i < argc; ++i) {
            words += QString::fromLocal8Bit(argv[i]);
        }
        m_bParsed = m_parser.parse(words);
    }

    /// What is wrong with them; empty when nothing is.
    QString Fault() const
    {
        if (!m_bParsed) {
            return m_parser.errorText();
        }
        if (!m_parser.positionalArguments().isEmpty()) {
            return u"Unknown argument '%1'."_s.arg(m_parser.positionalArguments().constFirst());
        }
        for (auto const* const option : {&m_data, &m_screenshot}) {
            if (m_parser.isSet(*option) && m_parser.value(*option).isEmpty()) {
                return u"The value of '--%1' is empty."_s.arg(option->names().constFirst());
            }
        }
        return {};
    }

    bool AsksForHelp() const { return m_parser.isSet(m_help); }
    bool AsksForVersion() const { return m_parser.isSet(m_version); }
    QString HelpText() const { return m_parser.helpText(); }
    QString Data() const { return m_parser.value(m_data); }
    QString Screenshot() const { return m_parser.value(m_screenshot); }

private:
    QCommandLineOption const m_data{
        u"data"_s, u"Use the database files in this folder."_s, u"DIR"_s};
    QCommandLineOption const m_screenshot{u"screenshot"_s,
        u"Save a picture (PNG) of the main window and end; needs no display."_s, u"FILE"_s};
    QCommandLineOption const m_help{{u"h"_s, u"help"_s}, u"Show this help and end."_s};
    QCommandLineOption const m_version{{u"v"_s, u"version"_s}, u"Show the version and end."_s};
    QCommandLineParser m_parser;
    bool m_bParsed = false;
};

bool HasDisplay()
{
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("DISPLAY")
        || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

int TakePicture(int& argc, char** argv, QString const& file)
{
    if (!HasDisplay()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    CMessagePrinter const messages;
    CCorvanaApp app(argc, argv);
    if (app.InitForPicture() != CCorvanaApp::Start::shown) {
        return kFailed;
    }
    if (!app.SavePicture(file)) {
        CMessagePrinter::Print(u"The picture '%1' cannot be saved."_s.arg(file));
        return kFailed;
    }
    return 0;
}

int Run(int& argc, char** argv)
{
    if (!HasDisplay()) {
        CMessagePrinter::Print(u"There is no display to show the window on."_s);
        return kFailed;
    }
    CCorvanaApp app(argc, argv);
    switch (app.InitInstance()) {
    case CCorvanaApp::Start::shown:
        return app.ExitInstance(QApplication::exec());
    case CCorvanaApp::Start::failed:
        return kFailed;
    case CCorvanaApp::Start::secondCopy:
        break;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    ProtectProcess();

    CArguments const arguments(argc, argv);
    auto const fault = arguments.Fault();
    if (!fault.isEmpty()) {
        CMessagePrinter::Print(fault);
        std::fputs("Try 'corvana --help'.\n", stderr);
        return kWrongUse;
    }
    if (arguments.AsksForHelp()) {
        QCoreApplication const nameForHelp(argc, argv);
        std::fputs(qUtf8Printable(arguments.HelpText()), stdout);
        return 0;
    }
    if (arguments.AsksForVersion()) {
        std::puts("Corvana 3.2.0.0");
        return 0;
    }
    if (!arguments.Data().isEmpty()) {
        auto const folder = QDir::current().absoluteFilePath(arguments.Data());
        CDatabaseSession::Get().SetDataFolder(FromQt(folder));
        qputenv("CORVANA_DATA", QFile::encodeName(folder)); // for the companions
    }
    return arguments.Screenshot().isEmpty() ? Run(argc, argv)
                                            : TakePicture(argc, argv, arguments.Screenshot());
}
