#pragma once

#include "platform/db/Status.h"
#include "tools/CenterSettings.h"

#include <functional>
#include <string>

/// Makes the four files of a centre in a folder, which is made too when it is not there: all of
/// them or, when anything fails, none. Never touches a file that is there already.
///
/// fill, when given, adds to the new files, which are the session's while it runs.
CDbStatus CreateCenter(std::string const& folder, CCenterSettings const& settings,
    std::string const& password, std::function<CDbStatus()> const& fill = {});

/// "exists" when the folder holds one of the four files, or what is left of one.
CDbStatus FindOldFiles(std::string const& folder);
