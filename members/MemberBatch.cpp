#include "members/MemberBatch.h"

#include "doc/CorvanaDoc.h"
#include "doc/DocViews.h"
#include "store/sets/DatabaseSession.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/ProgressDlg.h"
#include "ui/WaitCursor.h"

#include <QStringList>

#include <vector>

namespace
{

constexpr int kNumerous = 16; ///< members
constexpr std::size_t kToldAtOnce = 3; ///< failures

/// The members' IDs, 0 for one who is deleted already: of one deleted later the row does not tell
/// any more whose it was.
std::vector<std::int32_t> ReadIDs(CDAOMem& members)
{
    std::vector<std::int32_t> ids;
    int const count = members.CountSet();
    for (int row = 0; row < count; ++row) {
        ids.push_back(members.m_MemberID);
        members.Op(CDAOEFSet::opMoveNext);
    }
    return ids;
}

/// Reads the member of a row and changes him, in one transaction: nobody can give his ID to
/// somebody else in between.
CDbStatus ChangeMember(CDAOMem& members, std::int32_t row, CMemberBatch const& batch)
{
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
    if (database == nullptr) {
        return status;
    }
    CTransaction transaction(*database);
    if (!transaction.Status()) {
        return transaction.Status();
    }
    if (!members.MoveSet(row)) {
        status = members.LastStatus();
        return status ? CDbStatus(DbError::gone, "Another program has deleted this record.")
                      : status;
    }
    bool const isChanged = batch.m_fnChange(members.m_MemberID);
    status = transaction.Commit();
    return isChanged || !status ? status : CDbStatus(DbError::failed, "Nothing was stored.");
}

QString NameOf(std::int32_t memberID)
{
    return memberID != 0 ? CCorvanaDoc::tr("Member ID %1").arg(memberID)
                         : CCorvanaDoc::tr("a member who was deleted");
}

void TellFailure(CMemberBatch const& batch, std::int32_t memberID, CDbStatus const& reason)
{
    bool const isKnown = reason.Error() != DbError::failed; // else it says no more than the text
    Tell(nullptr, batch.m_strFailed.arg(NameOf(memberID)), CMessageIcon::exclamation,
        isKnown ? ToQt(reason.Text()) : QString());
}

/// Those whose failure was not told at once.
void TellFailures(CMemberBatch const& batch, std::vector<std::int32_t> const& failed)
{
    QStringList names;
    for (auto i = kToldAtOnce; i < failed.size(); ++i) {
        names += failed[i] != 0 ? QString::number(failed[i]) : CCorvanaDoc::tr("deleted");
    }
    if (names.size() == 1) {
        TellFailure(batch, failed.back(), {});
    } else if (names.size() > 1) {
        Tell(nullptr, batch.m_strFailed.arg(CCorvanaDoc::tr("%1 more members").arg(names.size())),
            CMessageIcon::exclamation,
            CCorvanaDoc::tr("Member IDs: %1").arg(names.join(QStringLiteral(", "))));
    }
}

QString Result(CMemberBatch const& batch, std::size_t done, std::size_t failed, std::size_t count)
{
    auto text = batch.m_strResult.arg(done).arg(count);
    if (failed > 0) {
        text += CCorvanaDoc::tr(", failed for %1").arg(failed);
    }
    return text + (done + failed < count ? CCorvanaDoc::tr(", stopped.") : QStringLiteral("."));
}

} // namespace

bool ChangeMembers(CCorvanaDoc& doc, CDAOMem& members, CMemberBatch const& batch)
{
    CWaitCursor const wait;
    auto const ids = ReadIDs(members);
    int const count = static_cast<int>(ids.size());
    if (count >= kNumerous
        && !Ask(nullptr,
            CCorvanaDoc::tr("This operation will alter numerous records and\n"
                            "may take a significant amount of time to complete.\n"
                            "Do you want to continue?"),
            CQuestion::destroying)) {
        return false;
    }
    std::size_t done = 0;
    std::vector<std::int32_t> failed;
    {
        CProgressDlg progress(nullptr, batch.m_strProgress, count, CStoppable::yes);
        for (int row = 0; row < count && !progress.IsStopped(); ++row) {
            if (auto const status = ChangeMember(members, row, batch); status) {
                ++done;
                if (batch.m_bShownInTree && doc.Views() != nullptr) {
                    doc.Views()->RefreshMemberNode(members.m_MemberID, kMembersNode, 0);
                }
            } else {
                failed.push_back(ids[static_cast<std::size_t>(row)]);
                if (failed.size() <= kToldAtOnce) {
                    TellFailure(batch, failed.back(), status);
                }
            }
            progress.Step();
        }
    }
    TellFailures(batch, failed);
    doc.ShowResult(Result(batch, done, failed.size(), ids.size()));
    return true;
}
