#include "doc/CalculatingPg.h"

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

bool CCalculatingPg::Calculate()
{
    if (!Take()) {
        return false;
    }
    ComputeAndShow();
    return true;
}

bool CCalculatingPg::TakeFields()
{
    if (!Take()) {
        return false;
    }
    if (m_bWhenLeft) {
        ComputeAndShow();
    }
    return true;
}

bool CCalculatingPg::Take()
{
    if (!m_fields.Take() || !CheckFields()) {
        return false;
    }
    m_fields.Commit();
    return true;
}

void CCalculatingPg::ComputeAndShow()
{
    Compute();
    m_fields.Show();
}

void CCalculatingPg::SetBasisLabel(QLabel& label)
{
    m_pBasis = &label;
    auto const edits = findChildren<QLineEdit*>();
    for (auto const* const edit : edits) {
        connect(edit, &QLineEdit::textEdited, &label, &QLabel::clear);
    }
    auto const buttons = findChildren<QRadioButton*>();
    for (auto const* const button : buttons) {
        connect(button, &QRadioButton::clicked, &label, &QLabel::clear);
    }
}

void CCalculatingPg::ShowBasis(QString const& text)
{
    m_pBasis->setText(text);
}
