#pragma once

#include "platform/db/Status.h"
#include "tools/CenterSettings.h"

/// Writes the rows of a new centre into the session's centre file, which has none yet: all of them
/// or, when anything fails, none. Afterwards the file alone holds them, without its log.
CDbStatus WriteCenterRows(CCenterSettings const& settings, std::string const& password);

/// Why a password was not stored in the centre record: the store's reason, or the text itself.
CDbStatus PasswordFailure(CDbStatus const& stored);
