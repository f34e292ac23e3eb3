#pragma once

/// Compacts the four files of the data folder and tells about each on standard output. 0 when all
/// were, 1 when one had to be left as it is.
int CompactFiles();
