#pragma once

#include <iostream>
#include <string>

// The exit codes of corvana-db.
inline constexpr int kSuccess = 0;
inline constexpr int kFailure = 1; ///< or findings
inline constexpr int kUsage = 2; ///< or a file that was to be examined and cannot be read

/// Tells on the standard error output what went wrong, behind what was said before.
inline int Fail(std::string const& text)
{
    std::cout << std::flush;
    std::cerr << "corvana-db: " << text << "\n";
    return kFailure;
}
