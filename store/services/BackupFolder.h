#pragma once

#include "platform/db/Files.h"
#include "store/EFOleDateTime.h"

#include <string>
#include <string_view>
#include <vector>

// The folder that backup sets lie in, one folder each: "corvana-2026-11-16-180509", by the local
// time at which it was begun, with "-2" to "-9" behind for further ones of the same second. While
// it is made, a set is ".NAME.part" beside a file ".NAME.lock" that its maker has locked.

inline std::string PathIn(std::string folder, std::string_view name)
{
    return folder.append("/").append(name);
}

/// When the set of that name was begun; invalid when that is no name of a set.
CEFOleDateTime BackupSetTime(std::string_view name);
/// The names of the sets in a folder, the newest first.
std::vector<std::string> BackupSetsIn(std::string const& folder);

/// Takes away what killed programs have left of sets in a folder. Leaves alone what is being made,
/// and whatever is not ours.
void RemoveBackupLeftovers(std::string const& folder);
/// Takes a set away: it is gone under its name at once, whatever happens afterwards. False when
/// somebody else works on it.
bool RemoveBackupSet(std::string const& folder, std::string const& name);

/// The place of a set that is being made. Goes with all that is in it unless it is published.
class CBackupPlace
{
public:
    CBackupPlace() = default;
    ~CBackupPlace();
    CBackupPlace(CBackupPlace const&) = delete;
    CBackupPlace& operator=(CBackupPlace const&) = delete;

    /// Makes it in a folder that must be there, under the name of this moment.
    CDbStatus Make(std::string const& folder);
    /// Gives the set its name, and waits until that is on the disk.
    CDbStatus Publish();

    std::string const& Name() const { return m_strName; }
    std::string Path() const; ///< where its files are made

private:
    CDbStatus MakeNamed(std::string const& name);

    std::string m_strFolder;
    std::string m_strName;
    CFileHandle m_lock;
};
