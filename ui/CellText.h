#pragma once

#include <string>

// How numbers read in the cells of lists.

/// With so many decimals, and zeros in front up to a width: "%05.2f" is FixedText(value, 5, 2).
std::string FixedText(double value, int width, int decimals);

/// Without its decimals, towards zero; 0 for what no whole number can hold: another program may
/// have written anything.
int Truncated(double value);
