#pragma once

#include "platform/db/Status.h"

/// Lists the report jobs that wait, the oldest ones one a line, on standard output, and those that
/// were set aside, with the reason. The status of a queue that could not be read is a failure.
CDbStatus ShowJobs();
