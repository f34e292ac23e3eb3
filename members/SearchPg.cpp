#include "members/SearchPg.h"

#include <QRadioButton>

#include <cstdint>

void CSearchPg::AddPair(QRadioButton& whenTrue, QRadioButton& whenFalse, search criterion)
{
    auto const set = [this, criterion](std::uint8_t value) {
        return [this, criterion, value] { m_search.SetSearchCriteria(criterion, value); };
    };
    connect(&whenTrue, &QRadioButton::clicked, this, set(1));
    connect(&whenFalse, &QRadioButton::clicked, this, set(0));
}
