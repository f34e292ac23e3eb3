#pragma once

/// The user's options, kept from run to run.
enum class CAppOption
{
    reportServer,
    loadMembers,
    autoBackup
};

/// What the document and the commands need of the application.
class CAppCommands
{
public:
    CAppCommands() = default;
    virtual ~CAppCommands() = default;
    CAppCommands(CAppCommands const&) = delete;
    CAppCommands& operator=(CAppCommands const&) = delete;

    virtual void ShowAbout() = 0;
    virtual void SetUpPrinter() = 0;
    virtual void Exit() = 0;

    virtual bool IsOptionOn(CAppOption option) const = 0;
    virtual void ToggleOption(CAppOption option) = 0;

    /// Returns whether a report server runs afterwards. Shows no message.
    virtual bool StartReportServer() = 0;
    /// Asks a running one to quit, whoever started it, and does not wait until it has.
    virtual void StopReportServer() = 0;
};
