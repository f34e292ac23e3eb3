#pragma once

#include "store/sets/DatabaseSession.h"

#include <memory>
#include <string_view>
#include <vector>

/// The member file, and a transaction on it that is rolled back unless committed.
class CMemberChange
{
public:
    CMemberChange()
        : m_pDatabase(CDatabaseSession::Get().Open(DataFile::member, m_status))
    {
        if (m_pDatabase != nullptr) {
            m_transaction = std::make_unique<CTransaction>(*m_pDatabase);
            m_status = m_transaction->Status();
        }
    }

    /// Runs one statement unless an earlier one failed; returns the number of rows it touched.
    std::int64_t Run(std::string_view sql, std::vector<DbValue> const& values)
    {
        std::int64_t changed = 0;
        if (m_status) {
            m_status = m_pDatabase->Execute(sql, values, changed);
        }
        return changed;
    }

    /// Notes that a record set or another service could not do its part.
    void Require(bool done)
    {
        Require(done, {DbError::failed, "A part of the change could not be stored."});
    }
    void Require(bool done, CDbStatus const& reason)
    {
        if (m_status && !done) {
            m_status = reason;
        }
    }

    /// As long as this is true, record sets write within the transaction.
    bool IsOK() const { return m_status.IsOK(); }
    bool Commit() { return Finish().IsOK(); }
    /// Commits unless something failed, and tells what did.
    CDbStatus Finish() { return m_status ? m_transaction->Commit() : m_status; }

private:
    CDbStatus m_status;
    CDatabase* m_pDatabase;
    std::unique_ptr<CTransaction> m_transaction;
};
