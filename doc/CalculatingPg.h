#pragma once

#include "platform/qt/PropertySheet.h"
#include "ui/FormFields.h"

class QLabel;
class QLineEdit;

/// A page with results that it calculates from its fields.
class CCalculatingPg : public CPropertyPage
{
    Q_OBJECT
public:
    using CPropertyPage::CPropertyPage;

    /// What a Calculate button does: takes the fields, and if they are accepted calculates and
    /// shows the results. Returns whether it did.
    bool Calculate();

protected:
    /// From here on the results are calculated too whenever the page is left, and on OK.
    void CalculateWhenLeft() { m_bWhenLeft = true; }
    /// The line that tells what a result rests on, while that is what the fields show: the fields
    /// and radio buttons that the page has by now change it back to nothing when the user changes
    /// them.
    void SetBasisLabel(QLabel& label);
    void ShowBasis(QString const& text);

    /// From what the fields held to the results, which are members as well. Only told to with
    /// fields that were accepted.
    virtual void Compute() = 0;
    /// What else is to be checked before fields are taken; refuses by itself.
    virtual bool CheckFields() { return true; }

    void ShowFields() override { m_fields.Show(); }
    bool TakeFields() override;

    CFormFields m_fields;

private:
    bool Take();
    void ComputeAndShow();

    bool m_bWhenLeft = false;
    QLabel* m_pBasis = nullptr;
};
