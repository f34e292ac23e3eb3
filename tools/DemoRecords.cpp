#include "tools/DemoRecords.h"

#include "store/fitness/BodyComp.h"
#include "store/fitness/Convert.h"
#include "store/fitness/HydroStat.h"
#include "store/fitness/SkinFold.h"
#include "store/fitness/TapeMsr.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOChkIn.h"
#include "store/sets/DAOCirc.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/DAOReport.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOWk.h"
#include "tools/DemoPerson.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace
{

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kLongestStay = 90 * kMinute;
constexpr int kMembersAtOnce = 1000; // a transaction that keeps the log small

double Tenths(double value)
{
    return std::round(value * 10) / 10;
}

/// How keen people are to train in a week of the year, and through the holidays not at all.
double Season(CEFOleDateTime const& day)
{
    constexpr std::array<double, 12> kByMonth
        = {1.5, 1.35, 1.2, 1.1, 0.95, 0.8, 0.7, 0.75, 1.15, 1.1, 0.95, 0.6};
    return kByMonth[static_cast<std::size_t>(day.Month() - 1)];
}

/// What share of a week's visits falls on a day: few train at the weekend.
double WeekdayShare(CEFOleDateTime const& day)
{
    constexpr std::array kFromSaturday = {0.08, 0.06, 0.19, 0.18, 0.18, 0.17, 0.14};
    return kFromSaturday[static_cast<std::size_t>(
        day.Seconds() / CEFOleDateTime::kDay % 7)]; // 0 is a Saturday
}

/// The seven skinfolds of a body of that fat, in millimetres.
struct CFolds
{
    double thigh, chest, abdomen, triceps, suprailiac, midaxillary, subscapular;
};

CFolds FoldsOf(CDemoRandom& random, double percentFat, bool male)
{
    auto const fold = [&](double share) {
        return std::clamp(std::round(percentFat * share * random.Real(0.9, 1.1)), 2.0, 50.0);
    };
    return male
        ? CFolds{fold(0.75), fold(0.65), fold(1.15), fold(0.6), fold(0.85), fold(0.7), fold(0.8)}
        : CFolds{fold(1.0), fold(0.5), fold(0.85), fold(0.75), fold(0.65), fold(0.55), fold(0.65)};
}

/// A member who may be checked in.
struct CCheckedIn
{
    double draw; ///< 0 to 1: the smallest ones are here
    double passed; ///< share of the longest stay that has passed
    std::int32_t memberID;
    std::int32_t workoutNumber;
    std::string firstName;
    std::string lastName;
};

class CDemoWriter
{
public:
    CDemoWriter(CCenterSettings const& center, std::uint64_t seed)
        : m_center(center)
        , m_random(seed)
    {
        m_today.Midnight();
        for (CDAOEFSet* set : std::initializer_list<CDAOEFSet*>{&m_setSmMem, &m_setProf, &m_setEnr,
                 &m_setCls, &m_setMsg, &m_setWk, &m_setEval, &m_setFolds, &m_setCirc,
                 &m_setBodyComp, &m_setChkIn, &m_setReport}) {
            set->OpenSet(false);
            Note(set->LastStatus());
        }
    }

    CDbStatus Write(int members)
    {
        m_nMostHere = static_cast<std::size_t>(std::clamp(5 + members / 100, 5, 12));
        CDbStatus status;
        auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
        Note(status);
        for (int first = 0; m_status && first < members; first += kMembersAtOnce) {
            CTransaction transaction(*database);
            Note(transaction.Status());
            int const end = std::min(members, first + kMembersAtOnce);
            for (int n = first; m_status && n < end; ++n) {
                AddMember(MakeDemoPerson(m_random, n, m_center, m_today));
            }
            if (m_status) {
                Note(transaction.Commit());
            }
        }
        if (m_status) {
            AddCheckIns();
            AddReport();
        }
        return m_status;
    }

private:
    void Note(CDbStatus const& status)
    {
        if (m_status && !status) {
            m_status = status;
        }
    }

    template <typename Set, typename Fill>
    void Add(Set& set, Fill const& fill)
    {
        if (m_status && set.Op(CDAOEFSet::opAddNew)) {
            fill(set);
            set.Op(CDAOEFSet::opUpdate);
            Note(set.LastStatus());
        }
    }

    void AddMember(CDemoPerson const& person)
    {
        AddPerson(person);
        for (auto const& slot : person.classes) {
            Add(m_setCls, [&](CDAOCls& set) {
                set.m_MemberID = person.memberID;
                set.m_ClassIndex = slot.classIndex;
                set.m_Category = slot.category;
                set.m_Course = slot.course;
                set.m_Section = slot.section;
                set.m_GradeStat = slot.gradeStat;
                set.m_Orient = slot.orientBonus ? 1 : 0;
                set.m_ReEval = static_cast<std::int16_t>(slot.reEvalBonuses);
                set.m_Other = static_cast<std::int16_t>(slot.otherBonuses);
            });
        }
        AddWorkouts(person);
        if (m_random.Chance(0.45)) {
            AddMeasurements(person);
        }
        DrawCheckIn(person);
    }

    void AddPerson(CDemoPerson const& person)
    {
        Add(m_setSmMem, [&](CDAOSmMem& set) {
            set.m_MemberID = person.memberID;
            set.m_WorkoutNum = person.workoutNumber;
            set.m_FirstName = person.firstName;
            set.m_MiddleInit = person.middleInit;
            set.m_LastName = person.lastName;
            set.m_Status = person.current ? 1 : 0;
        });
        Add(m_setProf, [&](CDAOProf& set) {
            set.m_MemberID = person.memberID;
            set.m_Address = person.address;
            set.m_City = person.city;
            set.m_State = m_center.state.empty() ? "WA" : m_center.state;
            set.m_Zip = person.zip;
            set.m_Phone = person.phone;
            set.m_Email = person.email;
            set.m_EmergName = person.emergencyName;
            set.m_EmergPhone = person.emergencyPhone;
            set.m_Physician = person.physician;
            set.m_Release = person.release ? 1 : 0;
            set.m_Employee = person.employee ? 1 : 0;
            set.m_Birthday = person.birthday;
            set.m_Sex = person.male ? 1 : 0;
            set.m_Goals = person.goals;
            set.m_MedHist = person.medicalHistory;
        });
        Add(m_setEnr, [&](CDAOEnr& set) {
            set.m_MemberID = person.memberID;
            set.m_EnrollDate = person.enrolled;
            set.m_ExpireDate = person.expires;
            set.m_EnrollPer = person.period;
            set.m_Incentive = person.incentive ? 1 : 0;
        });
        constexpr std::array kMessages = {"Please see the front desk about your locker.",
            "Your re-evaluation is due this month.", "Welcome back!"};
        bool const told = person.current && m_random.Chance(0.08);
        Add(m_setMsg, [&](CDAOMsg& set) {
            set.m_MemberID = person.memberID;
            set.m_Message = told ? m_random.Pick(kMessages) : "";
        });
    }

    static std::uint8_t ClassIndexOf(CDemoRandom& random, CDemoPerson const& person)
    {
        if (person.classes.empty() || random.Chance(0.01)) {
            return CDAOCls::kUnknown;
        }
        return random.Pick(person.classes).classIndex;
    }

    /// Week by week: as often as the member trains, more in January than in July, with weeks of
    /// holiday and illness.
    void AddWorkouts(CDemoPerson const& person)
    {
        m_dtLastVisit = {};
        double mood = 1;
        for (auto week = person.enrolled; week <= person.lastDay;
             week = CEFOleDateTime::FromSeconds(week.Seconds() + 7 * CEFOleDateTime::kDay)) {
            mood = std::clamp(mood + m_random.Around(0, 0.15), 0.2, 1.6);
            double const wanted = person.visits * Season(week) * mood;
            int const visits
                = m_random.Chance(0.08) ? 0 : static_cast<int>(wanted + m_random.Share());
            if (visits > 0) {
                AddWeek(person, week, std::min(visits, 6));
            }
        }
    }

    /// Spreads visits over seven days by the weekdays' shares, at most one a day.
    void AddWeek(CDemoPerson const& person, CEFOleDateTime const& first, int visits)
    {
        double const step = 1.0 / visits;
        double next = m_random.Share() * step;
        double passed = 0;
        for (int i = 0; i < 7; ++i) {
            auto const day
                = CEFOleDateTime::FromSeconds(first.Seconds() + i * CEFOleDateTime::kDay);
            passed += WeekdayShare(day);
            if (next < passed && day <= person.lastDay) {
                AddWorkout(person, day);
                next = std::max(next + step, passed);
            }
        }
    }

    /// At the usual hour, more or less. Nothing is added when it would not be over yet; numbers of
    /// its own keep all other records the same at any time of the day.
    void AddWorkout(CDemoPerson const& person, CEFOleDateTime const& day)
    {
        CDemoRandom random(m_random.Next());
        double const hour = std::max(person.hour + random.Around(0.4, 0.4), 5.0);
        int const minutes = std::clamp(static_cast<int>(random.Around(52, 16)), 9, 150);
        auto const in
            = CEFOleDateTime::FromSeconds(day.Seconds() + static_cast<std::int64_t>(hour * 3600));
        auto const out
            = CEFOleDateTime::FromSeconds(in.Seconds() + minutes * kMinute + random.Between(0, 59));
        if (out >= m_now) {
            return;
        }
        m_dtLastVisit = in;
        int const circuits = std::clamp(minutes / 18 + random.Between(-1, 1), 0, 5);
        double const form = 1 + person.progress * 0.4 * person.TrainingAt(in);
        Add(m_setWk, [&](CDAOWk& set) {
            set.m_lMemberID = person.memberID;
            set.m_dtCheckIn = in;
            set.m_dtCheckOut = out;
            set.m_nClassIndex = ClassIndexOf(random, person);
            set.m_bWorkoutOK = circuits >= m_center.minCircuits && minutes >= m_center.minMinutes;
            set.SetStnVal(0, static_cast<std::int16_t>(circuits));
            for (int station = 1; station < CDAOWk::kStationValues; ++station) {
                int const value
                    = random.Chance(0.4) ? static_cast<int>(random.Between(4, 18) * form) : 0;
                set.SetStnVal(station, static_cast<std::int16_t>(value));
            }
        });
    }

    /// Evaluations and body compositions every few months: most improve, some do not.
    void AddMeasurements(CDemoPerson const& person)
    {
        auto day = CEFOleDateTime::FromSeconds(person.enrolled.Seconds()
            + m_random.Between(1, 20) * CEFOleDateTime::kDay + person.hour * kHour);
        auto const method = static_cast<CDAOBodyComp::method>(m_random.Between(0, 3));
        while (day < person.lastDay) {
            double const change = person.progress * person.TrainingAt(day);
            double const fat = std::clamp(
                person.percentFat * (1 - 0.18 * change) + m_random.Around(0, 0.5), 6.0, 50.0);
            double const weight = Tenths(std::clamp(
                person.weight * (1 - 0.05 * change) + m_random.Around(0, 1.2), 80.0, 400.0));
            AddEvaluation(person, day, weight, fat, change);
            if (m_random.Chance(0.6)) {
                AddBodyComp(person, day, weight, fat, method);
            }
            day = CEFOleDateTime::FromSeconds(day.Seconds()
                + m_random.Between(80, 200) * CEFOleDateTime::kDay + m_random.Between(0, 3000));
        }
    }

    void AddEvaluation(CDemoPerson const& person, CEFOleDateTime const& day, double weight,
        double fat, double change)
    {
        auto const whole = [&](double mean, double deviation, int least, int most) {
            return std::clamp(static_cast<int>(m_random.Around(mean, deviation)), least, most);
        };
        ++m_nEvalID;
        Add(m_setEval, [&](CDAOSmEval& set) {
            set.m_lEvalID = m_nEvalID;
            set.m_lMemberID = person.memberID;
            set.m_dtEvalDate = day;
            set.m_nClassIndex = ClassIndexOf(m_random, person);
            set.m_dHeight = Tenths(person.height);
            set.m_dWeight = weight;
            set.m_nActLevel = static_cast<std::uint8_t>(whole(1.6 + change, 0.8, 0, 4));
            set.m_nRestingHR = whole(74 - 8 * change, 5, 44, 110);
            set.m_nSystolic = whole(124 - 5 * change, 8, 92, 185);
            set.m_nDiastolic = whole(79 - 3 * change, 6, 52, 115);
            set.m_dTrunkFlexion
                = Tenths(std::clamp(m_random.Around(14 + 3 * change, 3), 2.0, 27.0));
            set.m_nSitUps = whole(28 + 10 * change, 7, 0, 80);
            set.m_nAbCrunches = whole(34 + 12 * change, 9, 0, 95);
            set.m_nStepTest = whole(106 - 12 * change, 12, 66, 165);
            set.m_nRunSeconds = whole(870 - 120 * change, 110, 500, 1500);
            set.m_nErgometer = whole(38 + 6 * change, 6, 12, 80);
        });
        auto const folds = FoldsOf(m_random, fat, person.male);
        Add(m_setFolds, [&](CDAOEvalBodyComp& set) {
            set.m_lEvalID = m_nEvalID;
            CopyFolds(folds, set);
            set.m_dPercentFat = SkinFoldOf(person, day, weight, folds).PercentFat_7();
        });
        Add(m_setCirc, [&](CDAOCirc& set) {
            set.m_lEvalID = m_nEvalID;
            for (std::size_t i = 0; i < m_center.liftStations.size(); ++i) {
                auto const& station = m_center.liftStations[i];
                double const share = std::clamp(
                    person.strength * (1 + 0.5 * change) * m_random.Real(0.8, 1.2), 0.0, 1.0);
                // Weights come in steps of five pounds.
                double const lift
                    = std::round((station.least + share * (station.greatest - station.least)) / 5)
                    * 5;
                set.SetStnVal(
                    static_cast<int>(i), std::clamp(lift, station.least, station.greatest));
            }
        });
    }

    template <typename Set>
    static void CopyFolds(CFolds const& folds, Set& set)
    {
        set.m_dThigh = folds.thigh;
        set.m_dChest = folds.chest;
        set.m_dAbdomen = folds.abdomen;
        set.m_dTriceps = folds.triceps;
        set.m_dSuprailiac = folds.suprailiac;
        set.m_dMidaxillary = folds.midaxillary;
        set.m_dSubscapular = folds.subscapular;
    }

    static CBodyComp::sex SexOf(CDemoPerson const& person)
    {
        return person.male ? CBodyComp::sMale : CBodyComp::sFemale;
    }

    static CSkinFold SkinFoldOf(
        CDemoPerson const& person, CEFOleDateTime const& day, double weight, CFolds const& f)
    {
        return {SexOf(person), person.AgeAt(day), weight, person.height, f.thigh, f.chest,
            f.abdomen, f.triceps, f.suprailiac, f.midaxillary, f.subscapular};
    }

    void AddBodyComp(CDemoPerson const& person, CEFOleDateTime const& day, double weight,
        double fat, CDAOBodyComp::method method)
    {
        Add(m_setBodyComp, [&](CDAOBodyComp& set) {
            set.m_lMemberID = person.memberID;
            set.m_dtBodyCompDate = day;
            set.m_nClassIndex = ClassIndexOf(m_random, person);
            set.m_dHeight = Tenths(person.height);
            set.m_dWeight = weight;
            set.m_nActLevel = static_cast<std::uint8_t>(m_random.Between(0, 4));
            set.m_nMethod = static_cast<std::uint8_t>(method);
            Measure(person, fat, set);
        });
    }

    /// The girths, what the method measures, and the percentage that follows from it.
    void Measure(CDemoPerson const& person, double fat, CDAOBodyComp& set)
    {
        auto const sex = SexOf(person);
        int const age = person.AgeAt(set.m_dtBodyCompDate);
        set.m_dWaist
            = Tenths(person.height * (person.male ? 0.364 + 0.0081 * fat : 0.21 + 0.008 * fat));
        set.m_dHip
            = Tenths(person.height * (person.male ? 0.47 + 0.0033 * fat : 0.38 + 0.007 * fat));
        switch (set.m_nMethod) {
        case CDAOBodyComp::mBodyMeasurements:
            set.m_dWrist = Tenths(person.male ? m_random.Real(6.5, 7.5) : m_random.Real(5.7, 6.5));
            set.m_dPercentFat = CTapeMsr(
                sex, age, set.m_dWeight, set.m_dHeight, set.m_dWaist, set.m_dWrist, set.m_dHip)
                                    .PercentFat();
            break;
        case CDAOBodyComp::mSkinfolds: {
            auto const folds = FoldsOf(m_random, fat, person.male);
            CopyFolds(folds, set);
            set.m_dPercentFat
                = SkinFoldOf(person, set.m_dtBodyCompDate, set.m_dWeight, folds).PercentFat_7();
            break;
        }
        case CDAOBodyComp::mHydrostatic:
            set.m_dWaterTemp = Tenths(m_random.Real(88, 94));
            set.m_dTareWeight = 7;
            // Fat floats: the leaner, the heavier under water.
            set.m_dWetWeight = Tenths(7 + set.m_dWeight * std::max(0.001, 0.0727 - 0.0022 * fat));
            set.m_dPercentFat = CHydroStat(sex, age, set.m_dWeight, set.m_dHeight, set.m_dWaterTemp,
                set.m_dWetWeight, set.m_dTareWeight)
                                    .PercentFat(CHydroStat::cmSiri);
            break;
        default:
            set.m_dPercentFat = Tenths(fat);
            break;
        }
    }

    /// Draws for each current member who has not been here today whether he is here now: those who
    /// draw the smallest numbers are. Nobody comes twice a day.
    void DrawCheckIn(CDemoPerson const& person)
    {
        CCheckedIn const drawn = {m_random.Share(), m_random.Share(), person.memberID,
            person.workoutNumber, person.firstName, person.lastName};
        if (!person.current || m_dtLastVisit.IsSameDay(m_now)) {
            return;
        }
        auto const place = std::ranges::lower_bound(m_here, drawn.draw, {}, &CCheckedIn::draw);
        m_here.insert(place, drawn);
        if (m_here.size() > m_nMostHere) {
            m_here.pop_back();
        }
    }

    /// All of them came today, and a while ago.
    void AddCheckIns()
    {
        auto const span
            = static_cast<double>(std::min(kLongestStay, m_now.Seconds() - m_today.Seconds()));
        for (auto const& here : m_here) {
            auto const passed = static_cast<std::int64_t>(span * (0.02 + 0.98 * here.passed));
            Add(m_setChkIn, [&](CDAOChkIn& set) {
                set.m_lMemberID = here.memberID;
                set.m_lWorkoutNo = here.workoutNumber;
                set.m_strFirstName = here.firstName;
                set.m_strLastName = here.lastName;
                set.m_dtCheckIn = CEFOleDateTime::FromSeconds(m_now.Seconds() - passed);
            });
        }
    }

    void AddReport()
    {
        Add(m_setReport, [](CDAOReport& set) { set.m_nRptType = 1; });
    }

    CCenterSettings const& m_center;
    CDemoRandom m_random;
    CDbStatus m_status;
    CEFOleDateTime const m_now = CEFOleDateTime::GetCurrentTime();
    CEFOleDateTime m_today = m_now; ///< its midnight
    std::vector<CCheckedIn> m_here; ///< at this moment, by their draw
    std::size_t m_nMostHere = 0;
    CEFOleDateTime m_dtLastVisit; ///< of the member that is being written
    std::int32_t m_nEvalID = 0;
    CDAOSmMem m_setSmMem;
    CDAOProf m_setProf;
    CDAOEnr m_setEnr;
    CDAOCls m_setCls;
    CDAOMsg m_setMsg;
    CDAOWk m_setWk;
    CDAOSmEval m_setEval;
    CDAOEvalBodyComp m_setFolds;
    CDAOCirc m_setCirc;
    CDAOBodyComp m_setBodyComp;
    CDAOChkIn m_setChkIn;
    CDAOReport m_setReport;
};

} // namespace

CDbStatus WriteDemoRecords(CCenterSettings const& center, int members, std::uint64_t seed)
{
    return CDemoWriter(center, seed).Write(members);
}
