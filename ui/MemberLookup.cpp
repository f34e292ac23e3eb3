#include "ui/MemberLookup.h"

#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

#include <QCoreApplication>
#include <QLineEdit>

bool CheckMember(QLineEdit& field, std::int32_t memberID)
{
    CWaitCursor const wait;
    CDAOSmMem members;
    if (members.FindMember(CDAOSmMem::idMember, memberID) != 0) {
        return true;
    }
    auto const tell = [memberID](char const* text) {
        return QCoreApplication::translate("MemberLookup", text).arg(memberID);
    };
    if (!members.LastStatus()) { // that nobody has the ID is not known then
        Tell(field.window(), tell("Error: member ID %1 could not be looked up."),
            CMessageIcon::none, ToQt(members.LastStatus().Text()));
        return Refuse(&field, {});
    }
    return Refuse(&field, tell("Sorry, there is no member in the database\nthat matches ID %1."));
}
