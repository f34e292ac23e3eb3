#pragma once

#include "platform/db/Status.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

/// The list of the files of a backup set, "SHA256SUMS" beside them: a text that "sha256sum -c"
/// checks as well. It is written last, so that a set without it is none.
class CBackupManifest
{
public:
    /// Is told how many bytes of a file were read; false stops the reading.
    using Watch = std::function<bool(std::size_t bytes)>;

    static constexpr std::string_view kName = "SHA256SUMS";

    /// Reads a file back from the disk, not from what the system keeps of it in memory, and lists
    /// it. sum is its CRC-32C.
    CDbStatus Add(
        std::string const& folder, std::string const& name, Watch const& watch, std::uint32_t& sum);
    /// Writes the list into the folder, and waits until it is on the disk.
    CDbStatus Write(std::string const& folder) const;
    /// Reads the list of a folder. "missing" when there is none, "foreign" when it is not ours.
    CDbStatus Read(std::string const& folder);
    /// Reads all files of the list: each must be there as it was written.
    CDbStatus Check(std::string const& folder, Watch const& watch) const;

    /// Lets the system forget what it keeps of a file in memory and read it again, so that the next
    /// to read it gets what the disk has; from end to end, as disks are fastest. Not for a database
    /// that is open.
    static CDbStatus ReadFromDisk(std::string const& path, Watch const& watch);

    std::map<std::string, std::string> const& Files() const { return m_files; }

    std::string m_strDataFolder; ///< what was backed up
    int m_nLeftOut = 0; ///< records that stand in the copy of the member file alone

private:
    std::map<std::string, std::string> m_files; ///< names, and their SHA-256 in hexadecimal
};
