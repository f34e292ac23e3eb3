#pragma once

#include "store/sets/DAOEFSet.h"
#include "store/sets/DAOReport.h"

#include <functional>
#include <string>
#include <vector>

struct CReportRequest;

// The rows that reports read, joined from several tables; only read.

/// A member with what is in reports on members.
class CReportMember : public CDAOEFSet
{
public:
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the members of that status in name order: rptoption flags say which, all when none
    /// does. One pass over the index by name.
    int FindByStatus(std::int32_t options);

    // The current row.
    std::int32_t m_MemberID = 0;
    std::string m_LastName;
    std::string m_FirstName;
    std::string m_MiddleInit;
    std::uint8_t m_Status = 0; ///< not zero = current
    std::string m_Phone;
    std::string m_EmergName;
    std::string m_EmergPhone;
    std::string m_Physician;
    CEFOleDateTime m_EnrollDate;
    CEFOleDateTime m_ExpireDate;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};

/// A class of a member, with the member.
class CReportClass : public CDAOEFSet
{
public:
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects who is in a class, ordered by class and name. An empty course or section means any.
    int FindClass(std::string const& category, std::string const& course,
        std::string const& section, std::int32_t options);

    // The current row.
    std::int32_t m_MemberID = 0;
    std::string m_LastName;
    std::string m_FirstName;
    std::string m_MiddleInit;
    std::uint8_t m_Status = 0;
    std::string m_Category;
    std::string m_Course;
    std::string m_Section;
    std::uint8_t m_GradeStat = 0;
    std::string m_Phone;
    CEFOleDateTime m_ExpireDate;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};

/// A workout with the member's name and the class that it is for.
class CReportWorkout : public CDAOEFSet
{
public:
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the workouts checked in from one time to another, in that order.
    int FindBetween(CEFOleDateTime const& from, CEFOleDateTime const& to);
    /// Selects the workouts of all members that are for no class of theirs, by name and time.
    int FindOfNoClass();

    /// Whole minutes, truncated.
    int Minutes() const { return MinutesBetween(m_dtCheckIn, m_dtCheckOut); }

    // The current row.
    std::int32_t m_MemberID = 0;
    std::string m_LastName;
    std::string m_FirstName;
    std::string m_MiddleInit;
    CEFOleDateTime m_dtCheckIn;
    CEFOleDateTime m_dtCheckOut;
    std::int16_t m_nCircuits = 0;
    bool m_bWorkoutOK = false;
    std::string m_Category;
    std::string m_Course;
    std::string m_Section;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};

/// The condition, and its values, that a row's class is the one asked for.
struct CClassCondition
{
    CClassCondition(
        std::string const& category, std::string const& course, std::string const& section);

    std::string m_strText; ///< over columns "category", "course" and "section"
    std::vector<DbValue> m_values;
};

/// The condition that a row's status is the one of the options, over a column "status"; empty when
/// any will do.
std::string StatusCondition(std::int32_t options);

/// Walks all rows that a find has selected, those that are there still, and has each put into the
/// report. Watches from one share of the work to another.
CDbStatus ForEachRow(CReportRequest const& request, CDAOEFSet& set, int count,
    std::function<void()> const& row, double from = 0, double to = 1);
