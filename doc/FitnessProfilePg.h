#pragma once

#include "doc/FitnessRecord.h"
#include "platform/qt/PropertySheet.h"
#include "ui/FormFields.h"
#include "ui/TrendChart.h"

#include <memory>
#include <optional>

class CCorvanaDoc;
class QLineEdit;

namespace Ui
{
class FitnessProfilePg;
}

/// The first page of evaluations and of body compositions: who the member is, weight and height,
/// and for what day, activity level and class the record is.
class CFitnessProfilePg : public CPropertyPage
{
    Q_OBJECT
public:
    ~CFitnessProfilePg() override;

protected:
    /// What the page edits and the document, which fills the classes, must outlive it. Of the
    /// record before, if there is one, the values stand beside the fields.
    CFitnessProfilePg(CCorvanaDoc& doc, QString const& dateLabel, CMemberFacts const& member,
        CFitnessBasics& basics, CFitnessBasics const* last, QWidget* parent);

    /// Two fields more, for circumferences in inches. They are hidden otherwise.
    void AddGirths(
        double& waist, double& hip, std::optional<double> lastWaist, std::optional<double> lastHip);

    /// Below the fields a chart of the member's records, in the order of time; of one record alone
    /// there is none.
    void ShowTrend(std::vector<CTrendPoint> const& history);

    void FillLists() override;
    void ShowFields() override;
    bool TakeFields() override;

private:
    void AddNumber(QLineEdit& edit, double& value, CRange<double> range, struct CUsual const& usual,
        std::optional<double> last);

    CCorvanaDoc& m_doc;
    CMemberFacts const& m_member;
    CFitnessBasics& m_basics;
    std::unique_ptr<Ui::FitnessProfilePg> const m_ui;
    CFormFields m_fields;
};
