#include "platform/db/Process.h"
#include "store/sets/DAOCenter.h"
#include "tools/BackupCommands.h"
#include "tools/CenterRows.h"
#include "tools/CheckFiles.h"
#include "tools/CompactFiles.h"
#include "tools/CreateCenter.h"
#include "tools/DemoRecords.h"
#include "tools/Outcome.h"
#include "tools/Password.h"
#include "tools/ShowInfo.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

std::string_view DemoCenter();

namespace
{

constexpr int kMostKept = 100'000;

struct COptions
{
    std::string dataFolder;
    std::string settingsFile;
    std::string passwordFile;
    int members = 500;
    std::uint64_t seed = 1;
    std::string backup; ///< a folder for sets, a set, or a data file
    int keep = 0;
    bool replace = false;
};

int Create(CCenterSettings const& settings, std::string const& passwordFile,
    std::function<CDbStatus()> const& fill = {})
{
    auto const folder = CDatabaseSession::Get().DataFolder();
    // Asked before the password, and once more when the files are made.
    auto status = FindOldFiles(folder);
    CSecret password;
    if (status) {
        status = GetPassword(passwordFile, password);
    }
    if (status) {
        status = CreateCenter(folder, settings, password.Text(), fill);
    }
    if (!status) {
        return Fail(status.Text());
    }
    std::cout << "Made the centre \"" << settings.name << "\" in " << folder << ".\n";
    return kSuccess;
}

int CreateFromFile(COptions const& options)
{
    CCenterSettings settings;
    auto const status = ReadCenterSettings(options.settingsFile, settings);
    return status ? Create(settings, options.passwordFile) : Fail(status.Text());
}

int CreateDemo(COptions const& options)
{
    CCenterSettings settings;
    auto const status = ParseCenterSettings(DemoCenter(), "demo-center.toml", settings);
    auto const fill = [&] { return WriteDemoRecords(settings, options.members, options.seed); };
    return status ? Create(settings, options.passwordFile, fill) : Fail(status.Text());
}

int ChangePassword(COptions const& options)
{
    CDbStatus status;
    {
        CDAOCenter center;
        if (center.OpenSet(true) == 0) {
            status = center.LastStatus();
            return Fail(status ? "There is no centre record to hold a password." : status.Text());
        }
    }
    // Nothing stays open while the user thinks.
    CDatabaseSession::Get().ShutDown();
    CSecret password;
    status = GetPassword(options.passwordFile, password);
    if (!status) {
        return Fail(status.Text());
    }
    CDAOCenter center;
    bool const stored = center.SetPassword(password.Text());
    status = center.LastStatus();
    CDatabaseSession::Get().ShutDown();
    if (!stored) {
        return Fail(PasswordFailure(status).Text());
    }
    std::cout << "The administration password is changed.\n";
    return kSuccess;
}

bool SetDataFolder(std::string const& chosen)
{
    std::error_code failed;
    auto const folder
        = std::filesystem::absolute(chosen.empty() ? DefaultDataFolder() : chosen, failed);
    if (failed) {
        return false;
    }
    auto path = folder.lexically_normal().string();
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    CDatabaseSession::Get().SetDataFolder(path);
    return true;
}

int Run(CLI::App const& app, COptions const& options)
{
    if (!SetDataFolder(options.dataFolder)) {
        return Fail("The current folder cannot be found.");
    }
    if (app.got_subcommand("create")) {
        return CreateFromFile(options);
    }
    if (app.got_subcommand("demo")) {
        return CreateDemo(options);
    }
    if (app.got_subcommand("info")) {
        return ShowInfo() ? kSuccess : kFailure;
    }
    if (app.got_subcommand("check")) {
        return CheckFiles();
    }
    if (app.got_subcommand("compact")) {
        return CompactFiles();
    }
    if (app.got_subcommand("backup")) {
        return BackUp(options.backup, options.keep);
    }
    if (app.got_subcommand("restore")) {
        return RestoreSet(options.backup, options.replace);
    }
    if (app.got_subcommand("verify")) {
        return VerifyFile(options.backup);
    }
    return ChangePassword(options);
}

void AddBackupCommands(CLI::App& app, COptions& options)
{
    auto* const backup = app.add_subcommand("backup", "Make a backup set of all data in a folder");
    backup->add_option("DIR", options.backup, "The folder for backup sets; it must be there")
        ->required();
    backup
        ->add_option("--keep", options.keep,
            "Then remove older good sets of this data folder, but the newest N")
        ->type_name("N")
        ->check(CLI::Range(1, kMostKept));
    auto* const restore
        = app.add_subcommand("restore", "Restore the records of a backup set into the data folder");
    restore->add_option("SET", options.backup, "The folder of the set")->required();
    restore->add_flag("--replace", options.replace, "Replace members who are there already");
    app.add_subcommand("verify", "Test a data file, or a backup set")
        ->add_option("FILE", options.backup, "The data file, or the folder of the set")
        ->required();
}

void AddCommands(CLI::App& app, COptions& options)
{
    auto const notEmpty
        = [](std::string const& text) { return text.empty() ? "It is empty." : ""; };
    app.add_option("--data", options.dataFolder,
           "The data folder. Without it, CORVANA_DATA, or else the user's own.")
        ->type_name("DIR")
        ->check(notEmpty);
    app.set_version_flag("--version", "corvana-db " CORVANA_VERSION, "Print the version and exit");
    app.set_help_flag("--help", "Print this help and exit");
    app.require_subcommand(1);
    app.fallthrough();
    auto* const create = app.add_subcommand("create", "Make a centre from a settings file");
    create->add_option("SETTINGS", options.settingsFile, "The settings file, in TOML")->required();
    auto* const demo
        = app.add_subcommand("demo", "Make the demonstration centre, with members and records");
    demo->add_option("--members", options.members, "How many members it has")
        ->type_name("N")
        ->check(CLI::Range(0, kMostDemoMembers))
        ->capture_default_str();
    demo->add_option("--seed", options.seed, "Another seed makes other members")
        ->type_name("S")
        ->capture_default_str();
    app.add_subcommand("info", "Describe the files, the centre and the queued report jobs");
    app.add_subcommand("check", "Check the files and tell who uses them");
    app.add_subcommand("compact", "Compact the files; those before become \"NAME.old\"");
    AddBackupCommands(app, options);
    auto* const password = app.add_subcommand("password", "Set a new administration password");
    for (auto* const command : {create, demo, password}) {
        command
            ->add_option("--password-file", options.passwordFile,
                "Read the password from the first line of this file instead of asking")
            ->type_name("FILE")
            ->check(notEmpty);
    }
    app.footer("Exit status: 0 success; 1 failure, or findings of check or verify; 2 wrong usage,\n"
               "or a file that check or verify could not read.");
}

int Main(int argc, char** argv)
{
    COptions options;
    CLI::App app("Makes, describes, checks, compacts and backs up the data files of a centre.",
        "corvana-db");
    AddCommands(app, options);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        if (error.get_exit_code() == 0) {
            return app.exit(error); // help or version
        }
        Fail(std::string(error.what()) + ". See corvana-db --help.");
        return kUsage;
    }
    return Run(app, options);
}

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): only where there is no memory left
int main(int argc, char** argv)
{
    ProtectProcess();
    int const result = Main(argc, argv);
    std::cout << std::flush;
    return std::cout ? result : std::max(result, Fail("The output could not be written."));
}
