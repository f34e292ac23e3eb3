#include "tools/CheckFiles.h"

#include "platform/db/FileUse.h"
#include "store/sets/DatabaseSession.h"
#include "tools/Printable.h"

#include <algorithm>
#include <iostream>
#include <unistd.h>

namespace
{

enum Result
{
    allWell,
    found,
    unreadable
};

/// Tells who else has the file open. Users that this one may not look at are seen by their lock.
void TellUsers(std::string const& path, CDatabase* database)
{
    auto users = FileUsers(path);
    std::erase_if(users, [](CFileUser const& user) { return user.pid == ::getpid(); });
    for (auto const& user : users) {
        std::cout << "    open in " << Printable(user.program) << " (process " << user.pid << ")\n";
    }
    if (database != nullptr && users.empty()) {
        if (database->UseExclusively()) {
            database->ShareAgain();
        } else {
            std::cout << "    open in another program, which this user may not look at\n";
        }
    }
}

Result CheckOpen(CDatabase& database)
{
    std::vector<std::string> findings;
    auto const status = database.Check(findings);
    if (status.Error() == DbError::damaged) {
        findings.push_back(status.Text()); // too much so to list all of it
    } else if (!status) {
        std::cout << "could not be read\n    " << status.Text() << "\n";
        return unreadable;
    }
    std::cout << (findings.empty() ? "all well\n" : "NOT as it should be\n");
    for (auto const& finding : findings) {
        std::cout << "    " << Printable(finding) << "\n";
    }
    return findings.empty() ? allWell : found;
}

Result CheckFile(DataFile file)
{
    auto& session = CDatabaseSession::Get();
    std::cout << DataFileName(file) << ": " << std::flush;
    CDbStatus status;
    auto* const database = session.Open(file, status);
    auto result = unreadable;
    if (database == nullptr) {
        std::cout << "could not be opened\n    " << status.Text() << "\n";
    } else {
        result = CheckOpen(*database);
    }
    TellUsers(session.PathOf(file), database);
    return result;
}

} // namespace

int CheckFiles()
{
    std::cout << "Data folder: " << CDatabaseSession::Get().DataFolder() << "\n";
    Result worst = allWell;
    for (auto const file : kDataFiles) {
        worst = std::max(worst, CheckFile(file));
    }
    CDatabaseSession::Get().ShutDown();
    if (worst != allWell) {
        std::cerr << "corvana-db: not all files are as they should be.\n";
    }
    return worst;
}
