#include "ui/DateExchange.h"

#include "platform/qt/DateField.h"
#include "platform/qt/TimeField.h"
#include "ui/Convert.h"
#include "ui/Messages.h"

#include <QApplication>

namespace
{

bool IsTaken(CPartsField& field, QString const& message)
{
    return field.IsGood() || Refuse(&field, message);
}

bool IsTaken(CDateField& field)
{
    return IsTaken(
        field, QCoreApplication::translate("DateExchange", "Enter a date, such as 11/24/2026."));
}

bool IsTaken(CTimeField& field)
{
    return IsTaken(
        field, QCoreApplication::translate("DateExchange", "Enter a time, such as 18:05:09."));
}

/// The user still looks at the window, with nothing before it, and has not come back meanwhile.
bool IsStillLeft(QWidget const& field)
{
    auto const* const modal = QApplication::activeModalWidget();
    return field.isVisible() && field.isEnabled() && field.window()->focusWidget() != &field
        && (modal == nullptr || modal == field.window());
}

template <typename Field>
void ConnectLeft(Field& field)
{
    QObject::connect(&field, &CPartsField::LeftWrong, &field, [&field] {
        // A message box would come in the middle of the change of the focus.
        QMetaObject::invokeMethod(
            &field,
            [&field] {
                if (IsStillLeft(field)) {
                    IsTaken(field);
                }
            },
            Qt::QueuedConnection);
    });
}

} // namespace

void ShowDate(CDateField& field, CEFOleDateTime const& value)
{
    field.SetDate(ToQt(value).date());
}

bool TakeDate(CDateField& field, CEFOleDateTime& value)
{
    if (!IsTaken(field)) {
        return false;
    }
    if (auto const date = field.Date(); date != ToQt(value).date()) {
        value = FromQt(QDateTime(date, QTime(0, 0), Qt::UTC));
    }
    return true;
}

void ShowOptionalDate(COptionalDateField& field, std::optional<CEFOleDateTime> const& value)
{
    field.SetDate(value ? std::optional(ToQt(*value).date()) : std::nullopt);
}

bool TakeOptionalDate(COptionalDateField& field, std::optional<CEFOleDateTime>& value)
{
    if (!field.Date()) {
        value.reset();
        return true;
    }
    auto date = value.value_or(CEFOleDateTime::Invalid());
    if (!TakeDate(field.Field(), date)) {
        return false;
    }
    value = date;
    return true;
}

void ShowTime(CTimeField& field, CEFOleDateTime const& value)
{
    field.SetTime(ToQt(value).time());
}

bool TakeTime(CTimeField& field, CEFOleDateTime& value)
{
    if (!IsTaken(field)) {
        return false;
    }
    auto const shown = ToQt(value);
    if (auto const time = field.Time(); time != shown.time()) {
        auto const day = shown.isValid() ? shown.date() : ToQt(CEFOleDateTime()).date();
        value = FromQt(QDateTime(day, time.isValid() ? time : QTime(0, 0), Qt::UTC));
    }
    return true;
}

bool CheckNotAfterToday(CDateField& field, CEFOleDateTime const& value)
{
    return (value.ChkStatus() && !value.IsAfterToday()) || Refuse(&field, {});
}

bool CheckDateRange(CDateField& firstField, CEFOleDateTime const& first, CDateField& secondField,
    CEFOleDateTime const& second)
{
    if (!CheckNotAfterToday(firstField, first) || !CheckNotAfterToday(secondField, second)) {
        return false;
    }
    return first < second || first.IsSameDay(second)
        || Refuse(&secondField,
            QCoreApplication::translate(
                "DateExchange", "Error: second date must be later than or equal to first date"));
}

void RefuseWhenLeft(CDateField& field)
{
    ConnectLeft(field);
}

void RefuseWhenLeft(CTimeField& field)
{
    ConnectLeft(field);
}
