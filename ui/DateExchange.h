#pragma once

#include "store/EFOleDateTime.h"

#include <optional>

class CDateField;
class COptionalDateField;
class CTimeField;

// The exchange of dates and times with their fields. A Take function leaves a value as it is, to
// its last second, as long as the field shows the day or the time that it had: what another program
// stored and the field cannot show is not written back changed. What is no date or no time, or is
// missing where it may not, is refused with a message: false, and the field has the focus with its
// text selected.

/// The day; a value that is no date shows as nothing.
void ShowDate(CDateField& field, CEFOleDateTime const& value);
/// Another day begins at midnight. An emptied field, where that is allowed, gives an invalid value.
bool TakeDate(CDateField& field, CEFOleDateTime& value);

/// None leaves the field unchecked.
void ShowOptionalDate(COptionalDateField& field, std::optional<CEFOleDateTime> const& value);
bool TakeOptionalDate(COptionalDateField& field, std::optional<CEFOleDateTime>& value);

/// The time of day.
void ShowTime(CTimeField& field, CEFOleDateTime const& value);
/// Another time is one of the same day, of the zero date when there was none. An emptied field,
/// where that is allowed, means midnight.
bool TakeTime(CTimeField& field, CEFOleDateTime& value);

/// Refuses a day after today, and a value that is no date, with the focus in the field alone: its
/// text is message enough.
bool CheckNotAfterToday(CDateField& field, CEFOleDateTime const& value);

/// Refuses a range of days: the first, then the second after today as above, then a second earlier
/// than the first, with a message and the focus in the second. Times of day do not count.
bool CheckDateRange(CDateField& firstField, CEFOleDateTime const& first, CDateField& secondField,
    CEFOleDateTime const& second);

// From now on the field is refused in the same way as soon as the user goes on to another one.
void RefuseWhenLeft(CDateField& field);
void RefuseWhenLeft(CTimeField& field);
