#include "reports/server/Options.h"

#include "reports/server/RenderOptions.h"
#include "store/services/ReportQueue.h"
#include "store/sets/DAOCls.h"
#include "store/sets/DAOSmMem.h"

#include <CLI/CLI.hpp>
#include <QDir>

#include <cstdio>
#include <memory>

namespace
{

constexpr int kWrongUse = 2;

/// What an option needs and excludes is told when it is given wrongly: the help has no room for it.
class CPlainFormatter : public CLI::Formatter
{
public:
    CPlainFormatter() { column_width(20); }
    std::string make_option_opts(CLI::Option const* option) const override
    {
        auto const type = option->get_type_name();
        return type.empty() ? "" : ' ' + type.substr(0, type.find(':'));
    }
};

std::string CheckNotEmpty(std::string const& text)
{
    return text.empty() ? "It is empty." : "";
}

void AddQueueOptions(CLI::App& app, COptions& options)
{
    auto* const once = app.add_flag(
        "--once", options.isOnce, "Make the reports that wait in the queue, and end");
    auto* const folder
        = app.add_option("--folder", options.folder, "With --once: the folder of PDF files")
              ->type_name("DIR")
              ->check(CheckNotEmpty)
              ->needs(once);
    app.add_option("--printer", options.printer, "With --once: the printer")
        ->type_name("NAME")
        ->check(CheckNotEmpty)
        ->excludes(folder);
    app.add_option(
           "--paper", options.paper, "letter or a4; with --once as in the settings, else letter")
        ->type_name("SIZE")
        ->check(CLI::IsMember({"letter", "a4"}));
    // What the server starts for each report.
    auto* const job = app.add_option("--job", options.task.id)->group("");
    auto* const claim = app.add_option("--claim", options.task.token)->group("")->needs(job);
    job->needs(claim)->excludes(once);
    app.add_flag("--print", options.task.isToPrinter)->group("")->needs(job);
    app.add_option("--copies", options.task.printer.copies)
        ->check(CLI::Range(1, CReportPlan::kMostCopies))
        ->group("")
        ->needs(job);
}

void AddRenderOptions(CLI::App& app, COptions& options, CRenderWords& words)
{
    auto* const render = app.add_option("--render", words.type, "Make one report without the queue")
                             ->type_name("TYPE")
                             ->check(CheckNotEmpty)
                             ->excludes(app.get_option("--once"))
                             ->excludes(app.get_option("--job"))
                             ->excludes(app.get_option("--printer"));
    auto const add = [&](char const* name, auto& value, char const* type, char const* text) {
        return app.add_option(name, value, text)
            ->type_name(type)
            ->needs(render)
            ->group("With --render");
    };
    auto* const pdf
        = add("--pdf", options.pdf, "FILE", "The PDF file to make")->check(CheckNotEmpty);
    render->needs(pdf);
    app.add_flag("--replace", options.replaces, "Replace FILE if it is there already")
        ->needs(render)
        ->group("With --render");
    add("--member", words.member, "ID", "A member's ID")
        ->check(CLI::Range(1, static_cast<int>(CDAOSmMem::kLargestNumber)));
    add("--from", words.from, "DATE",
        "A day, as 2026-11-16; of a record with its time, as 2026-11-16T18:05:09")
        ->check(CheckNotEmpty);
    add("--to", words.to, "DATE", "The last day, or the second record")->check(CheckNotEmpty);
    add("--category", words.category, "NAME", "The category of a class")->check(CheckNotEmpty);
    add("--course", words.course, "NAME", "Its course")->check(CheckNotEmpty);
    add("--section", words.section, "NAME", "Its section")->check(CheckNotEmpty);
    add("--status", words.status, "WHO", "all, current or past members; else all")
        ->check(CLI::IsMember({"all", "current", "past"}));
    app.add_flag("--member-ids", words.memberIDs, "With the IDs of the members")
        ->needs(render)
        ->group("With --render");
    app.add_flag("--all-workouts", words.allWorkouts, "All that are stored, without dates")
        ->needs(render)
        ->group("With --render");
    add("--class-index", words.classIndex, "N",
        "A class of the member; 99 for none, 101 for all, as without it")
        ->check(CLI::Range(1, static_cast<int>(CDAOCls::kAllClasses)));
}

void AddOptions(CLI::App& app, COptions& options, CRenderWords& words)
{
    app.add_option("--data", options.dataFolder,
           "The data folder. Without it, CORVANA_DATA, or else the user's own.")
        ->type_name("DIR")
        ->check(CheckNotEmpty);
    app.formatter(std::make_shared<CPlainFormatter>());
    AddQueueOptions(app, options);
    AddRenderOptions(app, options, words);
    app.set_version_flag("--version", "corvrpt " CORVANA_VERSION, "Print the version and exit");
    app.set_help_flag("--help", "Print this help and exit");
    app.footer("TYPE, by number or name:" + RenderTypes()
        + "\n\nExit status: 0 success; 1 failure, or reports that were not made; 2 wrong usage.");
}

int Refuse(std::string const& text)
{
    std::fprintf(stderr, "corvrpt: %s. See corvrpt --help.\n", text.c_str());
    return kWrongUse;
}

QString Absolute(std::string const& path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(QString::fromStdString(path)));
}

} // namespace

CReportPlan COptions::Plan() const
{
    auto plan = CReportPlan::Load();
    if (!folder.empty()) {
        plan.isToPrinter = false;
        plan.folder = Absolute(folder);
        plan.isFolderChosen = true;
    }
    if (!printer.empty()) {
        plan.isToPrinter = true;
        plan.printer = QString::fromStdString(printer);
        plan.copies = 1;
    }
    plan.isA4 = paper.empty() ? plan.isA4 : paper == "a4";
    return plan;
}

QPageSize::PageSizeId COptions::Paper() const
{
    return paper == "a4" ? QPageSize::A4 : QPageSize::Letter;
}

std::optional<int> ReadOptions(int argc, char** argv, COptions& options)
{
    CRenderWords words;
    CLI::App app(
        "Makes pages of the reports that the console queues. Without --once or --render it\n"
        "stays beside the console as the report server.",
        "corvrpt");
    AddOptions(app, options, words);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return error.get_exit_code() == 0 ? app.exit(error) : Refuse(error.what());
    }
    if (app.count("--job") > 0) {
        options.mode = COptions::Mode::task;
        options.task.printer.printer = QString::fromStdString(options.printer);
        options.task.printer.paper = options.Paper();
    } else if (options.isOnce) {
        options.mode = COptions::Mode::once;
    } else if (app.count("--render") > 0) {
        options.mode = COptions::Mode::render;
        if (auto const fault = ReadRenderWords(words, options.job); !fault.empty()) {
            return Refuse(fault);
        }
    } else if (!options.printer.empty() || !options.paper.empty()) {
        return Refuse("--printer and --paper are for --once and --render; the server has settings");
    }
    return {};
}
