#pragma once

#include <cstdint>

class CCorvanaDoc;
class CDAOMem;
struct CPrintOut;

/// Labels with the addresses of the members found, in the order of the search, 30 to a sheet of
/// labels of 1 by 2 5/8 inches. Members whom another program has deleted since get none. The set
/// must outlive what is given.
CPrintOut MailingLabels(CCorvanaDoc& doc, CDAOMem& found);

/// The sheets that labels of so many members take.
std::int32_t LabelSheets(std::int32_t members);
