#pragma once

#include <QDateEdit>

#include <optional>

class QCheckBox;

/// A field for one day, as 11/24/2026, with a calendar to choose from. Takes every date of the
/// years 100 to 9999; shows nothing for a value that is no date.
class CDateField : public QDateEdit
{
    Q_OBJECT
public:
    explicit CDateField(QWidget* parent = nullptr);

    /// An invalid date shows as nothing.
    void SetDate(QDate const& date);
    /// The date in the field, invalid while it shows nothing.
    QDate Date() const;

protected:
    void wheelEvent(QWheelEvent* event) override;
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

private:
    QCheckBox* const m_pCheck;
    CDateField* const m_pField;
};
