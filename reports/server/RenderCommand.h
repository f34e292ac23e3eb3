#pragma once

#include "reports/server/Options.h"

/// Makes one report without the queue, in an application that draws. 0 when it was made, else 1.
int RenderReport(COptions const& options);
