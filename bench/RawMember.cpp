#include "bench/RawMember.h"

#include "store/sets/DatabaseSession.h"

std::string MemberPath()
{
    return CDatabaseSession::Get().PathOf(DataFile::member);
}

void AddMembers(CRawDatabase const& raw, int count)
{
    raw.Run("BEGIN");
    CRawStatement const member(raw,
        "INSERT INTO members (member_id, workout_number, first_name, middle_initial, last_name, "
        "status) VALUES (?1, ?1, 'Katharine', 'Q', 'Featherstonehaugh ' || ?1, 1)");
    for (int i = 1; i <= count; ++i) {
        member.Bind(1, i);
        member.Step();
        member.Reset();
    }
    raw.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

void AddTablesOfMembers(CRawDatabase const& raw, int membersOfAClass)
{
    raw.Run("BEGIN;"
            "INSERT INTO profiles (member_id, address, city, state, zip, phone, email, "
            "emergency_name, emergency_phone, physician, release, employee, birthday, sex, goals, "
            "medical_history) SELECT member_id, '4711 Evergreen Terrace', 'Springfield', 'WA', "
            "'98101-1234', '(555) 555-0101', 'katharine.q@example.org', 'John Featherstonehaugh', "
            "'(555) 555-0102', 'Dr. Elizabeth Q. Hamilton', 1, 0, 3000000000, 0, 21, 5 "
            "FROM members;"
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
            "SELECT member_id, 3980000000, 4010000000, 3, 1 FROM members;"
            "INSERT INTO messages (member_id, message) SELECT member_id, 'Welcome back!' "
            "FROM members;");
    CRawStatement const classes(raw,
        "INSERT INTO classes (member_id, class_index, category, course, section, grade_status, "
        "orientation, re_evaluations, other_bonuses) SELECT member_id, ?1, 'Category ' || ?1, "
        "'Course ' || (member_id * 7919 % (1 + (SELECT count(*) FROM members) / ?2)), "
        "'Monday evening', 1, 1, 2, 0 FROM members");
    for (int index = 1; index <= 3; ++index) {
        classes.Bind(1, index);
        classes.Bind(2, membersOfAClass);
        classes.Step();
        classes.Reset();
    }
    raw.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

std::vector<CMemberTable> const& MemberTables()
{
    static std::vector<CMemberTable> const tables
        = {{"members", {"workout_number", "status"}, {"first_name", "middle_initial", "last_name"}},
            {"profiles", {"release", "employee", "birthday", "sex", "goals", "medical_history"},
                {"address", "city", "state", "zip", "phone", "email", "emergency_name",
                    "emergency_phone", "physician"}},
            {"enrollments", {"enroll_date", "expire_date", "period", "incentive"}, {}},
            {"messages", {}, {"message"}},
            {"classes",
                {"class_index", "grade_status", "orientation", "re_evaluations", "other_bonuses"},
                {"category", "course", "section"}}};
    return tables;
}

CRawMemberStatements::CRawMemberStatements(CRawDatabase const& raw, Kind kind)
{
    for (auto const& table : MemberTables()) {
        std::string columns = "member_id";
        std::string places = "?1";
        std::string changes;
        int place = 1;
        for (auto const* list : {&table.numbers, &table.texts}) {
            for (auto const* const column : *list) {
                columns += std::string(", ") + column;
                places += ", ?" + std::to_string(++place);
                changes += (changes.empty() ? "" : ", ") + std::string(column) + " = ?"
                    + std::to_string(place);
            }
        }
        std::string const name = table.name;
        m_statements.push_back(std::make_unique<CRawStatement>(raw,
            kind == Kind::select
                ? "SELECT id, " + columns + " FROM " + name + " WHERE member_id = ? ORDER BY id"
                : kind == Kind::insert
                ? "INSERT INTO " + name + " (" + columns + ") VALUES (" + places + ")"
                : "UPDATE " + name + " SET " + changes + " WHERE member_id = ?1"
                    + (name == "classes" ? " AND class_index = ?2" : "")));
    }
}

std::size_t LoadRaw(CRawMemberStatements const& selects, std::int32_t member)
{
    std::size_t sum = 0;
    for (std::size_t i = 0; i < MemberTables().size(); ++i) {
        auto const& select = selects.Of(i);
        auto const numbers = 2 + static_cast<int>(MemberTables()[i].numbers.size());
        select.Bind(1, member);
        while (select.Step()) {
            for (int column = 0; column < select.Columns(); ++column) {
                sum += column < numbers ? static_cast<std::size_t>(select.Integer(column))
                                        : select.Text(column).size();
            }
        }
        select.Reset();
    }
    return sum;
}
