#pragma once

class CPageFlow;
class CReportTable;

/// Draws a table from where the flow is on: its headings on each page, its rows one below the
/// other, each whole on one page. A text that is too wide for its column goes on below itself.
/// Costs one look at each text, and its drawing. False when no more is to be drawn.
bool FlowTable(CPageFlow& flow, CReportTable const& table);
