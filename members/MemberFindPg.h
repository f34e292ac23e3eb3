#pragma once

#include "members/SearchPg.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace Ui
{
class MemberFindPg;
}

/// Who the members to look for are: numbers, name, address, age, sex, status.
class CMemberFindPg : public CSearchPg
{
    Q_OBJECT
public:
    explicit CMemberFindPg(CMemberSearchData& searchData, QWidget* parent = nullptr);
    ~CMemberFindPg() override;

protected:
    bool TakeFields() override;

private:
    void AddCriteria();

    // What is empty or 0 is no criterion.
    std::array<std::string, 9> m_lstTexts;
    std::int32_t m_lMemberID = 0;
    std::int32_t m_lWorkoutNum = 0;
    int m_nAgeFrom = 0;
    int m_nAgeTo = 0;

    std::unique_ptr<Ui::MemberFindPg> const m_ui;
};
