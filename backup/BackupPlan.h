#pragma once

#include <string>

/// Where the user's backups go and how many are kept, in the user's settings.
struct CBackupPlan
{
    std::string folder; ///< without a slash at its end
    bool isChosen = false; ///< by the user; else the folder beside the data folder
    bool wasElsewhere = false; ///< on another disk than the data, when it was chosen
    int keep = 0; ///< the newest so many sets; 0 for all

    static constexpr int kMostKept = 9999;

    static CBackupPlan Load();
    /// Remembers a folder that the user chose.
    bool Choose(std::string const& chosen);
    bool StoreKeep(int sets);

    /// What keeps the folder from being used, in a sentence for the user; empty when nothing does.
    /// Makes the folder beside the data folder when it is not there, but none that was chosen: its
    /// disk may not be connected.
    std::string Prepare() const;
};
