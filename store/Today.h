#pragma once

#include "store/EFOleDateTime.h"

/// Today at midnight, which is what a field for a date alone starts with.
inline CEFOleDateTime Today()
{
    auto today = CEFOleDateTime::GetCurrentTime();
    today.Midnight();
    return today;
}
