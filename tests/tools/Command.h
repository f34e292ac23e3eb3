#pragma once

#include <string>
#include <vector>

/// What a command that has ended left behind.
struct CCommandResult
{
    int exitCode = -1; ///< -1 when it did not end by itself
    std::string output;
    std::string errors;
};

/// Runs a program, looked for in the path, without a terminal of its own, and waits for its end.
CCommandResult RunCommand(std::vector<std::string> const& arguments);

/// False on a system that gives out no pseudo-terminals, such as a bare chroot.
bool HasTerminals();

/// Runs a program at a terminal and types a line whenever a question mark or colon and a blank end
/// what it shows. The output is everything that the terminal showed.
CCommandResult RunAtTerminal(
    std::vector<std::string> const& arguments, std::vector<std::string> const& lines);
