// Operations that menus and buttons reach and that do nothing yet. One that gets built moves to the
// folder whose matter it is.
#include "doc/CorvanaDoc.h"

#include "ui/Messages.h"

void CCorvanaDoc::TellNotBuiltYet()
{
    Tell(Window(), tr("This command is not available yet."));
}

void CCorvanaDoc::UpdateClass(CDAOMem& /*members*/)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::UpdateEnrollment(CDAOMem& /*members*/)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::PostMessages(CDAOMem& /*members*/)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::PrintLetters(CDAOMem& /*members*/)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::PrintLabels(CDAOMem& /*members*/)
{
    TellNotBuiltYet();
}

int CCorvanaDoc::BackupRecords(CDAOFileSet& /*set*/, CTransfer /*mode*/)
{
    TellNotBuiltYet();
    return 0;
}

int CCorvanaDoc::DeleteRecords(CDAOFileSet& /*set*/, bool /*confirm*/)
{
    TellNotBuiltYet();
    return 0;
}

void CCorvanaDoc::BackUpAll(CRecordKind)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::ArchiveAll(CRecordKind)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::RestoreAll(CRecordKind)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::DeleteAll(CRecordKind)
{
    TellNotBuiltYet();
}

void CCorvanaDoc::CompactDatabase()
{
    TellNotBuiltYet();
}
