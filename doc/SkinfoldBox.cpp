#include "doc/SkinfoldBox.h"

#include "ui/FieldNote.h"
#include "ui/FormFields.h"
#include "ui/NumberRows.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array kSiteCounts = {3, 4, 7};
constexpr CUsual kUsual = {3, 50};

} // namespace

CSkinfoldBox::CSkinfoldBox(QWidget* parent)
    : QGroupBox(parent)
    , m_pGrid(new QGridLayout)
{
    setTitle(tr("Skinfolds"));
    auto* const buttons = new QHBoxLayout;
    for (std::size_t i = 0; auto const& [text, name] : {std::pair(tr("T&hree"), "threeRadio"),
                                {tr("&Four"), "fourRadio"}, {tr("Se&ven"), "sevenRadio"}}) {
        auto* const button = new QRadioButton(text, this);
        button->setObjectName(QLatin1StringView(name));
        connect(button, &QRadioButton::toggled, this, &CSkinfoldBox::ApplySites);
        buttons->addWidget(button);
        m_lstSites[i++] = button;
    }
    buttons->addStretch();
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addLayout(m_pGrid);
    m_pGrid->setColumnStretch(2, 1);

    auto const rows = BuildNumberRows(*m_pGrid,
        {.m_strName = u"fold"_s,
            .m_nCount = int(m_lstEdits.size()),
            .m_pAfter = m_lstSites.back()});
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].m_pLabel->setText(tr(kSkinfoldSites[i].m_name));
        rows[i].m_pEdit->setObjectName(QLatin1StringView(kSkinfoldSites[i].m_widget));
        m_lstEdits[i] = rows[i].m_pEdit;
    }
}

void CSkinfoldBox::SetUp(
    CFormFields& fields, CSkinfolds& folds, CSkinfolds const* last, bool isMale)
{
    constexpr int kDecimals = 2;
    m_bMale = isMale;
    for (std::size_t i = 0; i < m_lstEdits.size(); ++i) {
        auto const& site = kSkinfoldSites[i];
        fields.Number(*m_lstEdits[i], folds.*site.m_pFold, {0, site.m_dMost}, kDecimals);
        AddFieldNote(*m_pGrid, *m_lstEdits[i], kDecimals, kUsual,
            last != nullptr ? std::optional(last->*site.m_pFold) : std::nullopt);
    }
}

void CSkinfoldBox::ShowSites(CSkinfolds const& folds)
{
    auto const sites = SitesOf(folds);
    for (std::size_t i = 0; i < kSiteCounts.size(); ++i) {
        m_lstSites[i]->setChecked(kSiteCounts[i] == sites);
    }
}

int CSkinfoldBox::Sites() const
{
    for (std::size_t i = 0; i < kSiteCounts.size(); ++i) {
        if (m_lstSites[i]->isChecked()) {
            return kSiteCounts[i];
        }
    }
    return kSiteCounts.front();
}

void CSkinfoldBox::ApplySites()
{
    for (std::size_t i = 0; i < m_lstEdits.size(); ++i) {
        SetReadOnly(*m_lstEdits[i], !kSkinfoldSites[i].IsUsed(Sites(), m_bMale));
    }
}
