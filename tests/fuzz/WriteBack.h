#pragma once

#include <string>
#include <string_view>

/// What must hold for every sequence of bytes: a data file that is accepted, with records of any
/// kinds, is byte for byte what is written of it, apart from its line ends.
struct CWriteBack
{
    bool accepted;
    bool same; ///< also true when the file was refused
    std::string reason; ///< why it was refused
};

CWriteBack WriteBack(std::string_view file);

/// The same bytes with the right check sum behind each line, so that what is wrong with a field is
/// not hidden by a wrong sum.
std::string WithCheckSums(std::string_view lines);
