#include "reports/server/RenderOptions.h"

#include "store/sets/DAOCls.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace
{

/// What a report is asked with.
enum Word : unsigned
{
    member = 1U,
    day = 2U, ///< --from alone
    moment = 4U, ///< --from alone, a record's
    moments = 8U, ///< --from and --to, two records'
    period = 16U, ///< --from and --to, unless --all-workouts
    aClass = 32U,
    options = 64U, ///< --status, --member-ids
    classIndex = 128U
};

struct CType
{
    std::string_view name;
    unsigned words;
};

/// In the order of CDAOReport::rpttype.
constexpr std::array<CType, 14> kTypes = {{
    {"member-profile", member},
    {"member-count", 0},
    {"emergency-contacts", options},
    {"membership-status", options},
    {"class-roster", aClass | options},
    {"daily-workouts", day},
    {"workout-summaries", period | options},
    {"member-workouts", member | classIndex},
    {"class-workouts", aClass | period | options},
    {"test-results", member | moment},
    {"evaluation-comparison", member | moments},
    {"body-composition", member | moment},
    {"body-composition-comparison", member | moments},
    {"unknown-workouts", 0},
}};

/// "2026-11-16", or with "T18:05" or "T18:05:09" behind, a blank for the T as well.
CEFOleDateTime ReadDate(std::string text)
{
    constexpr std::string_view kPattern = "dddd-dd-ddTdd:dd:dd";
    if (text.size() != 10 && text.size() != 16 && text.size() != kPattern.size()) {
        return CEFOleDateTime::Invalid();
    }
    if (text.size() > 10 && text[10] == ' ') {
        text[10] = 'T';
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool const isDigit = text[i] >= '0' && text[i] <= '9';
        if (kPattern[i] == 'd' ? !isDigit : text[i] != kPattern[i]) {
            return CEFOleDateTime::Invalid();
        }
    }
    auto const time = text.size() > 10 ? ' ' + text.substr(11) : std::string();
    return CEFOleDateTime::Parse(
        text.substr(5, 2) + '/' + text.substr(8, 2) + '/' + text.substr(0, 4) + time);
}

std::int32_t FindType(std::string const& text)
{
    for (std::size_t type = 0; type < kTypes.size(); ++type) {
        if (text == kTypes[type].name || text == std::to_string(type)) {
            return static_cast<std::int32_t>(type);
        }
    }
    return -1;
}

/// Reads the words of one type, and keeps the first thing that is wrong.
class CWordReader
{
public:
    CWordReader(CRenderWords const& words, CReportJob& job)
        : m_words(words)
        , m_job(job)
        , m_nUsed(kTypes[static_cast<std::size_t>(job.m_nType)].words)
    {
    }

    std::string Read()
    {
        ReadMember();
        ReadOptions();
        ReadDates();
        ReadClass();
        return m_strFault;
    }

private:
    bool Uses(unsigned words) const { return (m_nUsed & words) != 0; }

    void Refuse(std::string const& text)
    {
        if (m_strFault.empty()) {
            m_strFault = text;
        }
    }
    /// An option that the type needs, or cannot use.
    void Check(std::string const& option, bool isGiven, bool isUsed, bool isNeeded)
    {
        auto const name = "\"" + std::string(kTypes[std::size_t(m_job.m_nType)].name) + "\"";
        if (isGiven && !isUsed) {
            Refuse("The report " + name + " cannot use " + option);
        } else if (!isGiven && isNeeded) {
            Refuse("The report " + name + " needs " + option);
        }
    }

    void ReadMember()
    {
        Check("--member", m_words.member != 0, Uses(member), Uses(member));
        Check("--class-index", m_words.classIndex != 0, Uses(classIndex), false);
        if (Uses(member)) {
            m_job.m_nParam = m_words.member;
        }
        if (Uses(classIndex)) {
            auto const index = static_cast<std::uint8_t>(
                m_words.classIndex == 0 ? CDAOCls::kAllClasses : m_words.classIndex);
            m_job.m_strCategory = std::to_string(index);
            CDAOCls::GetClassIndexString(index, m_job.m_strCourse);
        }
    }

    void ReadOptions()
    {
        Check("--status", !m_words.status.empty(), Uses(options), false);
        Check("--member-ids", m_words.memberIDs, Uses(options), false);
        if (Uses(options)) {
            m_job.m_nParam = (m_words.status == "current"       ? CDAOReport::roCurrent
                                     : m_words.status == "past" ? CDAOReport::roPast
                                                                : CDAOReport::roAll)
                | (m_words.memberIDs ? CDAOReport::roMemberIDs : 0);
        }
    }

    CEFOleDateTime Date(std::string const& option, std::string const& text)
    {
        auto const date = ReadDate(text);
        if (!text.empty() && !date.ChkStatus()) {
            Refuse(option + ": \"" + text + "\" is no date like 2026-11-16 or 2026-11-16T18:05:09");
        }
        return text.empty() ? CEFOleDateTime() : date;
    }

    void ReadDates()
    {
        bool const isAll = m_words.allWorkouts && Uses(period);
        bool const hasFrom = Uses(day | moment | moments | period) && !isAll;
        bool const hasTo = Uses(moments | period) && !isAll;
        Check("--all-workouts", m_words.allWorkouts, Uses(period), false);
        Check("--from", !m_words.from.empty(), hasFrom, hasFrom);
        Check("--to", !m_words.to.empty(), hasTo, hasTo);
        m_job.m_dtFrom = Date("--from", m_words.from);
        m_job.m_dtTo = Date("--to", m_words.to);
        if (isAll) {
            m_job.m_nParam |= CDAOReport::roAllWorkouts;
        } else if (Uses(day | period)) {
            m_job.m_dtTo = Uses(day) ? m_job.m_dtFrom : m_job.m_dtTo;
            m_job.m_dtFrom.Midnight();
            m_job.m_dtTo.PreMidnight();
            if (m_job.m_dtTo < m_job.m_dtFrom) {
                Refuse("--to is before --from");
            }
        }
    }

    void ReadClass()
    {
        for (auto const& [option, text, field] :
            {CClassWord{"--category", &m_words.category, &m_job.m_strCategory},
                {"--course", &m_words.course, &m_job.m_strCourse},
                {"--section", &m_words.section, &m_job.m_strSection}}) {
            bool const isNeeded = field == &m_job.m_strCategory && Uses(aClass);
            Check(option, !text->empty(), Uses(aClass), isNeeded);
            if (Uses(aClass)) {
                *field = *text;
            }
        }
    }
    struct CClassWord
    {
        char const* option;
        std::string const* text;
        std::string* field;
    };

    CRenderWords const& m_words;
    CReportJob& m_job;
    unsigned const m_nUsed;
    std::string m_strFault;
};

} // namespace

std::string ReadRenderWords(CRenderWords const& words, CReportJob& job)
{
    auto const type = FindType(words.type);
    if (type < 0) {
        return "There is no report \"" + words.type + "\"";
    }
    job = {.m_nType = CDAOReport::rpttype(type)};
    return CWordReader(words, job).Read();
}

std::string RenderTypes()
{
    std::string text;
    for (std::size_t type = 0; type < kTypes.size(); ++type) {
        text += "\n  " + std::to_string(type) + (type < 10 ? "   " : "  ")
            + std::string(kTypes[type].name);
    }
    return text;
}
