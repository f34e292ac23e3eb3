#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOCirc.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/DAOSmEval.h"
#include "tests/store/StoreFixture.h"
#include "tests/store/StorePeer.h"

#include <numeric>

namespace
{

CEFOleDateTime const kFirst(2026, 1, 1, 9, 0, 0);
CEFOleDateTime const kSecond(2026, 1, 2, 9, 0, 1);
CEFOleDateTime const kThird(2026, 1, 3, 8, 59, 59);

class EvaluationTest : public CStoreTest
{
protected:
    void SetUp() override
    {
        CStoreTest::SetUp();
        Run(DataFile::member,
            "INSERT INTO members (member_id, workout_number, first_name, middle_initial,"
            " last_name, status) VALUES (5, 5, '', '', '', 1), (6, 6, '', '', '', 1)");
    }

    /// Stores a row of these whole numbers in the order of the table's columns, the first of which
    /// is id.
    static void StoreNumbers(std::string const& table, std::vector<double> const& numbers)
    {
        std::string sql = "INSERT INTO " + table + " VALUES (1";
        std::vector<DbValue> values;
        for (auto const number : numbers) {
            sql += ", ?";
            values.emplace_back(static_cast<std::int64_t>(number));
        }
        Run(DataFile::member, sql.append(")"), values);
    }

    /// Adds a record that its number, in the field given, tells from the others.
    template <typename Set, typename Number>
    static void Store(Number Set::*number, CEFOleDateTime Set::*date, Number value,
        std::int32_t memberID, CEFOleDateTime const& when, std::uint8_t classIndex)
    {
        Add<Set>([&](Set& set) {
            set.*number = value;
            set.*date = when;
            set.m_lMemberID = memberID;
            set.m_nClassIndex = classIndex;
        });
    }

    static void StoreEvaluation(std::int32_t number, std::int32_t memberID,
        CEFOleDateTime const& date, std::uint8_t classIndex)
    {
        Store(
            &CDAOSmEval::m_lEvalID, &CDAOSmEval::m_dtEvalDate, number, memberID, date, classIndex);
    }

    static void StoreBodyComp(std::uint8_t method, std::int32_t memberID,
        CEFOleDateTime const& date, std::uint8_t classIndex)
    {
        Store(&CDAOBodyComp::m_nMethod, &CDAOBodyComp::m_dtBodyCompDate, method, memberID, date,
            classIndex);
    }
};

/// Numbers that tell the columns apart.
std::vector<double> Counting(double from, std::size_t count)
{
    std::vector<double> numbers(count);
    std::iota(numbers.begin(), numbers.end(), from);
    return numbers;
}

/// What a field holds of each row just found.
template <typename Set, typename Field>
std::vector<std::int32_t> Walk(Set& set, int count, Field Set::*field)
{
    std::vector<std::int32_t> rows;
    for (; count > 0; --count) {
        rows.push_back(set.*field);
        set.Op(CDAOEFSet::opMoveNext);
    }
    set.Op(CDAOEFSet::opClose);
    return rows;
}

using Rows = std::vector<std::int32_t>;

/// The finds that both views of an evaluation have.
template <typename Set>
void CheckFinds()
{
    Set set;
    auto const found = [&set](int count) { return Walk(set, count, &Set::m_lEvalID); };
    EXPECT_EQ(found(set.FindEvals(CDAOSmEval::idMember, 5)), (Rows{10, 20, 30}));
    EXPECT_EQ(found(set.FindEvals(CDAOSmEval::idMember, 0)), (Rows{10, 20, 40, 30}));
    EXPECT_EQ(found(set.FindEvals(CDAOSmEval::idMember, 20)), Rows());
    EXPECT_EQ(found(set.FindEvals(CDAOSmEval::idEval, 20)), Rows{20});
    EXPECT_EQ(found(set.FindEvals(CDAOSmEval::idEval, 5)), Rows());
    EXPECT_EQ(found(set.FindEvals(5, std::uint8_t(1))), (Rows{20, 30}));
    EXPECT_EQ(found(set.FindEvals(6, std::uint8_t(2))), Rows());
    EXPECT_EQ(found(set.FindEvals(5, kSecond)), Rows{20});
    EXPECT_EQ(found(set.FindEvals(6, kThird)), Rows());
    EXPECT_EQ(found(set.FindEvals(5, CEFOleDateTime(2026, 1, 2, 9, 0, 0))), Rows()) << "a second";
}

} // namespace

TEST_F(EvaluationTest, EveryFieldHoldsItsColumn)
{
    auto evaluation = Counting(21, 16);
    evaluation[1] = 5; // the member
    StoreNumbers("evaluations", evaluation);
    auto folds = Counting(51, 9);
    auto lifts = Counting(71, 25);
    folds[0] = lifts[0] = 21; // the evaluation
    StoreNumbers("skinfolds", folds);
    StoreNumbers("lifts", lifts);
    auto bodyComp = Counting(101, 22);
    bodyComp[0] = 5;
    StoreNumbers("body_compositions", bodyComp);

    CDAOSmEval small;
    ASSERT_EQ(small.FindEvals(CDAOSmEval::idEval, 21), 1);
    EXPECT_EQ(
        (std::vector<double>{double(small.m_lEvalID), double(small.m_lMemberID),
            double(small.m_dtEvalDate.Seconds()), double(small.m_nClassIndex), small.m_dHeight,
            small.m_dWeight, double(small.m_nActLevel), double(small.m_nRestingHR),
            double(small.m_nSystolic), double(small.m_nDiastolic), small.m_dTrunkFlexion,
            double(small.m_nSitUps), double(small.m_nAbCrunches), double(small.m_nStepTest),
            double(small.m_nRunSeconds), double(small.m_nErgometer)}),
        evaluation);

    CDAOEvalBodyComp skinfolds;
    ASSERT_EQ(skinfolds.FindEvalBodyComp(21), 1);
    EXPECT_EQ(
        (std::vector<double>{double(skinfolds.m_lEvalID), skinfolds.m_dPercentFat,
            skinfolds.m_dThigh, skinfolds.m_dChest, skinfolds.m_dAbdomen, skinfolds.m_dTriceps,
            skinfolds.m_dSuprailiac, skinfolds.m_dMidaxillary, skinfolds.m_dSubscapular}),
        folds);
    EXPECT_EQ(skinfolds.FindEvalBodyComp(22), 0);

    CDAOCirc circuit;
    ASSERT_EQ(circuit.FindCircuit(21), 1);
    CDAOEval whole;
    ASSERT_EQ(whole.FindEvals(CDAOSmEval::idEval, 21), 1);
    for (int station = 0; station < 24; ++station) {
        EXPECT_EQ(circuit.GetStnVal(station), 72 + station);
        EXPECT_EQ(whole.GetStnVal(station), 72 + station);
    }
    EXPECT_EQ(circuit.FindCircuit(5), 0);
    EXPECT_EQ((std::vector<double>{double(whole.m_lEvalID), double(whole.m_lMemberID),
                  double(whole.m_dtEvalDate.Seconds()), evaluation[3], whole.m_dHeight,
                  whole.m_dWeight, double(whole.m_nActLevel), double(whole.m_nRestingHR),
                  double(whole.m_nSystolic), double(whole.m_nDiastolic), whole.m_dTrunkFlexion,
                  double(whole.m_nSitUps), double(whole.m_nAbCrunches), double(whole.m_nStepTest),
                  double(whole.m_nRunSeconds), double(whole.m_nErgometer)}),
        evaluation);
    EXPECT_EQ(whole.m_dPercentFat, folds[1]);

    CDAOBodyComp set;
    ASSERT_EQ(set.FindBodyComps(5), 1);
    EXPECT_EQ((std::vector<double>{double(set.m_lMemberID), double(set.m_dtBodyCompDate.Seconds()),
                  double(set.m_nClassIndex), set.m_dHeight, set.m_dWeight, double(set.m_nActLevel),
                  double(set.m_nMethod), set.m_dPercentFat, set.m_dWaist, set.m_dWrist, set.m_dHip,
                  set.m_dThigh, set.m_dChest, set.m_dAbdomen, set.m_dTriceps, set.m_dSuprailiac,
                  set.m_dMidaxillary, set.m_dSubscapular, set.m_dWaterTemp, set.m_dWetWeight,
                  set.m_dTareWeight, double(set.m_dwUnits)}),
        bodyComp);
}

TEST_F(EvaluationTest, FindsSelectTheirRowsOldestFirst)
{
    StoreEvaluation(30, 5, kThird, 1);
    StoreEvaluation(10, 5, kFirst, 2);
    StoreEvaluation(20, 5, kSecond, 1);
    StoreEvaluation(40, 6, kSecond, 1);
    CheckFinds<CDAOSmEval>();
    CheckFinds<CDAOEval>();

    StoreBodyComp(3, 5, kThird, 1);
    StoreBodyComp(1, 5, kFirst, 2);
    StoreBodyComp(2, 5, kSecond, 1);
    StoreBodyComp(0, 6, kSecond, 1);
    CDAOBodyComp set;
    auto const found = [&set](int count) { return Walk(set, count, &CDAOBodyComp::m_nMethod); };
    EXPECT_EQ(found(set.FindBodyComps(5)), (Rows{1, 2, 3}));
    EXPECT_EQ(found(set.FindBodyComps(0)), (Rows{1, 2, 0, 3}));
    EXPECT_EQ(found(set.FindBodyComps(5, std::uint8_t(1))), (Rows{2, 3}));
    EXPECT_EQ(found(set.FindBodyComps(6, std::uint8_t(2))), Rows());
    EXPECT_EQ(found(set.FindBodyComps(5, kSecond)), Rows{2});
    EXPECT_EQ(found(set.FindBodyComps(6, kThird)), Rows());
}

TEST_F(EvaluationTest, LiftsKeepToTheirStations)
{
    CDAOCirc circuit;
    for (int station = -1; station <= 24; ++station) {
        circuit.SetStnVal(station, 100 + station);
    }
    for (int station = 0; station < 24; ++station) {
        EXPECT_EQ(circuit.GetStnVal(station), 100 + station);
    }
    for (int const none : {-1, 24, 1'000'000}) {
        EXPECT_EQ(circuit.GetStnVal(none), 0.0);
        EXPECT_EQ(CDAOEval().GetStnVal(none), 0.0);
    }
}

TEST_F(EvaluationTest, TwoWritersNeverGetOneNumber)
{
    auto const write = [](auto const& tell) {
        std::int64_t refused = 0;
        for (int i = 0; i < 100; ++i) {
            CTransaction change(Database(DataFile::member));
            bool const added = AddRow<CDAOSmEval>([](CDAOSmEval& set) {
                set.m_lEvalID = set.GenerateIDNum();
                set.m_lMemberID = 5;
            }).IsOK();
            refused += added && change.Commit() ? 0 : 1;
        }
        tell(refused);
    };
    CStorePeer const one(write);
    CStorePeer const two(write);
    EXPECT_EQ(one.Next(), 0);
    EXPECT_EQ(two.Next(), 0);
    EXPECT_EQ(Number(DataFile::member, "SELECT max(eval_id) FROM evaluations"), 200);

    Run(DataFile::member, "UPDATE evaluations SET eval_id = 2147483647 WHERE eval_id = 7");
    EXPECT_EQ(CDAOSmEval().GenerateIDNum(), 7) << "the first free one below the largest";
}
