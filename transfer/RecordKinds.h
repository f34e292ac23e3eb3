#pragma once

#include "doc/CorvanaDoc.h"

/// What messages call several records of a kind: "body compositions".
QString NameOf(CRecordKind kind);
/// The document's record set of the kind that data files are written from and read into.
CDAOFileSet& SetOf(CCorvanaDoc& doc, CRecordKind kind);
/// Selects all records of the kind; how many there are.
int FindAll(CCorvanaDoc& doc, CRecordKind kind);
/// The kinds of file that data files are, for the questions for them.
QString DataFileFilter();
/// What follows once records are deleted: takes them out of the log of the database as well, and
/// tells the member tree. The IDs of their members may stand there more than once.
void FinishDeletion(CCorvanaDoc& doc, CDAOEFSet const& set, std::vector<std::int32_t> memberIDs);
