#include "platform/db/FileUse.h"
#include "tests/platform/db/Families.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <grp.h>
#include <iostream>
#include <iterator>
#include <limits>
#include <map>
#include <sqlite3.h>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;
using Arguments = std::vector<std::string>;

/// One write for the line, so that a kill leaves the whole of it or nothing.
void Say(std::string const& line)
{
    auto const text = line + "\n";
    [[maybe_unused]] auto const written = ::write(STDOUT_FILENO, text.data(), text.size());
}

void WaitForEnd()
{
    std::cin.ignore(std::numeric_limits<std::streamsize>::max());
}

std::unique_ptr<CDatabase> Open(std::string const& path)
{
    std::unique_ptr<CDatabase> database;
    if (auto const status = OpenDatabase(path, Families::Schema(), database); !status) {
        Say("refused " + std::to_string(static_cast<int>(status.Error())) + " " + status.Text());
        std::exit(1);
    }
    return database;
}

void Idle(Arguments const& arguments)
{
    auto const database = Open(arguments[0]);
    Say("ready");
    WaitForEnd();
}

/// Has nothing to do with the database but that it opens the file under another account.
void Nobody(Arguments const& arguments)
{
    constexpr uid_t kNobody = 65534;
    if (::getuid() == 0
        && (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
        std::exit(2);
    }
    Idle(arguments);
}

/// Holds what a statement begins, as a program does that knows nothing of our locks.
void HoldStatement(Arguments const& arguments, char const* sql)
{
    auto const database = Open(arguments[0]);
    sqlite3* connection = nullptr;
    sqlite3_open_v2(arguments[0].c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
    auto const begun = sqlite3_exec(connection, sql, nullptr, nullptr, nullptr);
    Say(begun == SQLITE_OK ? "ready" : "failed");
    WaitForEnd();
    sqlite3_close(connection);
}

void HoldWrite(Arguments const& arguments)
{
    auto const database = Open(arguments[0]);
    CTransaction const transaction(*database);
    auto const status = Families::SaveRows(*database, 1'000'000);
    Say(status ? "ready" : status.Text());
    WaitForEnd();
}

void HoldExclusively(Arguments const& arguments)
{
    auto const database = Open(arguments[0]);
    auto const status = database->UseExclusively();
    Say(status ? "ready" : status.Text());
    WaitForEnd();
}

/// Holds byte 1 as a writer does, without being one.
void HoldCommit(Arguments const& arguments)
{
    CFileUse use;
    bool const held = use.Acquire(arguments[0], std::chrono::seconds(1)).IsOK()
        && use.LockCommit(std::chrono::seconds(1));
    Say(held ? "ready" : "failed");
    WaitForEnd();
}

void HoldCheckpoint(Arguments const& arguments)
{
    CFileUse use;
    bool const held
        = use.Acquire(arguments[0], std::chrono::seconds(1)).IsOK() && use.TryLockCheckpoint();
    Say(held ? "ready" : "failed");
    WaitForEnd();
}

void EmptyLog(Arguments const& arguments)
{
    auto const database = Open(arguments[0]);
    Say("ready");
    auto const status = database->Checkpoint();
    Say(status ? "done" : status.Text());
}

/// Saves families from the number on until it is killed and tells each one that is stored.
void SaveUntilKilled(
    Arguments const& arguments, CDbStatus (*save)(CDatabase&, std::int64_t, std::string const&))
{
    auto const database = Open(arguments[0]);
    std::string const note(4000, 'n');
    for (auto number = std::stoll(arguments[1]);; ++number) {
        if (auto const status = save(*database, number, note); !status) {
            Say("failed " + status.Text());
            return;
        }
        Say(std::to_string(number));
    }
}

/// Runs a step for so many milliseconds; tells how often it succeeded, failed, and took at most.
void Saturate(Arguments const& arguments, std::function<bool(CDatabase&, std::int64_t)> const& step)
{
    auto const database = Open(arguments[0]);
    auto const end = Clock::now() + std::chrono::milliseconds(std::stoll(arguments[1]));
    auto number = std::stoll(arguments[2]);
    int done = 0;
    int failed = 0;
    auto longest = Clock::duration::zero();
    for (auto start = Clock::now(); start < end;) {
        ++(step(*database, ++number) ? done : failed);
        auto const now = Clock::now();
        longest = std::max(longest, now - start);
        start = now;
    }
    Say(std::to_string(done) + " " + std::to_string(failed) + " "
        + std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(longest).count()));
}

/// Looks before it writes, which fails at once where a transaction begins with the right to read.
bool ReadAndSave(CDatabase& database, std::int64_t number)
{
    CTransaction transaction(database);
    return transaction.Status()
        && Families::Number(database, "SELECT count(*) FROM children WHERE family_id = 1") >= 0
        && Families::SaveRows(database, number) && transaction.Commit();
}

/// Saves, empties the log and closes, over and over: the file grows and shrinks its log all along.
void Churn(Arguments const& arguments)
{
    std::string const note(20000, 'n');
    Saturate(arguments, [&](CDatabase& database, std::int64_t number) {
        return Families::Save(database, number, note) && database.Checkpoint();
    });
}

struct Holders
{
    std::atomic<int> shared;
    std::atomic<int> exclusive;
};

/// Comes and goes as a user and a maintainer of the file; says how often it was alone and how often
/// somebody else was there nevertheless.
void Hammer(Arguments const& arguments)
{
    int const file = ::open(arguments[2].c_str(), O_RDWR | O_CLOEXEC);
    auto* const holders = static_cast<Holders*>(
        ::mmap(nullptr, sizeof(Holders), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));
    auto const end = Clock::now() + std::chrono::milliseconds(std::stoll(arguments[1]));
    int alone = 0;
    int wrong = 0;
    while (Clock::now() < end) {
        CFileUse use;
        if (!use.Acquire(arguments[0], std::chrono::seconds(10))) {
            ++wrong;
            continue;
        }
        wrong += holders->exclusive != 0 ? 1 : 0;
        ++holders->shared;
        if (use.TryExclusive()) {
            ++alone;
            wrong += ++holders->exclusive != 1 || holders->shared != 1 ? 1 : 0;
            std::this_thread::yield();
            wrong += holders->exclusive-- != 1 || holders->shared != 1 ? 1 : 0;
            use.BackToShared();
        }
        --holders->shared;
    }
    Say(std::to_string(alone) + " " + std::to_string(wrong));
}

/// How often a text stands in a file.
void CountText(Arguments const& arguments)
{
    std::ifstream file(arguments[0], std::ios::binary);
    std::string const bytes{std::istreambuf_iterator<char>(file), {}};
    int count = 0;
    for (auto at = bytes.find(arguments[1]); at != std::string::npos;
         at = bytes.find(arguments[1], at + 1)) {
        ++count;
    }
    Say(std::to_string(count));
}

} // namespace

int main(int argc, char** argv)
{
    std::map<std::string, std::function<void(Arguments const&)>> const tasks = {
        {"idle", Idle},
        {"nobody", Nobody},
        {"read", [](auto const& a) { HoldStatement(a, "BEGIN; SELECT count(*) FROM families"); }},
        {"write", HoldWrite},
        {"foreign write", [](auto const& a) { HoldStatement(a, "BEGIN IMMEDIATE"); }},
        {"exclusive", HoldExclusively},
        {"commit byte", HoldCommit},
        {"checkpoint byte", HoldCheckpoint},
        {"checkpoint", EmptyLog},
        {"save", [](auto const& a) { SaveUntilKilled(a, Families::Save); }},
        {"save row by row", [](auto const& a) { SaveUntilKilled(a, Families::SaveRows); }},
        {"writer", [](auto const& a) { Saturate(a, ReadAndSave); }},
        {"reader",
            [](auto const& a) {
                Saturate(a, [](auto& database, auto) { return Families::Partial(database) == 0; });
            }},
        {"churn", Churn},
        {"hammer", Hammer},
        {"count text", CountText},
    };
    auto const task = argc < 2 ? tasks.end() : tasks.find(argv[1]);
    if (task == tasks.end()) {
        return 3;
    }
    task->second(Arguments(argv + 2, argv + argc));
    return 0;
}
