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
