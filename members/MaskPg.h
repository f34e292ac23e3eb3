#pragma once

#include "platform/qt/PropertySheet.h"

#include <cstdint>
#include <utility>
#include <vector>

class QCheckBox;

/// A page of check boxes that each stand for one bit of a mask. Any combination is accepted.
class CMaskPg : public CPropertyPage
{
    Q_OBJECT
public:
    /// What the boxes show; bits without a box are left out.
    void SetMask(std::uint32_t mask) { m_nMask = mask; }
    /// The bits of the checked boxes, and no other.
    std::uint32_t Mask() const { return m_nMask & m_nAllBits; }
    /// A stored mask with those bits set and cleared that have a box.
    std::uint32_t MaskIn(std::uint32_t stored) const { return (stored & ~m_nAllBits) | Mask(); }

protected:
    using CPropertyPage::CPropertyPage;

    void AddBox(QCheckBox* box, std::uint32_t bit);
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::vector<std::pair<QCheckBox*, std::uint32_t>> m_lstBoxes;
    std::uint32_t m_nMask = 0;
    std::uint32_t m_nAllBits = 0;
};
