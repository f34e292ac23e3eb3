#pragma once

#include "doc/RowEditor.h"

#include <cstdint>

class CCorvanaDoc;
class CDAOBodyComp;
struct CBodyCompRecord;

/// Reads a body composition for its form and writes it back. Costs two
/// look-ups, and one pass over the member's body compositions to find the one before.
class CBodyCompEditor : public CRowEditor
{
public:
    /// All must outlive the editor. To change a body composition the set stands on its row, and
    /// stays open until the editor goes; without one the document's own set adds one.
    CBodyCompEditor(CCorvanaDoc& doc, CDAOBodyComp* set, CBodyCompRecord& record);

    /// Fills the record, of which the caller has set the member's ID, and for a new body
    /// composition the method. False when something cannot be read.
    bool Load();

private:
    bool FindLast();
    void TakeForm() override;

    CCorvanaDoc& m_doc;
    CDAOBodyComp& m_set;
    bool const m_bNew;
    CBodyCompRecord& m_record;
    std::uint32_t m_dwUnits = 0; ///< as they were read
};
