// Operations that menus and buttons reach and that do nothing yet. One that gets built moves to the
// folder whose matter it is.
#include "doc/CorvanaDoc.h"

#include "ui/Messages.h"

void CCorvanaDoc::TellNotBuiltYet(QString const& detail)
{
    Tell(Window(), tr("This command is not available yet."), CMessageIcon::none, detail);
}

void CCorvanaDoc::ShowFoundMembers(CDAOMem&, QString const& caption, bool)
{
    TellNotBuiltYet(caption);
}

void CCorvanaDoc::ShowFoundWorkouts()
{
    TellNotBuiltYet();
}

void CCorvanaDoc::ShowFoundEvaluations()
{
    TellNotBuiltYet();
}

void CCorvanaDoc::ShowFoundBodyComps()
{
    TellNotBuiltYet();
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
