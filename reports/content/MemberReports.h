#pragma once

#include "reports/content/ReportRequest.h"

// The reports on members. Each fills in scope and blocks; see BuildReport.

CDbStatus MemberProfile(CReportRequest const& request);
CDbStatus MemberCount(CReportRequest const& request);
CDbStatus EmergencyContacts(CReportRequest const& request);
CDbStatus MembershipStatus(CReportRequest const& request);
CDbStatus ClassRoster(CReportRequest const& request);
