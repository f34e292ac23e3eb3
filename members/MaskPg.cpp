#include "members/MaskPg.h"

#include <QCheckBox>

void CMaskPg::AddBox(QCheckBox* box, std::uint32_t bit)
{
    m_lstBoxes.emplace_back(box, bit);
    m_nAllBits |= bit;
}

void CMaskPg::ShowFields()
{
    for (auto const& [box, bit] : m_lstBoxes) {
        box->setChecked((m_nMask & bit) != 0);
    }
}

bool CMaskPg::TakeFields()
{
    m_nMask = 0;
    for (auto const& [box, bit] : m_lstBoxes) {
        m_nMask |= box->isChecked() ? bit : 0;
    }
    return true;
}
