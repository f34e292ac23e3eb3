#pragma once

#include "doc/CalculatingPg.h"
#include "store/fitness/Circuit.h"

#include <array>
#include <memory>
#include <vector>

struct CEvaluationRecord;
struct CNumberRow;

namespace Ui
{
class EvaluationWorkWtPg;
}

/// The progressive lift at each station of the circuit, and the work weights that follow from it,
/// which are for the eye only.
class CEvaluationWorkWtPg : public CCalculatingPg
{
    Q_OBJECT
public:
    /// Both must outlive the page, which edits the record. The circuit gives the rows; lifts beyond
    /// its stations stay as they are.
    CEvaluationWorkWtPg(
        CCircuit const& circuit, CEvaluationRecord& record, QWidget* parent = nullptr);
    ~CEvaluationWorkWtPg() override;

protected:
    void Compute() override;
    bool CheckFields() override;

private:
    void AddRows();
    void AddHeadings();
    void AddButtons();

    CCircuit const& m_circuit;
    CEvaluationRecord& m_record;
    std::unique_ptr<Ui::EvaluationWorkWtPg> const m_ui;
    std::vector<QLineEdit*> m_lstLiftEdits; ///< of the stations of the circuit
    int m_nPercent = 40; ///< of the lift
    std::array<std::int32_t, CCircuit::kMostStations> m_nWorkWeights = {}; ///< pounds, truncated
};
