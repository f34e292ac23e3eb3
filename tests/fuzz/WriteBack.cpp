#include "tests/fuzz/WriteBack.h"

#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOWk.h"
#include "store/text/Crc32C.h"
#include "store/text/Text.h"
#include "store/text/TextReader.h"

#include <array>
#include <cstdio>
#include <sstream>

namespace
{

CRecordLine const* LineOf(std::string_view kind)
{
    for (auto const* const line : {&CDAOMem().GetLine(), &CDAOWk().GetLine(), &CDAOEval().GetLine(),
             &CDAOBodyComp().GetLine()}) {
        if (line->Kind() == kind) {
            return line;
        }
    }
    return nullptr;
}

std::string WithoutReturns(std::string_view file)
{
    std::string text(file);
    std::erase(text, '\r');
    return text;
}

} // namespace

CWriteBack WriteBack(std::string_view file)
{
    std::istringstream input{std::string(file)};
    std::ostringstream output;
    CTextReader reader(input, '|');
    CText writer(&output, '|');
    CRowBlock block;
    while (reader.Next()) {
        auto const* const line = LineOf(reader.Kind());
        if (line == nullptr) {
            reader.RefuseField("is no known kind");
        } else if (line->Read(reader, block) && !line->Write(writer, block.Row(0))) {
            return {true, false, {}};
        }
    }
    bool const accepted = reader.Status().IsOK();
    return {accepted, !accepted || output.str() == WithoutReturns(file), reader.Status().Text()};
}

std::string WithCheckSums(std::string_view lines)
{
    std::string file;
    while (!lines.empty()) {
        auto const end = lines.find('\n');
        auto const line = std::string(lines.substr(0, end)) + '|';
        std::array<char, 16> sum = {};
        std::snprintf(sum.data(), sum.size(), "%08X\n", Crc32C(line));
        file += line + sum.data();
        lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
    }
    return file;
}
