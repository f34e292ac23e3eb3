#include "store/sets/DAOEval.h"
#include "tests/store/MemberFixture.h"

namespace
{

using Rows = std::vector<std::int32_t>;

/// The numbers of the rows that each kind of find selects.
template <typename Set, typename Number, typename Find>
void ExpectFinds(Number const& number, Find const& find)
{
    auto const found = [&](auto const&... by) {
        Set set;
        Rows rows;
        for (int count = find(set, by...); count > 0; --count) {
            rows.push_back(static_cast<std::int32_t>(number(set)));
            set.Op(CDAOEFSet::opMoveNext);
        }
        return rows;
    };
    EXPECT_EQ(found(5), (Rows{10, 20, 30}));
    EXPECT_EQ(found(0), (Rows{10, 20, 40, 30}));
    EXPECT_EQ(found(20), Rows());
    EXPECT_EQ(found(5, std::uint8_t(1)), (Rows{20, 30}));
    EXPECT_EQ(found(6, std::uint8_t(2)), Rows());
    EXPECT_EQ(found(5, CEFOleDateTime(2026, 1, 2, 9, 0, 1)), Rows{20});
    EXPECT_EQ(found(5, CEFOleDateTime(2026, 1, 2, 9, 0, 0)), Rows()) << "a second";
    EXPECT_EQ(found(6, CEFOleDateTime(2026, 1, 3, 8, 59, 59)), Rows());
}

} // namespace

using EvaluationTest = CMemberTest;

TEST_F(EvaluationTest, FindsSelectTheirRowsOldestFirst)
{
    AddMember(5);
    AddMember(6);
    AddRecords(5, 1, {2026, 1, 3, 8, 59, 59}, "30");
    AddRecords(5, 2, {2026, 1, 1, 9, 0, 0}, "10");
    AddRecords(5, 1, {2026, 1, 2, 9, 0, 1}, "20");
    AddRecords(6, 1, {2026, 1, 2, 9, 0, 1}, "40");
    auto const findEvals = [](auto& set, std::int32_t member, auto const&... by) {
        if constexpr (sizeof...(by) == 0) {
            return set.FindEvals(CDAOSmEval::idMember, member);
        } else {
            return set.FindEvals(member, by...);
        }
    };
    ExpectFinds<CDAOSmEval>([](auto& set) { return set.m_lEvalID; }, findEvals);
    ExpectFinds<CDAOEval>([](auto& set) { return set.m_lEvalID; }, findEvals);
    ExpectFinds<CDAOBodyComp>([](auto& set) { return set.m_nMethod; },
        [](auto& set, auto const&... by) { return set.FindBodyComps(by...); });
    ExpectFinds<CDAOWk>([](auto& set) { return set.GetStnVal(0); },
        [](auto& set, auto const&... by) { return set.FindWks(by...); });
    for (int const number : {5, 20}) {
        EXPECT_EQ(CDAOSmEval().FindEvals(CDAOSmEval::idEval, number), number == 20 ? 1 : 0);
        EXPECT_EQ(CDAOEval().FindEvals(CDAOSmEval::idEval, number), number == 20 ? 1 : 0);
    }
}
