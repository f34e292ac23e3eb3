#pragma once

#include <string>

/// Checks the four files of the data folder and tells about each on standard output: what is wrong
/// with it and who uses it. 0 when all is well, 1 when something was found, 2 when a file could not
/// be read.
int CheckFiles();
