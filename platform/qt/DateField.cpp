#include "platform/qt/DateField.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLocale>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

CDateField::CDateField(QWidget* parent)
    : QDateEdit(parent)
{
    setFocusPolicy(Qt::StrongFocus); // the wheel scrolls the page unless the user chose the field
    setLocale(QLocale(QLocale::English, QLocale::UnitedStates)); // months and days of the calendar
    setDisplayFormat(u"MM/dd/yyyy"_s);
    setCalendarPopup(true);
    // The day before the first one stands for no date.
    setDateRange(QDate(99, 12, 31), QDate(9999, 12, 31));
    setSpecialValueText(u" "_s);
}

void CDateField::SetDate(QDate const& date)
{
    setDate(date.isValid() ? date : minimumDate());
}

QDate CDateField::Date() const
{
    return date() == minimumDate() ? QDate() : date();
}

void CDateField::wheelEvent(QWheelEvent* event)
{
    if (hasFocus()) {
        QDateEdit::wheelEvent(event);
    } else {
        event->ignore();
    }
}

COptionalDateField::COptionalDateField(QWidget* parent)
    : QWidget(parent)
    , m_pCheck(new QCheckBox)
    , m_pField(new CDateField)
{
    m_pCheck->setObjectName(u"check"_s);
    m_pField->setObjectName(u"field"_s);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_pCheck);
    layout->addWidget(m_pField, 1);
    setFocusProxy(m_pCheck);
    m_pField->setEnabled(false);
    connect(m_pCheck, &QCheckBox::toggled, m_pField, &QWidget::setEnabled);
}

void COptionalDateField::SetName(QString const& name)
{
    m_pCheck->setAccessibleName(name);
    m_pField->setAccessibleName(name);
}

void COptionalDateField::SetDate(std::optional<QDate> const& date)
{
    m_pCheck->setChecked(date.has_value());
    m_pField->SetDate(date.value_or(QDate::currentDate()));
}

std::optional<QDate> COptionalDateField::Date() const
{
    return m_pCheck->isChecked() ? std::optional(m_pField->Date()) : std::nullopt;
}
