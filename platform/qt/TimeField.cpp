#include "platform/qt/TimeField.h"

#include "platform/qt/TypedDate.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

QString Spell(QTime const& time)
{
    return time.toString(u"HH:mm:ss"_s);
}

} // namespace

CTimeField::CTimeField(QWidget* parent)
    : CPartsField(u"00:00:00"_s, parent)
{
}

void CTimeField::SetTime(QTime const& time)
{
    Show(Spell(time));
}

QTime CTimeField::Time() const
{
    return ParseTime(text()).value_or(QTime());
}

QString CTimeField::Standard(QString const& text) const
{
    return Spell(ParseTime(text).value_or(QTime()));
}

QString CTimeField::Now() const
{
    return Spell(QTime::currentTime());
}

QString CTimeField::Stepped(QString const& text, int part, int steps) const
{
    auto const time = ParseTime(text).value_or(QTime());
    auto const step = [&](int at, int value, int end) {
        return part == at ? std::clamp(value + steps, 0, end) : value;
    };
    return Spell(
        {step(0, time.hour(), 23), step(1, time.minute(), 59), step(2, time.second(), 59)});
}

QString CTimeField::Paged(QString const& text, int steps) const
{
    return Stepped(text, 0, steps);
}
