// Measures what changing every member of a list costs beside its dialogs, with the progress window,
// against the statements that plain SQLite needs for it, on the same file: the members selected,
// and for each his row read and what is written, in a commit of its own.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "doc/CorvanaDoc.h"
#include "members/MemberBatch.h"
#include "store/services/MemberSearchData.h"
#include "store/services/MemberServices.h"
#include "store/sets/DAOMemCls.h"
#include "ui/Messages.h"

#include <functional>

namespace
{

constexpr int kTurns = 3;

/// Says yes.
class CWilling : public CMessageShower
{
public:
    CWilling() { SetMessageShower(this); }
    ~CWilling() override { SetMessageShower(nullptr); }
    bool Show(QWidget* /*parent*/, CMessage const& message) override
    {
        if (!message.m_bQuestion) {
            std::fprintf(stderr, "%s\n", qPrintable(message.m_strText));
            std::exit(1);
        }
        return true;
    }
};

/// Statements of plain SQLite, prepared once; each member is one commit.
class CRawBatch
{
public:
    /// The view and the condition that select the members; what is written of each, with the
    /// member's ID as ?1 and a value that changes from turn to turn as ?2.
    CRawBatch(std::string const& selection, std::vector<std::string> const& writes)
        : m_raw(MemberPath())
        , m_keys(m_raw, "SELECT id FROM " + selection)
        , m_row(
              m_raw, "SELECT * FROM " + selection.substr(0, selection.find(' ')) + " WHERE id = ?1")
    {
        for (auto const& sql : writes) {
            m_writes.push_back(std::make_unique<CRawStatement>(m_raw, sql));
        }
    }

    int Run(int turn)
    {
        std::vector<std::int64_t> keys;
        while (m_keys.Step()) {
            keys.push_back(m_keys.Integer(0));
        }
        m_keys.Reset();
        for (auto const key : keys) {
            m_raw.Run("BEGIN IMMEDIATE");
            m_row.Bind(1, key);
            m_row.Step();
            auto const member = m_row.Integer(1);
            for (int column = 2; column < m_row.Columns(); ++column) {
                m_nSum += m_row.Text(column).size();
            }
            m_row.Reset();
            for (auto const& write : m_writes) {
                write->Bind(1, member);
                write->Bind(2, turn);
                write->Step();
                write->Reset();
            }
            m_raw.Run("COMMIT");
        }
        return static_cast<int>(keys.size());
    }

private:
    CRawDatabase const m_raw;
    CRawStatement const m_keys;
    CRawStatement const m_row;
    std::vector<std::unique_ptr<CRawStatement>> m_writes;
    std::size_t m_nSum = 0; ///< so that nothing is read in vain
};

/// What is measured: plain SQLite, and the batch over the members that a search finds.
struct COperation
{
    char const* m_pName;
    CRawBatch& m_raw;
    CDAOMem& m_set;
    std::function<bool(std::int32_t memberID, int turn)> m_fnChange;
};

void Measure(CCorvanaDoc& doc, CMemberSearchData const& search, COperation const& operation)
{
    std::vector<double> plain;
    std::vector<double> ours;
    for (int turn = 0; turn < kTurns; ++turn) {
        double const start = CpuMs();
        int const count = operation.m_raw.Run(2 * turn);
        double const middle = CpuMs();
        bool const isSame = operation.m_set.FindMembers(search, true, true) == count
            && ChangeMembers(doc, operation.m_set,
                {QStringLiteral("Updating, please wait..."), QStringLiteral("%1 was not changed"),
                    QStringLiteral("%1 of %2"), [&](std::int32_t memberID) {
                        return operation.m_fnChange(memberID, 2 * turn + 1);
                    }});
        ours.push_back(CpuMs() - middle);
        plain.push_back(middle - start);
        if (!isSame) {
            std::fputs("not the same members\n", stderr);
            std::exit(1);
        }
    }
    std::printf("| %s | %.0f ms | %.0f ms | %.2f |\n", operation.m_pName, Median(plain),
        Median(ours), Median(ours) / Median(plain));
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    int const count = bench.IsQuick() ? 50 : 10'000;
    CBenchCentre const centre({DataFile::center, DataFile::member});
    {
        CRawDatabase const raw(MemberPath());
        AddMembers(raw, count);
        AddTablesOfMembers(raw, 250);
    }
    CWilling const willing;
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    CMemberSearchData everybody;
    CMemberSearchData withClass;
    withClass.SetSearchCriteria(CMemberSearchData::sClass, "Category 2", "", "");
    std::printf("%d members\n\n| what | raw | list | ratio |\n|---|---:|---:|---:|\n", count);

    std::string const byName = " ORDER BY last_name COLLATE NOCASE, first_name COLLATE NOCASE, id";
    CRawBatch enrollments("member_view" + byName,
        {"UPDATE members SET status = 1 WHERE member_id = ?1 AND ?2 >= 0",
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive)"
            " VALUES (?1, 3990000000 + ?2, 4020000000, 1, 0) ON CONFLICT (member_id) DO UPDATE SET"
            " enroll_date = excluded.enroll_date, expire_date = excluded.expire_date,"
            " period = excluded.period, incentive = excluded.incentive"});
    Measure(doc, everybody,
        {"update the enrollment", enrollments, doc.m_setMem, [](std::int32_t memberID, int turn) {
             return UpdateEnrollment(memberID, CEFOleDateTime::FromSeconds(3'990'000'000 + turn),
                 CEFOleDateTime::FromSeconds(4'020'000'000), 1, 0, 1);
         }});

    CRawBatch messages("member_view" + byName,
        {"SELECT id, message FROM messages WHERE member_id = ?1",
            "UPDATE messages SET message = 'Closed on day ' || ?2 WHERE member_id = ?1"});
    Measure(doc, everybody,
        {"post a message", messages, doc.m_setMem, [](std::int32_t memberID, int turn) {
             auto const text = "Closed on day " + std::to_string(turn);
             return corv_apiPostMemberMessage(text.c_str(), memberID, true) == apiSuccess;
         }});

    CRawBatch classes("member_class_view WHERE category = 'Category 2'" + byName,
        {"UPDATE classes SET category = 'Category 2', course = 'Course', section = ?2,"
         " grade_status = 1, orientation = 0, re_evaluations = 0, other_bonuses = 0"
         " WHERE member_id = ?1 AND class_index = 2"});
    CDAOMemCls found;
    Measure(doc, withClass,
        {"update the class", classes, found, [&found](std::int32_t memberID, int turn) {
             return ReplaceClass(memberID, found.m_ClassIndex,
                 {"Category 2", "Course", std::to_string(turn), 1}, true);
         }});
    return 0;
}
