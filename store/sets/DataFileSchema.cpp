#include "store/sets/DatabaseSession.h"

std::string_view CheckInSchema1();
std::string_view ReportSchema1();
std::string_view ReportSchema2();
std::string_view CenterSchema1();
std::string_view MemberSchema1();

CSchema const& DataFileSchema(DataFile file)
{
    // The marks in the files' headers read "CVci", "CVrp", "CVce" and "CVme".
    static std::array<CSchema, kDataFiles.size()> const schemas = {{
        {"check-in", 0x43566369, {CheckInSchema1()}},
        {"report", 0x43567270, {ReportSchema1(), ReportSchema2()}},
        {"centre", 0x43566365, {CenterSchema1()}},
        {"member", 0x43566D65, {MemberSchema1()}},
    }};
    return schemas[static_cast<std::size_t>(file)];
}
