#pragma once

#include "reports/content/ReportRequest.h"

// The reports on workouts. Each fills in scope and blocks; see BuildReport.

CDbStatus DailyWorkouts(CReportRequest const& request);
CDbStatus WorkoutSummaries(CReportRequest const& request);
CDbStatus MemberWorkouts(CReportRequest const& request);
CDbStatus ClassWorkouts(CReportRequest const& request);
CDbStatus UnknownWorkouts(CReportRequest const& request);
