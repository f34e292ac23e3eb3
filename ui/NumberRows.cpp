#include "ui/NumberRows.h"

#include "platform/qt/SpinField.h"
#include "ui/ControlID.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace
{

CNumberRow MakeRow(CNumberRowsPlan const& plan, int row, QWidget* parent)
{
    auto const index = static_cast<std::size_t>(row);
    auto const name = u"%1%2"_s.arg(plan.m_strName).arg(row + 1);
    auto* const spin = plan.m_bSpin ? new CSpinField(parent) : nullptr;
    auto* const edit = spin != nullptr ? spin->Edit() : new QLineEdit(parent);
    auto* const label = new QLabel(parent);
    label->setObjectName(name + u"Label"_s);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(spin != nullptr ? static_cast<QWidget*>(spin) : edit);
    edit->setObjectName(name + u"Edit"_s);
    edit->setAlignment(Qt::AlignRight);
    if (index < plan.m_lstEditIDs.size()) {
        SetControlID(edit, plan.m_lstEditIDs[index]);
    }
    if (spin != nullptr) {
        spin->setObjectName(name + u"Spin"_s);
        if (index < plan.m_lstSpinIDs.size()) {
            SetControlID(spin, plan.m_lstSpinIDs[index]);
        }
    }
    return {label, edit, spin};
}

QWidget* FieldOf(CNumberRow const& row)
{
    return row.m_pSpin != nullptr ? static_cast<QWidget*>(row.m_pSpin) : row.m_pEdit;
}

} // namespace

std::vector<CNumberRow> BuildNumberRows(QGridLayout& grid, CNumberRowsPlan const& plan)
{
    std::vector<CNumberRow> rows;
    auto* before = plan.m_pAfter;
    int const perColumn = (plan.m_nCount + plan.m_nColumns - 1) / plan.m_nColumns;
    for (int row = 0; row < plan.m_nCount; ++row) {
        auto& made = rows.emplace_back(MakeRow(plan, row, grid.parentWidget()));
        made.m_nGridRow = plan.m_nTop + row % perColumn;
        made.m_nGridColumn = plan.m_nCells * (row / perColumn);
        grid.addWidget(made.m_pLabel, made.m_nGridRow, made.m_nGridColumn);
        grid.addWidget(FieldOf(made), made.m_nGridRow, made.m_nGridColumn + 1);
        if (before != nullptr) {
            QWidget::setTabOrder(before, FieldOf(made));
        }
        before = FieldOf(made);
    }
    return rows;
}

void NameRows(std::vector<CNumberRow> const& rows, std::vector<QString> const& names)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        bool const isUsed = i < names.size();
        // A label with a buddy takes "&" for its mnemonic.
        rows[i].m_pLabel->setText(isUsed ? QString(names[i]).replace(u'&', u"&&"_s) : QString());
        rows[i].m_pLabel->setVisible(isUsed);
        FieldOf(rows[i])->setVisible(isUsed);
    }
}
