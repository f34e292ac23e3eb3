#pragma once

#include "members/MaskPg.h"

#include <memory>

namespace Ui
{
class MemberMedHistPg;
}

/// The medical history of a member, as bits of CDAOProf::m_MedHist.
class CMemberMedHistPg : public CMaskPg
{
    Q_OBJECT
public:
    explicit CMemberMedHistPg(QWidget* parent = nullptr);
    ~CMemberMedHistPg() override;

private:
    std::unique_ptr<Ui::MemberMedHistPg> const m_ui;
};
