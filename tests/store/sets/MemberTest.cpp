#include "store/services/MemberSearchData.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMemCls.h"
#include "tests/store/MemberFixture.h"

#include <algorithm>
#include <functional>

namespace
{

using Search = CMemberSearchData;
using Ids = std::vector<std::int32_t>;

class MemberTest : public CMemberTest
{
protected:
    /// What a field holds in each row of a find just made.
    template <typename Set, typename Field>
    static Ids Walk(Set& set, Field const& field, int count)
    {
        EXPECT_TRUE(set.LastStatus()) << set.LastStatus().Text();
        Ids found;
        for (; count > 0; --count) {
            found.push_back(std::invoke(field, set));
            set.Op(CDAOEFSet::opMoveNext);
        }
        return found;
    }

    /// The members, in no order.
    static Ids Found(Search const& search)
    {
        CDAOMem set;
        auto found = Walk(set, &CDAOMem::m_MemberID, set.FindMembers(search, true, true));
        std::sort(found.begin(), found.end());
        return found;
    }
    template <typename... Values>
    static Search By(Search::search criterion, Values const&... values)
    {
        Search search;
        search.SetSearchCriteria(criterion, values...);
        return search;
    }
    static Search ByText(
        Search::search criterion, char const* text, char const* second = "", char const* third = "")
    {
        return By(criterion, text, second, third);
    }
};

} // namespace

TEST_F(MemberTest, AreFoundByEitherNumberAndListedByNameIgnoringCase)
{
    AddMember(1, "smith", "Bo");
    AddMember(2, "adams", "Cy");
    AddMember(3, "SMITH", "Al");
    Run(DataFile::member, "UPDATE members SET status = 200 WHERE member_id = 3");
    CDAOSmMem set;
    auto const found = [&](int count) { return Walk(set, &CDAOSmMem::m_MemberID, count); };
    EXPECT_EQ(found(set.FindAllMembersByName(true)), (Ids{2, 3, 1}));
    EXPECT_EQ(found(set.FindAllMembersByName(false)), (Ids{3, 1}));
    EXPECT_EQ(found(set.FindAllMembers(false)), (Ids{1, 3}));
    EXPECT_EQ(found(set.FindMember(CDAOSmMem::idWorkout, 503)), Ids{3});
    EXPECT_EQ(found(set.FindMember(CDAOSmMem::idWorkout, 3)), Ids()) << "that is a member ID";
    EXPECT_EQ(set.CountPast(), 1);
    CDAOMem whole;
    EXPECT_EQ(whole.FindAllMembers(true), 3);
    EXPECT_EQ(whole.FindAllMembers(false), 2);
    ASSERT_EQ(whole.FindMember(CDAOSmMem::idWorkout, 502), 1);
    EXPECT_EQ(MemberIDOf(whole), 2);
}

TEST_F(MemberTest, RecordsAreFoundByMemberClassAndTimeOldestFirst)
{
    AddMember(5);
    AddMember(6);
    AddRecords(5, 1, {2026, 1, 3, 8, 59, 59}, "30");
    AddRecords(5, 2, {2026, 1, 1, 9, 0, 0}, "10");
    AddRecords(5, 1, {2026, 1, 2, 9, 0, 1}, "20");
    AddRecords(6, 1, {2026, 1, 2, 9, 0, 1}, "40");
    auto const expectFinds = [](auto& set, auto const& number, auto const& find) {
        auto const found = [&](auto const&... by) { return Walk(set, number, find(set, by...)); };
        EXPECT_EQ(found(5), (Ids{10, 20, 30}));
        EXPECT_EQ(found(0), (Ids{10, 20, 40, 30}));
        EXPECT_EQ(found(20), Ids());
        EXPECT_EQ(found(5, std::uint8_t(1)), (Ids{20, 30}));
        EXPECT_EQ(found(6, std::uint8_t(2)), Ids());
        EXPECT_EQ(found(5, CEFOleDateTime(2026, 1, 2, 9, 0, 1)), Ids{20});
        EXPECT_EQ(found(5, CEFOleDateTime(2026, 1, 2, 9, 0, 0)), Ids()) << "a second";
        EXPECT_EQ(found(6, CEFOleDateTime(2026, 1, 3, 8, 59, 59)), Ids());
    };
    auto const findEvals = [](auto& set, std::int32_t member, auto const&... by) {
        if constexpr (sizeof...(by) == 0) {
            return set.FindEvals(CDAOSmEval::idMember, member);
        } else {
            return set.FindEvals(member, by...);
        }
    };
    CDAOSmEval summaries;
    CDAOEval evaluations;
    CDAOBodyComp bodyComps;
    CDAOWk workouts;
    expectFinds(summaries, &CDAOSmEval::m_lEvalID, findEvals);
    expectFinds(evaluations, &CDAOEval::m_lEvalID, findEvals);
    expectFinds(bodyComps, &CDAOBodyComp::m_nMethod,
        [](auto& set, auto const&... by) { return set.FindBodyComps(by...); });
    expectFinds(
        workouts, [](CDAOWk const& set) { return set.GetStnVal(0); },
        [](auto& set, auto const&... by) { return set.FindWks(by...); });
    EXPECT_EQ(summaries.FindEvals(CDAOSmEval::idEval, 20), 1);
    EXPECT_EQ(evaluations.FindEvals(CDAOSmEval::idEval, 5), 0);
}

TEST_F(MemberTest, SearchMeetsAllCriteria)
{
    AddMember(1, "M\u00FCller", "Ana", {1990, 11, 16});
    AddMember(2, "M\u00DCLLER-Ortiz", "ben", {1990, 11, 17});
    AddMember(3, "Muller", "Cy", {2000, 2, 29});
    Ids const all = {1, 2, 3};
    EXPECT_EQ(Found({}), all);
    EXPECT_EQ(Found(ByText(Search::sLastName, "m\u00FC")), (Ids{1, 2})) << "case, but not accents";
    EXPECT_EQ(Found(ByText(Search::sLastName, "MUL")), Ids{3});
    EXPECT_EQ(Found(ByText(Search::sLastName, "%")), Ids());
    EXPECT_EQ(Found(ByText(Search::sState, "i")), Ids()) << "it is whole";
    EXPECT_EQ(Found(By(Search::sAge, 36, 36)), Ids{1}) << "36 today";
    EXPECT_EQ(Found(By(Search::sAge, 35, 36)), (Ids{1, 2}));
    EXPECT_EQ(Found(By(Search::sAge, 26, 26)), Ids{3});
    EXPECT_EQ(Found(By(Search::sGoals, 0x15)), Ids()) << "every bit counts";
    EXPECT_EQ(Found(By(Search::sExpireDate, CEFOleDateTime(2026, 12, 31, 8, 0),
                  CEFOleDateTime(2026, 12, 31))),
        all)
        << "both days whole";
    auto both = ByText(Search::sLastName, "M");
    both.SetSearchCriteria(Search::sStatus, std::uint8_t(0));
    EXPECT_EQ(Found(both), Ids{2});
    both.SetSearchCriteria(Search::sStatus, std::uint8_t(1));
    EXPECT_EQ(Found(both), (Ids{1, 3})) << "set again replaces";
}

TEST_F(MemberTest, ClassSearchFindsAMemberOnceByTheFirstClassThatMeetsIt)
{
    auto const slot = [](char const* category, char const* section, std::uint8_t index) {
        auto made = Slot(category, index);
        made.section = section;
        return made;
    };
    AddMember(1, "B");
    AddMember(2, "A");
    ASSERT_TRUE(UpdateClasses(
        1, slot("Gym", "Tue", 9), slot("Yoga", "Mon", 5), slot("Y\u00D6GA", "Tue", 3)));
    ASSERT_TRUE(UpdateClasses(2, slot("Yoga", "Tue", 8), slot("yoga", "Mon", 2), {}));
    auto both = ByText(Search::sClass, "yoga", "course");
    both.SetSearchCriteria(Search::sLastName, "b", nullptr, nullptr);
    for (auto const& [search, indexes] : {std::pair(Search(), Ids{8, 9}), {both, Ids{5}},
             {ByText(Search::sClass, "yoga", "course"), Ids{8, 5}},
             {ByText(Search::sClass, "yoga", "course", "mon"), Ids{2, 5}},
             {ByText(Search::sClass, "y\u00F6g", "course"), Ids()},
             {ByText(Search::sClass, "y\u00F6ga", "course"), Ids{3}}}) {
        CDAOMemCls set;
        int const count = set.FindMembers(search, true, true);
        EXPECT_EQ(Walk(set, &CDAOMemCls::m_ClassIndex, count), indexes);
        EXPECT_EQ(Found(search).size(), indexes.size());
    }
}
