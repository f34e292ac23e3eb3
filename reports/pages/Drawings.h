#pragma once

class CPageFlow;
struct CNormBar;
struct CReportChart;
struct CReportFacts;

// What is no text and no table. Each is drawn from where the flow is on, and false when no more is
// to be drawn.

bool FlowFacts(CPageFlow& flow, CReportFacts const& facts);
/// On one page as a whole.
bool FlowNormBar(CPageFlow& flow, CNormBar const& bar);
/// Each panel on one page as a whole, the words with the last one.
bool FlowChart(CPageFlow& flow, CReportChart const& chart);
