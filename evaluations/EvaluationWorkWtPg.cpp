#include "evaluations/EvaluationWorkWtPg.h"

#include "ui_EvaluationWorkWtPg.h"

#include "evaluations/EvaluationRecord.h"
#include "ui/Convert.h"
#include "ui/FieldNote.h"
#include "ui/Messages.h"
#include "ui/NumberRows.h"
#include "ui/WaitCursor.h"

#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kColumns = 2;
constexpr int kCells = 4; // of a station: name, lift, note, work weight
constexpr int kPerColumn = CCircuit::kMostStations / kColumns;

constexpr std::array kLiftIDs = {1017, 1018, 1019, 1020, 1021, 1023, 1025, 1026, 1028, 1029, 1030,
    1031, 1032, 1033, 1036, 1063, 1064, 1065, 1066, 1067, 1068, 1069, 1070, 1071};
static_assert(kLiftIDs.size() == CCircuit::kMostStations);

QString Truncated(double limit)
{
    return QString::number(std::trunc(limit), 'f', 0);
}

} // namespace

CEvaluationWorkWtPg::CEvaluationWorkWtPg(
    CCircuit const& circuit, CEvaluationRecord& record, QWidget* parent)
    : CCalculatingPg(parent)
    , m_circuit(circuit)
    , m_record(record)
    , m_ui(std::make_unique<Ui::EvaluationWorkWtPg>())
{
    m_ui->setupUi(this);
    AddRows();
    AddHeadings();
    AddButtons();
}

CEvaluationWorkWtPg::~CEvaluationWorkWtPg() = default;

void CEvaluationWorkWtPg::AddRows()
{
    constexpr CRange<std::int32_t> kAnyLift = {0, std::numeric_limits<std::int32_t>::max()};
    auto const rows = BuildNumberRows(*m_ui->liftsLayout,
        {.m_strName = u"lift"_s,
            .m_nCount = CCircuit::kMostStations,
            .m_nColumns = kColumns,
            .m_nTop = 1,
            .m_nCells = kCells,
            .m_lstEditIDs = kLiftIDs});
    std::vector<QString> names;
    std::ranges::transform(m_circuit.m_arrStnName, std::back_inserter(names),
        [](std::string const& name) { return ToQt(name); });
    NameRows(rows, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto* const lift = rows[i].m_pEdit;
        m_fields.Number(*lift, m_record.m_now.m_nLifts[i], kAnyLift);
        lift->setToolTip(tr("%1 to %2")
                             .arg(Truncated(m_circuit.m_arrStnMinLift[i]),
                                 Truncated(m_circuit.m_arrStnMaxLift[i])));
        AddFieldNote(*m_ui->liftsLayout, *lift, 0, std::nullopt,
            m_record.m_last ? std::optional(double(m_record.m_last->m_nLifts[i])) : std::nullopt);
        m_lstLiftEdits.push_back(lift);
    }
    // After all lifts, so that Tab goes from one lift to the next.
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto* const work = new QLineEdit(this);
        work->setObjectName(u"work%1Edit"_s.arg(i + 1));
        work->setAccessibleName(tr("%1, Work Wt.").arg(names[i]));
        m_ui->liftsLayout->addWidget(work, rows[i].m_nGridRow, rows[i].m_nGridColumn + kCells - 1);
        m_fields.Result(*work, m_nWorkWeights[i]);
    }
}

/// Over the columns that have rows.
void CEvaluationWorkWtPg::AddHeadings()
{
    auto const used = (m_lstLiftEdits.size() + kPerColumn - 1) / kPerColumn;
    for (int column = 0; column < static_cast<int>(used); ++column) {
        m_ui->liftsLayout->addWidget(new QLabel(tr("Prog. Lift")), 0, kCells * column + 1);
        m_ui->liftsLayout->addWidget(new QLabel(tr("Work Wt.")), 0, kCells * column + kCells - 1);
    }
}

void CEvaluationWorkWtPg::AddButtons()
{
    for (int const percent : {40, 50, 70}) {
        auto* const button = new QPushButton(tr("Calculate &%1% Work Weights").arg(percent));
        button->setObjectName(u"calculate%1Button"_s.arg(percent));
        connect(button, &QPushButton::clicked, this, [this, percent] {
            CWaitCursor const wait;
            m_nPercent = percent;
            Calculate();
        });
        m_ui->calculateLayout->addWidget(button);
    }
    m_ui->calculateLayout->addStretch();
}

/// A lift is one that the station allows, or 0 for none.
bool CEvaluationWorkWtPg::CheckFields()
{
    CWaitCursor const wait;
    for (std::size_t i = 0; i < m_lstLiftEdits.size(); ++i) {
        auto const lift = m_fields.Taken(m_record.m_now.m_nLifts[i]);
        auto const least = m_circuit.m_arrStnMinLift[i];
        auto const most = m_circuit.m_arrStnMaxLift[i];
        if (lift != 0 && !(least <= lift && lift <= most)) {
            return Refuse(m_lstLiftEdits[i],
                tr("Error: %1\nmust be in the range %2 to %3")
                    .arg(ToQt(m_circuit.m_arrStnName[i]), Truncated(least), Truncated(most)));
        }
    }
    return true;
}

void CEvaluationWorkWtPg::Compute()
{
    for (std::size_t i = 0; i < m_lstLiftEdits.size(); ++i) {
        m_nWorkWeights[i] = static_cast<std::int32_t>(
            m_circuit.GetWorkWeight(static_cast<int>(i), m_record.m_now.m_nLifts[i], m_nPercent));
    }
}
