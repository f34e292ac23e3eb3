#pragma once

#include "platform/qt/PropertySheet.h"
#include "store/services/MemberServices.h"
#include "ui/FormFields.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

class CClassSlotBox;
class CCorvanaDoc;

namespace Ui
{
class MemberEnrollPg;
}

/// A member's enrolment and classes. The buttons that delete a class do so at once, after asking,
/// whatever becomes of the rest.
class CMemberEnrollPg : public CPropertyPage
{
    Q_OBJECT
public:
    using CSlots = std::array<CClassSlot, 3>;

    /// The document, which has the catalogue and the defaults of classes, must live longer.
    explicit CMemberEnrollPg(CCorvanaDoc& doc, QWidget* parent = nullptr);
    ~CMemberEnrollPg() override;

    CEFOleDateTime m_dtEnroll;
    CEFOleDateTime m_dtExpire;
    int m_nEnrollPer = 0; ///< a CDAODef::enrollper, or what else is stored
    bool m_bIncentive = false; ///< in the incentive club
    std::int32_t m_lMemberID = 0; ///< whose stored classes are deleted
    CSlots m_lstSlots;
    /// Stored classes that were deleted here, as they were when the page was opened.
    std::vector<CClassSlot> m_lstDeleted;

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    bool CheckClasses() const;
    void DeleteClass(std::size_t slot);
    void NoteDeleted(CClassSlot const& deleted);

    CCorvanaDoc& m_doc;
    std::unique_ptr<Ui::MemberEnrollPg> const m_ui;
    CFormFields m_fields;
    std::array<CClassSlotBox*, 3> m_lstBoxes = {};
    CSlots m_lstEntry; ///< the slots as they were when the page was opened
};
