#pragma once

#include "bodycomp/BodyCompCalcPg.h"
#include "ui/FieldNote.h"

#include <memory>
#include <optional>
#include <vector>

class QRadioButton;
struct CBodyCompValues;

namespace Ui
{
class BodyCompHydrostaticPg;
}

/// Weighing under water. The notes beside the fields are in the units that are chosen.
class CBodyCompHydrostaticPg : public CBodyCompCalcPg
{
    Q_OBJECT
public:
    /// The record must outlive the page, which edits it.
    explicit CBodyCompHydrostaticPg(CBodyCompRecord& record, QWidget* parent = nullptr);
    ~CBodyCompHydrostaticPg() override;

protected:
    CBodyFat Fat() const override;

private:
    /// A pair of units: usual and last are in the first one, of which the function makes the other.
    struct CUnits
    {
        QRadioButton& m_first;
        QRadioButton& m_other;
        bool& m_bFirst;
        double (*m_fnToOther)(double) = nullptr;
        CUsual m_usual;
        std::optional<double> m_last;
    };
    void AddNumber(QLineEdit& edit, double& value, double most, CUnits const& units);
    std::optional<double> Last(
        double CBodyCompValues::*entered, double (CBodyCompValues::*inFirst)() const) const;

    std::unique_ptr<Ui::BodyCompHydrostaticPg> const m_ui;
};
