#pragma once

#include "members/MaskPg.h"

#include <memory>

namespace Ui
{
class MemberGoalsPg;
}

/// The fitness goals of a member, as bits of CDAOProf::m_Goals.
class CMemberGoalsPg : public CMaskPg
{
    Q_OBJECT
public:
    explicit CMemberGoalsPg(QWidget* parent = nullptr);
    ~CMemberGoalsPg() override;

private:
    std::unique_ptr<Ui::MemberGoalsPg> const m_ui;
};
