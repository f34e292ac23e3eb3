#pragma once

#include "doc/FitnessRecord.h"

#include <QGroupBox>

#include <array>

class CFormFields;
class QGridLayout;
class QLineEdit;
class QRadioButton;

/// The group of a form for skinfolds: from how many sites body fat is calculated, and a field for
/// each site. Those that do not enter can be read but not typed into; they keep their values.
class CSkinfoldBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit CSkinfoldBox(QWidget* parent = nullptr);

    /// Before anything else: states the fields in the form's table. The skinfolds must outlive it;
    /// those of the record before, if there is one, stand beside the fields.
    void SetUp(CFormFields& fields, CSkinfolds& folds, CSkinfolds const* last, bool isMale);
    /// Chooses the number of sites that the skinfolds were measured at.
    void ShowSites(CSkinfolds const& folds);
    int Sites() const; ///< 3, 4 or 7

private:
    void ApplySites();

    bool m_bMale = false;
    QGridLayout* m_pGrid;
    std::array<QRadioButton*, 3> m_lstSites = {}; ///< for three, four and seven
    std::array<QLineEdit*, 7> m_lstEdits = {}; ///< in the order of kSkinfoldSites
};
