#include "store/sets/DAOMemCls.h"

#include "store/services/MemberSearchData.h"

CRecordClass const* CDAOMemCls::GetThisClass()
{
    static CRecordClass const record
        = {"CDAOMemCls", CDAOMem::GetThisClass(), DataFile::member, "member_class_view", true};
    return &record;
}

int CDAOMemCls::FindMembers(CMemberSearchData const& search, bool /*byName*/, bool /*past*/)
{
    std::vector<DbValue> values;
    auto const clause = search.Clause(CMemberSearchData::Over::classes, values);
    return Select(clause, std::move(values), search.UsesIndex() ? Extent::mostlyFew : Extent::many);
}

void CDAOMemCls::ExchangeFields(CFieldExchange& fx)
{
    CDAOMem::ExchangeFields(fx);
    fx.Field("class_index", m_ClassIndex);
}

CTableInfo const& CDAOMemCls::JoinedTable() const
{
    static CTableInfo const joined = JoinedOver(
        "classes AS found JOIN members AS p0 ON p0.member_id = found.member_id", "found.id");
    return joined;
}
