#pragma once

#include "doc/AppCommands.h"

#include <QApplication>

#include <cstdint>
#include <memory>

class CCorvanaDoc;
class CMainFrame;
class QPrinter;

/// The application: the user's options, start and exit, and the companion programs.
class CCorvanaApp : public QApplication, public CAppCommands
{
    Q_OBJECT
public:
    enum class Start
    {
        shown, ///< the main window is on the screen
        secondCopy, ///< another copy of this user runs; nothing was done
        failed ///< the configuration could not be loaded; the user has been told
    };

    CCorvanaApp(int& argc, char** argv);
    /// Closes what is open; on its own, without ExitInstance, it does no more than that.
    ~CCorvanaApp() override;

    /// Starts: reads the options, loads the configuration, shows the main window. After any other
    /// result than shown the program has nothing more to do, ExitInstance least of all: that would
    /// stop the report server of the copy that runs.
    Start InitInstance();

    /// The same for a picture only: beside another copy, and without a report server.
    Start InitForPicture();

    /// Saves the main window, as it is shown, as a PNG file. False when that fails.
    bool SavePicture(QString const& file);

    /// Ends what InitInstance started: backs up, stops the report server, closes the databases and
    /// stores the options. Returns the exit code of the program, which is the one given.
    int ExitInstance(int code);

    void ShowAbout() override;
    void SetUpPrinter() override;
    void Exit() override;
    bool IsOptionOn(CAppOption option) const override;
    void ToggleOption(CAppOption option) override;
    bool StartReportServer() override;
    void StopReportServer() override;

    /// Starts the backup utility if the option is on and none runs. False when that failed; the
    /// user has been told.
    bool StartBackupUtility();

    // The options: 0 is off, anything else on.
    std::int32_t m_bReportServer = 1; ///< start the report server at start-up
    std::int32_t m_bLoadMembers = 0; ///< fill the tree of members at start-up
    std::int32_t m_bAutoBackup = 0; ///< back up all data at exit

private:
    void LoadOptions();
    bool StoreOptions() const;
    Start OpenDocument();
    void CloseDocument();

    std::unique_ptr<CCorvanaDoc> m_doc;
    std::unique_ptr<CMainFrame> m_frame; // goes before the document it shows
    std::unique_ptr<QPrinter> m_printer; // made when it is first set up
};
