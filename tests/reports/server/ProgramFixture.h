#pragma once

#include "store/services/ReportQueue.h"
#include "tests/reports/ReportFixture.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// Runs the report server's program over a made-up centre, with settings of its own.
class CProgramTest : public CReportTest
{
protected:
    using Words = std::vector<std::string>;

    void SetUp() override
    {
        CReportTest::SetUp();
        std::filesystem::create_directory(m_out);
        ::setenv("XDG_CONFIG_HOME", (m_folder / "config").c_str(), 1);
        ::setenv("CORVANA_DATA", m_folder.c_str(), 1);
        CDatabaseSession::Get().ShutDown();
    }

    static void Queue(int type, int jobs = 1, std::string const& also = "0")
    {
        for (int i = 0; i < jobs; ++i) {
            Run(DataFile::report,
                "INSERT INTO reports (type, parameter, date_from, date_to, category, course, "
                "section)"
                " VALUES (?, "
                    + also + ", 0, 0, '', '', '')",
                {std::int64_t(type)});
        }
    }

    /// Starts the program in a process group of its own; what it says goes to two files.
    pid_t Start(Words const& arguments, std::string const& said = "said") const
    {
        CDatabaseSession::Get().ShutDown();
        pid_t const process = ::fork();
        if (process == 0) {
            auto const path = (m_folder / said).string();
            ::dup2(::open("/dev/null", O_RDONLY), 0);
            ::dup2(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
            ::dup2(::open((path + "2").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
            auto words = arguments;
            words.insert(words.begin(), REPORT_PROGRAM);
            std::vector<char*> pointers;
            for (auto& word : words) {
                pointers.push_back(word.data());
            }
            pointers.push_back(nullptr);
            ::execv(REPORT_PROGRAM, pointers.data());
            ::_exit(127);
        }
        return process;
    }
    /// Its exit code, -1 when it was killed.
    static int Wait(pid_t process)
    {
        int status = 0;
        ::waitpid(process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int Do(Words const& arguments) const { return Wait(Start(arguments)); }
    int Once() const { return Do({"--once", "--folder", m_out}); }
    std::string Said(std::string const& said = "said") const { return ReadFile(m_folder / said); }

    /// The names in the folder of PDF files, each of a whole file that is its owner's alone.
    Rows Files() const
    {
        Rows names;
        for (auto const& entry : std::filesystem::directory_iterator(m_out)) {
            auto const bytes = ReadFile(entry.path());
            names.push_back(entry.path().filename());
            EXPECT_TRUE(bytes.starts_with("%PDF-") && bytes.ends_with("%%EOF\n")) << names.back();
            EXPECT_EQ(std::filesystem::status(entry.path()).permissions(),
                std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
        }
        std::ranges::sort(names);
        return names;
    }

    std::filesystem::path const m_out = m_folder / "out";
};
