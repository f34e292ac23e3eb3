#include "store/services/RecordTransfer.h"

#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/SetCloser.h"
#include "store/text/DataFileWriter.h"

namespace
{

/// Deletes records one by one, whatever set stands on them.
class CRecordDeleter
{
public:
    /// Deletes the record on which a set stands, with all that hangs on it; the set stays there.
    /// One that is gone already counts as deleted. False when that failed: Status() tells why.
    bool Delete(CDAOEFSet& set);
    CDbStatus const& Status() const { return m_status; }

private:
    CDAOSmMem m_setSmMem;
    CDAOSmEval m_setSmEval;
    CDbStatus m_status;
};

bool CRecordDeleter::Delete(CDAOEFSet& set)
{
    auto const remove = [this](CDAOEFSet& small, int found) {
        CSetCloser const close(small);
        if (found > 0) {
            small.DelCurrent(); // false too when another program was faster
        }
        m_status = small.LastStatus();
        return m_status.IsOK();
    };
    if (set.IsKindOf(CDAOMem::GetThisClass())) {
        return remove(m_setSmMem, m_setSmMem.FindMember(CDAOSmMem::idMember, MemberIDOf(set)));
    }
    if (set.IsKindOf(CDAOEval::GetThisClass())) {
        auto const number = static_cast<CDAOEval const&>(set).m_lEvalID;
        return remove(m_setSmEval, m_setSmEval.FindEvals(CDAOSmEval::idEval, number));
    }
    set.Op(CDAOEFSet::opDelete);
    m_status = set.LastStatus();
    return m_status.IsOK();
}

/// Calls use with the set on each row that is one of these, in its order; false ends that. How many
/// it was called for and did not end.
template <typename Use>
std::size_t WalkRows(CDAOEFSet& set, std::vector<std::int64_t> const& keys, Use const& use)
{
    std::size_t next = 0;
    int const count = set.CountSet();
    for (int row = 0; row < count && next < keys.size(); ++row) {
        if (set.CurrentKey() == keys[next]) {
            if (!use()) {
                break;
            }
            ++next;
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    return next;
}

/// Deletes those rows of a set, which are in its order and were read in this transaction.
CDbStatus DeleteKeys(CDAOEFSet& set, std::vector<std::int64_t> const& keys)
{
    if (set.DelTable(std::ssize(keys))) {
        return {};
    }
    CRecordDeleter deleter;
    auto const deleted = WalkRows(set, keys, [&] { return deleter.Delete(set); });
    return deleted == keys.size() ? CDbStatus()
        : deleter.Status()        ? CDbStatus(DbError::failed, "Not all records were there.")
                                  : deleter.Status();
}

CDatabase* OpenMembers(CDbStatus& status)
{
    return CDatabaseSession::Get().Open(DataFile::member, status);
}

/// Records that go with their members stand in no file of members.
CDbStatus ExpectNoRecords(CDatabase& database)
{
    CRowBlock rows;
    auto status = database.Query("SELECT 1 WHERE EXISTS (SELECT 1 FROM evaluations) OR "
                                 "EXISTS (SELECT 1 FROM body_compositions) OR "
                                 "EXISTS (SELECT 1 FROM workouts)",
        {}, rows);
    return !status || rows.Rows() == 0
        ? status
        : CDbStatus(DbError::failed, "There are records again that would go with the members.");
}

} // namespace

// ---- deleting

CDbStatus DeleteRows(CDAOEFSet& set, std::vector<std::int32_t>& members)
{
    CDbStatus status;
    auto* const database = OpenMembers(status);
    if (database == nullptr) {
        return status;
    }
    CTransaction transaction(*database);
    if (!transaction.Status()) {
        return transaction.Status();
    }
    // First whose rows they are, since a whole table goes at once.
    std::vector<std::int64_t> keys;
    int const count = set.CountSet();
    for (int row = 0; row < count; ++row) {
        if (auto const key = set.CurrentKey()) {
            auto const memberID = MemberIDOf(set);
            if (memberID == 0) {
                break; // nothing behind a row without a member is deleted
            }
            keys.push_back(*key);
            members.push_back(memberID);
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    status = DeleteKeys(set, keys);
    return status ? transaction.Commit() : status;
}

void EmptyLog()
{
    CDbStatus status;
    if (auto* const database = OpenMembers(status)) {
        status = database->Checkpoint();
    }
}

// ---- writing

CRecordTransfer::CRecordTransfer(CDAOFileSet& set, Mode mode)
    : m_set(set)
    , m_mode(mode)
{
}

CDbStatus CRecordTransfer::BeginTransaction()
{
    CDbStatus status;
    if (auto* const database = OpenMembers(status)) {
        m_transaction.emplace(*database);
        status = m_transaction->Status();
        if (status && m_set.IsKindOf(CDAOMem::GetThisClass())) {
            status = ExpectNoRecords(*database);
        }
    }
    return status;
}

/// After a failure nobody has to wait for this one.
CDbStatus CRecordTransfer::End(CDbStatus status)
{
    m_transaction.reset();
    return status;
}

CDbStatus CRecordTransfer::Begin(int& count)
{
    auto status = m_mode == Mode::archive ? BeginTransaction() : CDbStatus();
    count = status ? m_set.CountSet() : 0;
    return status ? status : End(status);
}

CDbStatus CRecordTransfer::WriteFile(
    std::string const& path, int rows, std::function<bool()> const& step)
{
    CDataFileWriter writer(path, m_nSum);
    auto status = writer.Open();
    std::vector<std::int64_t> written;
    std::vector<std::int32_t> members;
    for (int row = 0; row < rows && status; ++row) {
        if (auto const key = m_set.CurrentKey()) {
            status = writer.Write(m_set);
            if (status) {
                written.push_back(*key);
                members.push_back(MemberIDOf(m_set));
            } else if (status.Error() == DbError::gone) {
                status = CDbStatus();
            }
        }
        if (status && !step()) {
            status = {DbError::stopped, "Stopped: nothing was written."};
        }
        m_set.Op(CDAOEFSet::opMoveNext);
    }
    if (status && m_mode != Mode::backup && !written.empty()) {
        status = writer.Check(m_set);
    }
    if (status && !written.empty()) {
        status = writer.Publish();
    }
    if (!status) {
        return End(status);
    }
    m_nSum = writer.CheckSum();
    m_written.insert(m_written.end(), written.begin(), written.end());
    m_members.insert(m_members.end(), members.begin(), members.end());
    return status;
}

CDbStatus CRecordTransfer::DeleteWritten(std::vector<std::int32_t>& members)
{
    if (m_mode == Mode::archiveDisks) {
        auto status = BeginTransaction();
        status = status ? CompareWithFiles() : status;
        if (!status) {
            return End(status);
        }
    }
    auto status = DeleteKeys(m_set, m_written);
    if (status) {
        status = m_transaction->Commit();
    }
    if (status) {
        members = std::move(m_members);
    }
    return End(status);
}

/// Somebody may have changed a row meanwhile.
CDbStatus CRecordTransfer::CompareWithFiles()
{
    CLineSum sum(0);
    auto const same = WalkRows(m_set, m_written, [&] { return sum.Add(m_set); });
    return same == m_written.size() && sum.Sum() == m_nSum
        ? CDbStatus()
        : CDbStatus(DbError::failed, "Records were changed at another place meanwhile.");
}
