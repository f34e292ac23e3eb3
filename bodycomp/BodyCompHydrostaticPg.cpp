#include "bodycomp/BodyCompHydrostaticPg.h"

#include "ui_BodyCompHydrostaticPg.h"

#include "bodycomp/BodyCompRecord.h"
#include "store/fitness/Convert.h"

CBodyCompHydrostaticPg::CBodyCompHydrostaticPg(CBodyCompRecord& record, QWidget* parent)
    : CBodyCompCalcPg(record, parent)
    , m_ui(std::make_unique<Ui::BodyCompHydrostaticPg>())
{
    m_ui->setupUi(this);
    auto& now = m_record.m_now;
    AddNumber(*m_ui->waterTempEdit, now.m_dWaterTemp, 98,
        {*m_ui->fahrenheitRadio, *m_ui->celsiusRadio, now.m_bFahrenheit,
            CConvert::FahrenheitToCelsius, {80, 102},
            Last(&CBodyCompValues::m_dWaterTemp, &CBodyCompValues::WaterTempF)});
    AddNumber(*m_ui->wetWeightEdit, now.m_dWetWeight, 1000,
        {*m_ui->wetPoundsRadio, *m_ui->wetKilogramsRadio, now.m_bWetPounds,
            CConvert::PoundsToKilograms, {1, 60},
            Last(&CBodyCompValues::m_dWetWeight, &CBodyCompValues::WetPounds)});
    AddNumber(*m_ui->tareWeightEdit, now.m_dTareWeight, 1000,
        {*m_ui->tarePoundsRadio, *m_ui->tareKilogramsRadio, now.m_bTarePounds,
            CConvert::PoundsToKilograms, {1, 40},
            Last(&CBodyCompValues::m_dTareWeight, &CBodyCompValues::TarePounds)});
    m_fields.Pair(*m_ui->brozekRadio, *m_ui->siriRadio, now.m_bBrozek);
    SetUpResult(*m_ui->calculateButton, *m_ui->fatLayout, *m_ui->percentFatEdit, *m_ui->basisLabel);
}

CBodyCompHydrostaticPg::~CBodyCompHydrostaticPg() = default;

void CBodyCompHydrostaticPg::AddNumber(
    QLineEdit& edit, double& value, double most, CUnits const& units)
{
    constexpr int kDecimals = 2;
    m_fields.Number(edit, value, {0, most}, kDecimals);
    m_fields.Pair(units.m_first, units.m_other, units.m_bFirst);
    auto& note = AddFieldNote(*m_ui->fieldsLayout, edit, kDecimals, units.m_usual, units.m_last);
    connect(&units.m_other, &QRadioButton::toggled, &note, [&note, units](bool isOther) {
        auto const inUnit
            = [&](double first) { return isOther ? units.m_fnToOther(first) : first; };
        auto const& usual = units.m_usual;
        note.Set(CUsual{inUnit(usual.m_dLeast), inUnit(usual.m_dGreatest)},
            units.m_last ? std::optional(inUnit(*units.m_last)) : std::nullopt);
    });
}

/// A value of the body composition before in the first of its units; none when it was not measured.
std::optional<double> CBodyCompHydrostaticPg::Last(
    double CBodyCompValues::*entered, double (CBodyCompValues::*inFirst)() const) const
{
    auto const& last = m_record.m_last;
    return last && (*last).*entered != 0.0 ? std::optional(((*last).*inFirst)()) : std::nullopt;
}

CBodyFat CBodyCompHydrostaticPg::Fat() const
{
    return FatByWater(m_record);
}
