#include "tools/CompactFiles.h"

#include "store/sets/DatabaseSession.h"
#include "tools/Printable.h"

#include <filesystem>
#include <iostream>

int CompactFiles()
{
    auto const& session = CDatabaseSession::Get();
    std::cout << "Data folder: " << session.DataFolder() << "\n";
    bool areAll = true;
    for (auto const file : kDataFiles) {
        auto const path = session.PathOf(file);
        std::cout << DataFileName(file) << ": " << std::flush;
        std::error_code unknown;
        auto const before = std::filesystem::file_size(path, unknown);
        if (auto const status = CompactDatabaseFile(path, DataFileSchema(file)); status) {
            std::cout << "compacted, " << before << " to "
                      << std::filesystem::file_size(path, unknown) << " bytes\n";
        } else {
            std::cout << "left as it is\n    " << Printable(status.Text()) << "\n";
            areAll = false;
        }
    }
    if (!areAll) {
        std::cerr << "corvana-db: not all files were compacted.\n";
    }
    return areAll ? 0 : 1;
}
