#pragma once

#include "tests/store/StoreFixture.h"

#include <array>
#include <cstdlib>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>

/// Runs corvana-db over a data folder that is not there yet.
class CCorvanaDbTest : public CStoreTest
{
protected:
    using Words = std::vector<std::string>;
    static constexpr char const* kPassword = "correct horse battery";
    static constexpr char const* kAllFiles = "center.mdb\ncheckin.mdb\nmember.mdb\nreport.mdb\n";

    void SetUp() override
    {
        Write(m_password, std::string(kPassword) + "\n");
        std::filesystem::copy_file(CORVANA_SETTINGS, m_settings);
    }

    /// Makes a file that its owner alone may read.
    static void Write(std::filesystem::path const& path, std::string_view text)
    {
        WriteFile(path, text);
        ::chmod(path.c_str(), 0600);
    }

    /// What a command that has ended left behind.
    struct Result
    {
        int exitCode;
        std::string output;
        std::string errors;
    };
    /// For a shell: the command with these arguments over the data folder, behind other words.
    std::string CommandLine(Words const& arguments, Words words = {}) const
    {
        words.insert(words.end(), {CORVANA_DB, "--data", m_data.string()});
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::string line;
        for (auto const& word : words) {
            EXPECT_EQ(word.find('\''), std::string::npos);
            line += " '" + word + "'";
        }
        return line;
    }
    /// Runs it without a terminal.
    Result Command(Words const& arguments, Words const& before = {}) const
    {
        auto const file = (m_folder / "said").string();
        auto const line = "setsid -w" + CommandLine(arguments, before) + " </dev/null >" + file
            + " 2>" + file + "2";
        int const status = std::system(line.c_str()); // NOLINT(cert-env33-c)
        return {WEXITSTATUS(status), ReadFile(file), ReadFile(file + "2")};
    }
    /// Runs it, and looks into all it says.
    void Expect(int exitCode, std::string const& said, Words const& arguments,
        Words const& before = {}) const
    {
        auto const [code, output, errors] = Command(arguments, before);
        EXPECT_EQ(code, exitCode) << said;
        EXPECT_NE((output + errors).find(said), std::string::npos) << said << ":\n"
                                                                   << output << errors;
    }
    /// Runs it at a terminal and types a line whenever a question ends what it shows, which is the
    /// output: nothing on a system that gives out no terminals, such as a bare chroot.
    Result Type(Words const& arguments, Words const& lines) const
    {
        Result result = {};
        int terminal = -1;
        pid_t const process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (process == 0) {
            ::execl("/bin/sh", "sh", "-c", CommandLine(arguments).c_str(), nullptr);
        }
        std::array<char, 4096> bytes = {};
        auto line = lines.begin();
        ssize_t count = 0;
        while (process > 0 && (count = ::read(terminal, bytes.data(), bytes.size())) > 0) {
            result.output.append(bytes.data(), static_cast<std::size_t>(count));
            if (result.output.ends_with(": ") && line != lines.end()) {
                EXPECT_GT(::write(terminal, line->data(), line->size()), 0);
                ++line;
            }
        }
        ::close(terminal);
        ::waitpid(process, &result.exitCode, 0);
        result.exitCode = WEXITSTATUS(result.exitCode);
        return result;
    }

    void MakeCenter()
    {
        Expect(0, "Made the centre", m_create);
        CDatabaseSession::Get().SetDataFolder(m_data);
    }
    /// The names in the data folder, "none" when there is no folder.
    std::string Names() const
    {
        auto const list = m_folder / "names";
        auto const line = "ls -A " + m_data.string() + " >" + list.string() + " 2>/dev/null";
        return std::system(line.c_str()) == 0 ? ReadFile(list) : "none"; // NOLINT(cert-env33-c)
    }
    /// The text that a SELECT finds.
    static std::string Select(DataFile file, std::string const& what)
    {
        CRowBlock rows;
        auto const status = Database(file).Query("SELECT " + what, {}, rows);
        EXPECT_TRUE(status && rows.Rows() == 1) << what << ": " << status.Text();
        return status ? std::string(rows.Row(0).Text(rows.Row(0).Cell(0))) : "";
    }

    std::filesystem::path const m_data = m_folder / "far" / "data";
    std::filesystem::path const m_password = m_folder / "password";
    std::filesystem::path const m_settings = m_folder / "settings.toml";
    Words const m_create = {"create", m_settings.string(), "--password-file", m_password.string()};
};
