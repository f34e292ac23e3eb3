#pragma once

#include "store/EFOleDateTime.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

class CCorvanaDoc;
class CDAOEFSet;
struct CClassChoice;

/// What the commands for the records of members do alike, whatever the kind of record. Made for one
/// command and gone with it.
class CRecordCommands
{
public:
    /// Finds in the set the records that a member has of one second.
    using CFindAt = std::function<int(std::int32_t, CEFOleDateTime const&)>;

    /// The document's record set of the kind, and what one and several of the kind are called
    /// within a sentence: "workout", "workouts".
    CRecordCommands(CCorvanaDoc& doc, CDAOEFSet& set, CFindAt findAt, QString one, QString many)
        : m_doc(doc)
        , m_set(set)
        , m_fnFindAt(std::move(findAt))
        , m_strOne(std::move(one))
        , m_strMany(std::move(many))
    {
    }

    /// Does something with the member's record of the time that a text gives, as the member tree
    /// shows it, with the set on its row. False when there is no such record, which is shown, and
    /// the tree is told; or when it could not be read.
    bool UseAt(std::int32_t memberID, QString const& date, std::function<bool()> const& use) const;

    /// Asks whether the record is to be deleted. Never for a member ID of 0.
    bool ConfirmDeletion(std::int32_t memberID, CEFOleDateTime const& date) const;
    /// Deletes the row on which a set of the kind stands. True also when another program has done
    /// so before; a failure is told.
    bool DeleteRow(CDAOEFSet& set) const;

    /// Asks for a member and one of the member's classes and shows the records; tells the user when
    /// there are none. find gets no class index for all classes.
    void ShowOfMember(std::function<int(std::int32_t, std::optional<std::uint8_t>)> const& find,
        std::function<void(std::int32_t, CClassChoice const&)> const& show) const;
    /// Whether a find in the set gave something; else tells that it failed, or the text.
    bool AreFound(int count, QString const& none) const;

    void ShowSaved(std::int32_t memberID) const;
    void ShowGone(std::int32_t memberID) const;
    /// Tells the tree that the member's records have changed, and the user where that does not
    /// interrupt anybody.
    void ShowChanged(std::int32_t memberID, QString const& result) const;

private:
    CCorvanaDoc& m_doc;
    CDAOEFSet& m_set;
    CFindAt const m_fnFindAt;
    QString const m_strOne;
    QString const m_strMany;
};
