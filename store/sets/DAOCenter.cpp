#include "store/sets/DAOCenter.h"

#include "store/services/Password.h"

CRecordClass const* CDAOCenter::GetThisClass()
{
    static CRecordClass const record = {"CDAOCenter", nullptr, DataFile::center, "center"};
    return &record;
}

bool CDAOCenter::ChkPassword(char const* text) const
{
    // Asks through a set of its own, so that the row on show stays as it is.
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(GetClass()->file, status);
    CRowBlock rows;
    if (database == nullptr
        || !database->Query("SELECT password_hash FROM center ORDER BY id LIMIT 1", {}, rows)
        || rows.Rows() == 0) {
        return false;
    }
    auto const row = rows.Row(0);
    auto const& cell = row.Cell(0);
    return cell.type == CCell::text && VerifyPasswordHash(std::string(row.Text(cell)), text);
}

bool CDAOCenter::VerifyWk(
    int const& circuits, CEFOleDateTime const& checkIn, CEFOleDateTime const& checkOut) const
{
    return circuits >= m_nMinCircuits && MinutesBetween(checkIn, checkOut) >= m_nMinMinutes;
}

bool CDAOCenter::SetPassword(std::string_view text)
{
    auto const hash = HashPassword(text);
    auto* const database = hash ? Database() : nullptr;
    if (database == nullptr) {
        return false;
    }
    std::vector<DbValue> const values = {*hash};
    std::int64_t changed = 0;
    return Do(database->Execute("UPDATE center SET password_hash = ? "
                                "WHERE id = (SELECT min(id) FROM center)",
               values, changed))
        && changed == 1;
}

void CDAOCenter::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("name", m_strCenterName);
    fx.Field("address1", m_strAddress1);
    fx.Field("address2", m_strAddress2);
    fx.Field("city", m_strCity);
    fx.Field("state", m_strState);
    fx.Field("zip", m_strZip);
    fx.Field("phone", m_strPhone);
    fx.Field("email", m_strEmail);
    fx.Field("web", m_strWeb);
    fx.Field("min_minutes", m_nMinMinutes);
    fx.Field("min_circuits", m_nMinCircuits);
}
