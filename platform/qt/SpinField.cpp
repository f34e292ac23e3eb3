#include "platform/qt/SpinField.h"

#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

CSpinField::CSpinField(QWidget* parent)
    : QAbstractSpinBox(parent)
{
    setFocusPolicy(Qt::StrongFocus); // the wheel scrolls the page unless the user chose the field
}

void CSpinField::SetRange(int least, int greatest)
{
    m_nLeast = least;
    m_nGreatest = greatest;
    updateGeometry();
}

void CSpinField::SetValue(int value)
{
    lineEdit()->setText(QString::number(value));
}

void CSpinField::stepBy(int steps)
{
    bool isNumber = false;
    auto const value = text().toLongLong(&isNumber);
    auto const from = isNumber ? std::clamp<qlonglong>(value, m_nLeast, m_nGreatest) : m_nLeast;
    auto const to = isNumber && from == value ? from + steps : from;
    auto const stop = std::clamp<qlonglong>(to, m_nLeast, m_nGreatest);
    if (stop != value || !isNumber) {
        lineEdit()->setText(QString::number(stop));
        lineEdit()->setModified(true);
    }
    selectAll();
}

QAbstractSpinBox::StepEnabled CSpinField::stepEnabled() const
{
    bool isNumber = false;
    auto const value = text().toLongLong(&isNumber);
    StepEnabled steps = StepNone;
    steps.setFlag(StepUpEnabled, !isNumber || value < m_nGreatest);
    steps.setFlag(StepDownEnabled, !isNumber || value > m_nLeast);
    return steps;
}

QValidator::State CSpinField::validate(QString& text, int&) const
{
    bool const digits = std::all_of(
        text.cbegin(), text.cend(), [](QChar letter) { return letter >= u'0' && letter <= u'9'; });
    return digits ? QValidator::Acceptable : QValidator::Invalid;
}

QSize CSpinField::sizeHint() const
{
    auto const digits = QString::number(m_nGreatest).size() + 1; // one more than fits the range
    auto const width = fontMetrics().horizontalAdvance(QString(digits, u'0'));
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(
        QStyle::CT_SpinBox, &option, {width + 4, lineEdit()->sizeHint().height()}, this);
}

void CSpinField::wheelEvent(QWheelEvent* event)
{
    if (hasFocus()) {
        QAbstractSpinBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}
