#pragma once

class CCorvanaDoc;
struct CReportJob;

/// Asks the user what a report of the job's type needs, and completes the job with it. False when
/// the user cancels a dialog, when there is nothing to report or it cannot be read, which is told,
/// and for a number that is no type.
bool AskReport(CCorvanaDoc& doc, CReportJob& job);
