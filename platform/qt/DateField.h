#pragma once

#include "platform/qt/PartsField.h"
#include "platform/qt/TypedDate.h"

#include <QDate>

#include <optional>

class QCheckBox;

/// A field for one day, shown as 11/24/2026, of the years 100 to 9999; takes whatever ParseDate()
/// reads. Alt+Down, F4 or the button in it open a calendar to choose from.
class CDateField : public CPartsField
{
    Q_OBJECT
public:
    explicit CDateField(QWidget* parent = nullptr);

    /// An invalid date shows as nothing.
    void SetDate(QDate const& date);
    /// The day in the field; invalid when there is none or what is in it is no date.
    QDate Date() const;
    /// Whether two digits of a year never mean a day to come, as with a birthday.
    void SetNeverInFuture(bool never);

protected:
    QString Standard(QString const& text) const override;
    QString Now() const override;
    int PartOf(QString const& text, int group) const override;
    QString Stepped(QString const& text, int part, int steps) const override;
    QString Paged(QString const& text, int steps) const override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QDate Read(QString const& text) const;
    void OpenCalendar();

    CShortYear m_shortYear = CShortYear::nearest;
};

/// A date field with a check box before it: unchecked there is no date.
class COptionalDateField : public QWidget
{
    Q_OBJECT
public:
    explicit COptionalDateField(QWidget* parent = nullptr);

    /// What the two are called for screen readers, such as "Enrollment Date Range from".
    void SetName(QString const& name);
    void SetDate(std::optional<QDate> const& date);
    std::optional<QDate> Date() const;
    /// Whether it is unchecked or what is in its field is good.
    bool IsGood() const;
    /// The part that is typed into, to refuse what is in it.
    CDateField& Field() const { return *m_pField; }

private:
    QCheckBox* const m_pCheck;
    CDateField* const m_pField;
};
