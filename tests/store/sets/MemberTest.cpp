#include "store/sets/DAOChkIn.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMemCls.h"
#include "store/services/MemberSearchData.h"
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
    static std::vector<std::int32_t> Found(Search const& search)
    {
        CDAOMem plain;
        CDAOMemCls classes;
        CDAOMem& set = search.Has(Search::sClass) ? classes : plain;
        std::vector<std::int32_t> ids;
        int const count = set.FindMembers(search, true, true);
        EXPECT_TRUE(set.LastStatus()) << set.LastStatus().Text();
        for (int i = 0; i < count; ++i) {
            ids.push_back(set.m_MemberID);
            set.Op(CDAOEFSet::opMoveNext);
        }
        std::sort(ids.begin(), ids.end());
        return ids;
    }
};

} // namespace

TEST_F(MemberTest, RecordsGoAndFollowWithTheirMember)
{
    AddMember(7);
    AddMember(8);
    ASSERT_TRUE(UpdateClasses(7, Slot("Yoga"), {}, {}));
    ASSERT_EQ(corv_apiPostMemberMessage("Hello", 7, false), apiSuccess);
    AddWorkout(7, 1);
    AddBodyComp(7, 1);
    auto const evaluation = AddEvaluation(7, 1);
    for (auto const* table : {"skinfolds (eval_id, percent_fat, thigh, chest, abdomen, triceps, "
                              "suprailiac, midaxillary, subscapular) VALUES (?,1,0,0,0,0,0,0,0)"}) {
        Run(DataFile::member, std::string("INSERT INTO ") + table, {std::int64_t(evaluation)});
    }
    CDAOSmMem set;
    ASSERT_EQ(set.FindMember(CDAOSmMem::idMember, 7), 1);
    ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
    set.m_MemberID = 77;
    ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate));
    for (std::string const table : {"profiles", "enrollments", "classes", "messages", "workouts",
             "evaluations", "body_compositions"}) {
        EXPECT_EQ(Count(table + " WHERE member_id = 77"), 1) << table;
        EXPECT_EQ(Count(table + " WHERE member_id = 7"), 0) << table;
    }
    CDAOEval whole;
    ASSERT_EQ(whole.FindEvals(CDAOSmEval::idMember, 77), 1);
    EXPECT_EQ(whole.m_dPercentFat, 1.0);
    ASSERT_EQ(set.FindMember(CDAOSmMem::idMember, 77), 1);
    ASSERT_TRUE(set.DelCurrent());
    for (std::string const table : {"members", "profiles", "enrollments"}) {
        EXPECT_EQ(Count(table), 1) << table;
    }
    for (std::string const table :
        {"classes", "messages", "workouts", "evaluations", "skinfolds", "body_compositions"}) {
        EXPECT_EQ(Count(table), 0) << table;
    }
}

TEST_F(MemberTest, LooksUpByEitherNumber)
{
    AddMember(7, "M\xC3\xBCller", "Ana");
    std::string first;
    std::string middle;
    std::string last;
    std::uint8_t status = 0;
    CDAOSmMem set;
    EXPECT_TRUE(set.GetMember(CDAOSmMem::idWorkout, 507, first, middle, last, status));
    EXPECT_EQ(last + first + middle, "M\xC3\xBCllerAna");
    EXPECT_TRUE(IsMember(7, CDAOSmMem::idMember));
    EXPECT_FALSE(IsMember(7, CDAOSmMem::idWorkout)) << "a workout number is not a member ID";
    CDAOMem whole;
    ASSERT_NE(whole.FindMember(CDAOSmMem::idWorkout, 507), 0);
    EXPECT_EQ(whole.m_ExpireDate.DateStrLongYear(), "12/31/2026");
}

TEST_F(MemberTest, ListsByNameIgnoringCase)
{
    AddMember(1, "smith", "Bo");
    AddMember(2, "Adams", "Cy");
    AddMember(3, "SMITH", "Al");
    CDAOSmMem set;
    ASSERT_EQ(set.FindAllMembersByName(true), 3);
    Ids ids;
    for (int i = 0; i < 3; ++i) {
        ids.push_back(set.m_MemberID);
        set.Op(CDAOEFSet::opMoveNext);
    }
    EXPECT_EQ(ids, (Ids{2, 3, 1}));
    EXPECT_EQ(set.FindAllMembers(false), 2);
    EXPECT_EQ(set.CountPast(), 1);
    CDAOMem whole;
    EXPECT_EQ(whole.FindAllMembers(true), 3);
    ASSERT_EQ(whole.FindAllMembers(false), 2);
    EXPECT_EQ(whole.m_MemberID, 1);
    EXPECT_STREQ(CDAOMem::GetStatusStr(whole.m_Status), "Current");
    EXPECT_STREQ(CDAOMem::GetStatusStr(0), "Past");
}

TEST_F(MemberTest, CheckInsComeOldestFirstAndGoOneByOne)
{
    auto const noon = CEFOleDateTime(2026, 11, 16, 12, 0).Seconds();
    for (std::int64_t const late : {60, 0, 0}) {
        static std::int64_t member = 6;
        ++member;
        Run(DataFile::checkIn,
            "INSERT INTO check_ins (member_id, workout_number, first_name, last_name, check_in) "
            "VALUES (?1, ?1 + 500, 'Ana', 'Doe', ?2)",
            {member, noon + late});
    }
    CDAOChkIn set;
    auto const members = [&] {
        Ids ids;
        for (int n = set.FindChkIns(); n > 0; --n) {
            ids.push_back(set.m_lMemberID);
            set.Op(CDAOEFSet::opMoveNext);
        }
        return ids;
    };
    EXPECT_EQ(members(), (Ids{8, 9, 7}));
    ASSERT_EQ(set.FindChkIns(), 3);
    EXPECT_EQ(set.m_lWorkoutNo, 508);
    EXPECT_EQ(set.m_strFirstName + set.m_strLastName, "AnaDoe");
    EXPECT_EQ(set.m_dtCheckIn.Seconds(), noon);
    set.Op(CDAOEFSet::opMoveNext);
    EXPECT_TRUE(set.DelCurrent());
    EXPECT_EQ(members(), (Ids{8, 7}));
}

TEST_F(MemberTest, WorkoutsCountWholeMinutesAndTwelveStations)
{
    CDAOWk set;
    set.m_dtCheckIn = {2026, 11, 16, 10, 0, 30};
    for (auto const& [out, minutes] :
        std::vector<std::pair<CEFOleDateTime, int>>{{{2026, 11, 16, 11, 0, 29}, 59},
            {{2026, 11, 16, 11, 0, 30}, 60}, {{2026, 11, 17, 10, 0, 30}, 1440},
            {{2026, 11, 16, 10, 0, 29}, 0}, {{2026, 11, 15, 10, 0, 30}, 0}}) {
        set.m_dtCheckOut = out;
        EXPECT_EQ(set.TotalMinutes(), minutes) << out.DateTimeStrLongYear();
    }
    set.SetStnVal(0, 5);
    set.SetStnVal(12, 6);
    auto const fields = set.FieldValues();
    for (int const index : {-1, 13}) {
        set.SetStnVal(index, 7);
        EXPECT_EQ(set.GetStnVal(index), 0);
    }
    EXPECT_EQ(set.FieldValues(), fields) << "of no station, and of nothing else";
    EXPECT_TRUE(set.GetStnVal(0) == 5 && set.GetStnVal(1) == 0 && set.GetStnVal(12) == 6);
}

TEST_F(MemberTest, FindsWorkoutsByEveryWay)
{
    AddMember(1);
    AddMember(2);
    AddWorkout(1, 3, {2026, 11, 16, 0, 0, 0});
    AddWorkout(1, 4, {2026, 11, 16, 23, 59, 59}, false);
    AddWorkout(2, 3, {2026, 11, 15, 12, 0, 1});
    CDAOWk set;
    EXPECT_EQ(set.FindWks(0), 3);
    EXPECT_EQ(set.m_lMemberID, 2) << "oldest first";
    EXPECT_EQ(set.FindWks(1), 2);
    EXPECT_EQ(set.FindWks(1, std::uint8_t(4)), 1);
    EXPECT_EQ(set.FindWks(1, std::uint8_t(3)), 1) << "not those of another member";
    EXPECT_EQ(set.FindWks(2, CEFOleDateTime::Parse("11/15/2026 12:00:01")), 1);
    EXPECT_EQ(set.FindWks(2, CEFOleDateTime::Parse("11/15/2026 12:00:00")), 0);
    CEFOleDateTime from(2026, 11, 16);
    auto to = from;
    to.PreMidnight();
    EXPECT_EQ(set.FindWks(0, from, to, CDAOWk::okAll), 2);
    EXPECT_EQ(set.FindWks(1, from, to, CDAOWk::okNo), 1);
    EXPECT_EQ(set.FindWks(1, from, to, CDAOWk::okYes), 1);
    EXPECT_EQ(set.FindWks(2, from, to, CDAOWk::okAll), 0);
    EXPECT_EQ(set.CountToday(), 2);
}

TEST_F(MemberTest, EachCriterionFindsByItsOwnField)
{
    struct Case
    {
        std::uint32_t value;
        Search::search criterion;
        std::string change; ///< by which one member differs from all others
        std::function<void(Search&, Search::search)> set;
    };
    auto const by = [](auto... values) {
        return [=](Search& search, Search::search criterion) {
            search.SetSearchCriteria(criterion, values...);
        };
    };
    auto const text = [](char const* value) {
        return [=](Search& search, Search::search criterion) {
            search.SetSearchCriteria(criterion, value, nullptr, nullptr);
        };
    };
    CEFOleDateTime const day(2020, 5, 5);
    auto const onTheDay = [](std::string const& column) {
        return column + std::to_string(CEFOleDateTime(2020, 5, 5, 12, 0).Seconds());
    };
    std::vector<Case> const cases = {
        {0x1, Search::sMedicalHistory, "profiles SET medical_history = 0x180001",
            by(std::int32_t(0x180000))},
        {0x2, Search::sGoals, "profiles SET goals = 7", by(std::int32_t(5))},
        {0x4, Search::sSex, "profiles SET sex = 1", by(std::uint8_t(1))},
        {0x8, Search::sAge, onTheDay("profiles SET birthday = "), by(5, 7)},
        {0x10, Search::sEmployee, "profiles SET employee = 1", by(std::uint8_t(1))},
        {0x20, Search::sRelease, "profiles SET release = 1", by(std::uint8_t(1))},
        {0x40, Search::sPhysician, "profiles SET physician = 'Xyz'", text("xY")},
        {0x80, Search::sEmail, "profiles SET email = 'Xyz'", text("xY")},
        {0x100, Search::sPhone, "profiles SET phone = 'Xyz'", text("xY")},
        {0x200, Search::sZip, "profiles SET zip = 'Xyz'", text("xY")},
        {0x400, Search::sState, "profiles SET state = 'Xy'", text("xY")},
        {0x800, Search::sCity, "profiles SET city = 'Xyz'", text("xY")},
        {0x1000, Search::sAddress, "profiles SET address = 'Xyz'", text("xY")},
        {0x2000, Search::sStatus, "members SET status = 0", by(std::uint8_t(0))},
        {0x4000, Search::sLastName, "members SET last_name = 'Xyz'", text("xY")},
        {0x8000, Search::sFirstName, "members SET first_name = 'Xyz'", text("xY")},
        {0x10000, Search::sWorkoutNumber, "members SET workout_number = 77", by(std::int32_t(77))},
        {0x20000, Search::sIncentive, "enrollments SET incentive = 1", by(std::uint8_t(1))},
        {0x40000, Search::sPeriod, "enrollments SET period = 3", by(std::uint8_t(3))},
        {0x80000, Search::sExpireDate, onTheDay("enrollments SET expire_date = "), by(day, day)},
        {0x100000, Search::sEnrollDate, onTheDay("enrollments SET enroll_date = "), by(day, day)},
        {0x200000, Search::sMemberID, "members SET status = 2", by(std::int32_t(22))},
        {0x400000, Search::sClass, "classes SET category = 'Xyz'", text("xYZ")},
    };
    for (std::int32_t id = 1; id <= 23; ++id) {
        AddMember(id);
        ASSERT_TRUE(UpdateClasses(id, Slot("Yoga"), {}, {}));
    }
    for (std::string const alike : {"members SET status = 1",
             "profiles SET address = '', city = '', state = '', zip = '', phone = '', email = '', "
             "physician = '', release = 0, employee = 0, sex = 0, goals = 8, medical_history = 2",
             "enrollments SET period = 1, incentive = 0"}) {
        Run(DataFile::member, "UPDATE " + alike);
    }
    for (std::size_t i = 0; i < cases.size(); ++i) {
        Run(DataFile::member, "UPDATE " + cases[i].change + " WHERE member_id = ?",
            {std::int64_t(i + 1)});
    }
    std::uint32_t all = 0;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(cases[i].value, cases[i].criterion);
        all |= cases[i].value;
        Search search;
        cases[i].set(search, cases[i].criterion);
        EXPECT_EQ(Found(search), (Ids{static_cast<std::int32_t>(i + 1)})) << cases[i].change;
    }
    EXPECT_EQ(all, 0x7FFFFFU);
}

TEST_F(MemberTest, SearchMeetsAllCriteria)
{
    AddMember(1, "M\xC3\xBCller", "Ana", {1990, 11, 16});
    AddMember(2, "M\xC3\x9CLLER-Ortiz", "ben", {1990, 11, 17});
    AddMember(3, "Muller", "Cy", {2000, 2, 29});
    auto const by = [](auto... values) {
        Search search;
        search.SetSearchCriteria(values...);
        return Found(search);
    };
    auto const text = [&](Search::search criterion, char const* value) {
        return by(
            criterion, value, static_cast<char const*>(nullptr), static_cast<char const*>(nullptr));
    };
    EXPECT_EQ(Found({}).size(), 3U);
    EXPECT_EQ(text(Search::sLastName, "m\xC3\xBC"), (Ids{1, 2})) << "case, but not accents";
    EXPECT_EQ(text(Search::sLastName, "MUL"), (Ids{3}));
    EXPECT_EQ(text(Search::sLastName, "%"), (Ids{}));
    EXPECT_EQ(text(Search::sState, "i").size(), 0U);
    EXPECT_EQ(by(Search::sAge, 36, 36), (Ids{1})) << "36 today";
    EXPECT_EQ(by(Search::sAge, 35, 36), (Ids{1, 2}));
    EXPECT_EQ(by(Search::sAge, 26, 26), (Ids{3}));
    EXPECT_EQ(by(Search::sAge, 40, 30), (Ids{}));
    EXPECT_EQ(by(Search::sGoals, std::int32_t(0x05)).size(), 3U);
    EXPECT_EQ(by(Search::sGoals, std::int32_t(0x15)).size(), 0U) << "every bit counts";
    EXPECT_EQ(by(Search::sMedicalHistory, std::int32_t(0x100001)).size(), 3U);
    EXPECT_EQ(
        by(Search::sExpireDate, CEFOleDateTime(2026, 12, 31, 8, 0), CEFOleDateTime(2026, 12, 31))
            .size(),
        3U)
        << "both days whole";
    Search both;
    both.SetSearchCriteria(Search::sLastName, "M", nullptr, nullptr);
    both.SetSearchCriteria(Search::sStatus, std::uint8_t(0));
    EXPECT_EQ(Found(both), (Ids{2}));
    both.SetSearchCriteria(Search::sStatus, std::uint8_t(1));
    EXPECT_EQ(Found(both).size(), 2U) << "set again replaces";
}

TEST_F(MemberTest, ClassSearchFindsAMemberOnceByTheFirstClassThatMeetsIt)
{
    auto const slot
        = [](std::string const& category, std::string const& section, std::uint8_t index) {
              auto made = Slot(category, index);
              made.section = section;
              return made;
          };
    AddMember(1, "B");
    AddMember(2, "A");
    AddMember(3, "C");
    ASSERT_TRUE(UpdateClasses(
        1, slot("Gym", "Tue", 9), slot("Yoga", "Mon", 5), slot("Y\xC3\x96GA", "Tue", 3)));
    ASSERT_TRUE(UpdateClasses(2, slot("Yoga", "Tue", 8), slot("yoga", "Mon", 2), {}));
    using Members = std::vector<std::pair<std::int32_t, int>>;
    auto const found = [](Search const& search) {
        Members members;
        CDAOMemCls set;
        for (int n = set.FindMembers(search, true, true); n > 0; --n) {
            members.emplace_back(MemberIDOf(set), set.m_ClassIndex);
            set.Op(CDAOEFSet::opMoveNext);
        }
        return members;
    };
    auto const by = [&](char const* category, char const* section) {
        Search search;
        search.SetSearchCriteria(Search::sClass, category, "course", section);
        CDAOMem plain;
        auto members = found(search);
        EXPECT_EQ(plain.FindMembers(search, true, true), static_cast<int>(members.size()));
        return members;
    };
    EXPECT_EQ(by("yoga", ""), (Members{{2, 8}, {1, 5}}));
    EXPECT_EQ(by("yoga", "mon"), (Members{{2, 2}, {1, 5}}));
    EXPECT_EQ(by("gym", ""), (Members{{1, 9}}));
    EXPECT_EQ(by("y\xC3\xB6ga", ""), (Members{{1, 3}}));
    EXPECT_EQ(found({}), (Members{{2, 8}, {1, 9}})) << "who has a class, by the first one";
    Search both;
    both.SetSearchCriteria(Search::sClass, "yoga", "course", "");
    both.SetSearchCriteria(Search::sLastName, "b", nullptr, nullptr);
    EXPECT_EQ(found(both), (Members{{1, 5}}));
}
