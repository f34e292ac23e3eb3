#pragma once

#include "store/sets/DAOEFSet.h"

/// The classes of members: up to three rows each, in the order of the class slots.
class CDAOCls : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    static constexpr std::uint8_t kUnknown = 99; ///< keeps the records of a deleted class
    static constexpr std::uint8_t kNotChosen = 100;
    static constexpr std::uint8_t kAllClasses = 101; ///< stands for all of a member's classes
    static constexpr std::uint8_t kLargestIndex = 98; ///< of a class

    /// Selects the classes of a member in slot order.
    int FindClasses(std::int32_t memberID);
    /// Selects the member's class of these names; not zero when there is one.
    int FindClasses(std::int32_t memberID, std::string_view category, std::string_view course,
        std::string_view section);
    /// An index from 1 to 98 that neither a class nor any record of the member carries: the first
    /// free one from the seed on, then from 1 on; 0 when all are taken or the file cannot be read.
    std::uint8_t GenerateIndex(std::int32_t memberID, std::uint8_t seed);
    /// Puts the current row behind all others, with what no field can show. Takes two steps: for
    /// use within a transaction. The row has its new place from the next find on.
    bool MoveToEnd();
    /// The text of a class index that stands for no class of its own: "Unknown" for 99, all
    /// categories for 101; empty, and 0, for any other.
    static int GetClassIndexString(std::uint8_t index, std::string& text);
    /// Category, course and section of the current row, those that are not empty, with a blank
    /// between; returns its length.
    int BuildClassString(std::string& text) const;

    // The current row.
    std::int32_t m_MemberID = 0;
    std::uint8_t m_ClassIndex = 0; ///< what the member's records say which class they are for
    std::string m_Category;
    std::string m_Course;
    std::string m_Section;
    std::uint8_t m_GradeStat = 0; ///< a CDAODef::gradestat
    std::int16_t m_Orient = 0; ///< orientation bonus, not zero = yes
    std::int16_t m_ReEval = 0; ///< re-evaluation bonuses
    std::int16_t m_Other = 0; ///< other bonuses

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
