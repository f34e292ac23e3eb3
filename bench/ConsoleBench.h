#pragma once

#include "doc/AppCommands.h"
#include "store/sets/DatabaseSession.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

// What the measurements of the console share. Times are CPU of this process.

/// A program that measures windows, off screen; with --quick it only shows that it still runs.
class CConsoleBench
{
public:
    CConsoleBench(int& argc, char** argv)
        : m_bQuick(argc > 1 && std::strcmp(argv[1], "--quick") == 0)
        , m_app((qputenv("QT_QPA_PLATFORM", "offscreen"), argc), argv)
    {
    }
    bool IsQuick() const { return m_bQuick; }

private:
    bool const m_bQuick;
    QApplication const m_app;
};

/// An application that does nothing.
class CNoCommands : public CAppCommands
{
public:
    void ShowAbout() override { }
    void SetUpPrinter() override { }
    void Exit() override { }
    bool IsOptionOn(CAppOption) const override { return false; }
    void ToggleOption(CAppOption) override { }
    bool StartReportServer() override { return false; }
    void StopReportServer() override { }
};

inline double CpuMs()
{
    timespec time = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// A line of /proc/self/status in MB: "VmRSS" or "VmHWM".
inline double MemoryMB(std::string const& line)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == line + ":") {
            status >> word;
            return std::stod(word) / 1024;
        }
    }
    return 0.0;
}

inline double Median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// Empty files of a centre in a folder of their own while it lives, and the session on them. Ends
/// the program when they cannot be made.
class CBenchCentre
{
public:
    explicit CBenchCentre(std::vector<DataFile> const& files)
        : m_strFolder((std::filesystem::temp_directory_path() / "corvana-bench-XXXXXX").string())
    {
        if (::mkdtemp(m_strFolder.data()) == nullptr) {
            std::perror("cannot make a folder");
            std::exit(1);
        }
        CDatabaseSession::Get().SetDataFolder(m_strFolder);
        for (auto const file : files) {
            auto const path = CDatabaseSession::Get().PathOf(file);
            if (auto const status = CreateDatabase(path, DataFileSchema(file)); !status) {
                std::fprintf(stderr, "%s\n", status.Text().c_str());
                std::exit(1);
            }
        }
    }
    ~CBenchCentre()
    {
        CDatabaseSession::Get().ShutDown();
        std::filesystem::remove_all(m_strFolder);
    }
    CBenchCentre(CBenchCentre const&) = delete;
    CBenchCentre& operator=(CBenchCentre const&) = delete;

private:
    std::string m_strFolder;
};
