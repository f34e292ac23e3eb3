#include "members/MemberGoalsPg.h"

#include "ui_MemberGoalsPg.h"

#include <array>
#include <utility>

namespace
{

using CForm = Ui::MemberGoalsPg;

constexpr std::array<std::pair<QCheckBox * CForm::*, std::uint32_t>, 8> kBoxes = {{
    {&CForm::feelBetterCheck, 0x80},
    {&CForm::reduceStressCheck, 0x40},
    {&CForm::cardiovascularCheck, 0x20},
    {&CForm::loseWeightCheck, 0x10},
    {&CForm::firmUpCheck, 0x08},
    {&CForm::gainWeightCheck, 0x04},
    {&CForm::flexibilityCheck, 0x02},
    {&CForm::strengthCheck, 0x01},
}};

} // namespace

CMemberGoalsPg::CMemberGoalsPg(QWidget* parent)
    : CMaskPg(parent)
    , m_ui(std::make_unique<CForm>())
{
    m_ui->setupUi(this);
    for (auto const& [box, bit] : kBoxes) {
        AddBox(m_ui.get()->*box, bit);
    }
}

CMemberGoalsPg::~CMemberGoalsPg() = default;
