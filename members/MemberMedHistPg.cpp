#include "members/MemberMedHistPg.h"

#include "ui_MemberMedHistPg.h"

#include <array>
#include <utility>

namespace
{

using CForm = Ui::MemberMedHistPg;

constexpr std::array<std::pair<QCheckBox * CForm::*, std::uint32_t>, 21> kBoxes = {{
    {&CForm::tobaccoCheck, 0x100000},
    {&CForm::overweightCheck, 0x80000},
    {&CForm::littleExerciseCheck, 0x40000},
    {&CForm::familyHeartCheck, 0x20000},
    {&CForm::highPressureCheck, 0x10000},
    {&CForm::diabetes1Check, 0x8000},
    {&CForm::diabetes2Check, 0x4000},
    {&CForm::heartProblemCheck, 0x2000},
    {&CForm::strokeCheck, 0x1000},
    {&CForm::medicationCheck, 0x800},
    {&CForm::backProblemsCheck, 0x400},
    {&CForm::backInjuryCheck, 0x200},
    {&CForm::backSurgeryCheck, 0x100},
    {&CForm::currentBackCheck, 0x80},
    {&CForm::kneeInjuryCheck, 0x40},
    {&CForm::kneeSurgeryCheck, 0x20},
    {&CForm::currentKneeCheck, 0x10},
    {&CForm::shoulderInjuryCheck, 0x8},
    {&CForm::shoulderSurgeryCheck, 0x4},
    {&CForm::currentShoulderCheck, 0x2},
    {&CForm::disabilitiesCheck, 0x1},
}};

} // namespace

CMemberMedHistPg::CMemberMedHistPg(QWidget* parent)
    : CMaskPg(parent)
    , m_ui(std::make_unique<CForm>())
{
    m_ui->setupUi(this);
    for (auto const& [box, bit] : kBoxes) {
        AddBox(m_ui.get()->*box, bit);
    }
}

CMemberMedHistPg::~CMemberMedHistPg() = default;
