#pragma once

#include <string>

// Backup sets and data files, told about on standard output; what went wrong goes to the standard
// error output. Each returns the program's exit code.

/// Makes a set in a folder and, unless keep is 0, removes old ones but the newest so many. Asked to
/// end it stops, and leaves nothing of the set behind.
int BackUp(std::string const& folder, int keep);
/// Restores the records of a set into the data folder.
int RestoreSet(std::string const& path, bool replace);
/// Tests a data file, or a set. 1 when it is not right, 2 when there is nothing to read.
int VerifyFile(std::string const& path);
