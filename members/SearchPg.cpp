#include "members/SearchPg.h"

#include <QRadioButton>

#include <cstdint>
#include <utility>

void CSearchPg::AddPair(QRadioButton& whenTrue, QRadioButton& whenFalse, search criterion)
{
    for (auto const& [button, value] :
        {std::pair(&whenTrue, std::uint8_t(1)), {&whenFalse, std::uint8_t(0)}}) {
        connect(button, &QRadioButton::clicked, this,
            [this, criterion, value] { m_search.SetSearchCriteria(criterion, value); });
    }
}
