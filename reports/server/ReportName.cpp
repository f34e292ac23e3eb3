#include "reports/server/ReportName.h"

#include "store/sets/DAOSmMem.h"

#include <QCoreApplication>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kLongestName = 120; ///< bytes of a member's in a file's, which has 255 at most

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CReportName)
};

QString Text(std::string const& text)
{
    return QString::fromStdString(text).simplified();
}

QString Period(CReportJob const& job)
{
    auto const text = [](CEFOleDateTime const& date) { return Text(date.DateTimeStrShortYear()); };
    auto const day = [](CEFOleDateTime const& date) { return Text(date.DateStrLongYear()); };
    if (job.m_dtFrom.IsZero() && job.m_dtTo.IsZero()) {
        return {};
    }
    if (CDAOReport::GetParamKind(job.m_nType) == CDAOReport::rpMember) { // of records
        bool const isOne = job.m_dtTo.IsZero() || job.m_dtTo == job.m_dtFrom;
        return isOne ? text(job.m_dtFrom)
                     : CTexts::tr("%1 and %2").arg(text(job.m_dtFrom), text(job.m_dtTo));
    }
    return job.m_dtFrom.IsSameDay(job.m_dtTo)
        ? day(job.m_dtFrom)
        : CTexts::tr("%1 to %2").arg(day(job.m_dtFrom), day(job.m_dtTo));
}

QString Class(CReportJob const& job)
{
    if (job.m_nType == CDAOReport::rtMemberWorkouts) {
        return Text(job.m_strCourse); // the class itself stands there
    }
    QStringList parts;
    for (auto const* const part : {&job.m_strCategory, &job.m_strCourse, &job.m_strSection}) {
        if (!part->empty()) {
            parts += Text(*part);
        }
    }
    return parts.join(u" / "_s);
}

/// Only letters and digits that a member's name can have: what another program stored as a name
/// must not lead to another folder, or hide a file.
QString MemberName(std::int32_t memberID)
{
    std::string first;
    std::string initial;
    std::string last;
    std::uint8_t status = 0;
    if (!CDAOSmMem().GetMember(CDAOSmMem::idMember, memberID, first, initial, last, status)) {
        return {};
    }
    QString name;
    for (auto const letter : Text(last.append(" ").append(first))) {
        bool const isFit = letter.isLetterOrNumber() || letter.isMark() || letter.isSurrogate()
            || u" '-"_s.contains(letter);
        name += isFit ? letter : u'-';
    }
    while (name.toUtf8().size() > kLongestName) {
        name.chop(1);
    }
    return name.simplified();
}

} // namespace

QString ReportName(CReportJob const& job)
{
    auto const name = QString::fromUtf8(CDAOReport::GetTypeStr(job.m_nType));
    return name.isEmpty() ? CTexts::tr("Report") : name;
}

QString ReportScope(CReportJob const& job)
{
    QStringList parts;
    auto const kind = CDAOReport::GetParamKind(job.m_nType);
    if (kind == CDAOReport::rpMember) {
        parts += CTexts::tr("Member ID %1").arg(job.m_nParam);
    }
    for (auto const& part : {Class(job), Period(job)}) {
        if (!part.isEmpty()) {
            parts += part;
        }
    }
    if (kind == CDAOReport::rpOptions) {
        for (auto const& [option, words] : {std::pair(CDAOReport::roAll, CTexts::tr("all members")),
                 {CDAOReport::roCurrent, CTexts::tr("current members")},
                 {CDAOReport::roPast, CTexts::tr("past members")},
                 {CDAOReport::roAllWorkouts, CTexts::tr("all workouts")}}) {
            if ((job.m_nParam & option) != 0) {
                parts += words;
            }
        }
    }
    return parts.join(u", "_s);
}

QString ReportFileName(CQueuedReport const& report, CEFOleDateTime const& now, bool names)
{
    QStringList parts = {
        ReportName(report.job).replace(u'/', u'-').remove(u'"'),
        QString::fromStdString(now.Format("%Y-%m-%d %H-%M-%S")),
        QString::number(report.id),
    };
    if (names && CDAOReport::GetParamKind(report.job.m_nType) == CDAOReport::rpMember) {
        parts.insert(1, MemberName(report.job.m_nParam));
        parts.removeAll(QString());
    }
    return parts.join(u' ') + u".pdf"_s;
}
