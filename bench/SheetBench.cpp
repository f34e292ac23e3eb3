// Measures what it takes to open the sheets of an evaluation, with all of its 24 lifts, and of a
// body composition, until they are painted, beside that of a member. Each page is opened too.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "doc/CorvanaDoc.h"
#include "store/sets/AddRow.h"
#include "ui/WaitDlg.h"

#include <QDialog>
#include <QTimer>

#include <functional>

namespace
{

void Require(bool done)
{
    if (!done) {
        std::fputs("a record could not be stored or opened\n", stderr);
        std::exit(1);
    }
}

/// Member 1 with an evaluation and a body composition, each with one before it.
void StoreRecords()
{
    CRawDatabase const raw(MemberPath());
    AddMembers(raw, 1);
    AddTablesOfMembers(raw, 1);
    for (std::int32_t number : {1, 2}) {
        CEFOleDateTime const date(2026, number, 2);
        bool const done = AddRow<CDAOSmEval>([&](CDAOSmEval& set) {
            set.m_lEvalID = number;
            set.m_lMemberID = 1;
            set.m_dtEvalDate = date;
            set.m_nClassIndex = 1;
            set.m_dWeight = 180;
            set.m_dHeight = 70;
        }) && AddRow<CDAOCirc>([&](CDAOCirc& set) { set.m_lEvalID = number; })
            && AddRow<CDAOEvalBodyComp>([&](CDAOEvalBodyComp& set) { set.m_lEvalID = number; })
            && AddRow<CDAOBodyComp>([&](CDAOBodyComp& set) {
                   set.m_lMemberID = 1;
                   set.m_dtBodyCompDate = date;
                   set.m_nClassIndex = 1;
                   set.m_dWeight = 180;
                   set.m_dHeight = 70;
                   set.m_dWaist = 36;
                   set.m_dHip = 40;
                   set.m_nMethod = CDAOBodyComp::mSkinfolds;
               });
        Require(done);
    }
}

/// The time until the sheet that an operation opens is painted.
void Measure(std::vector<double>& times, std::function<void()> const& open)
{
    double const start = CpuMs();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto* const sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (sheet == nullptr || qobject_cast<CWaitDlg*>(sheet) != nullptr) {
            return;
        }
        sheet->repaint();
        times.push_back(CpuMs() - start);
        sheet->done(QDialog::Rejected);
    });
    timer.start(0);
    open();
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    int const repetitions = bench.IsQuick() ? 2 : 51;
    CBenchCentre const centre({DataFile::center, DataFile::member});
    StoreRecords();
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    doc.m_circuit.m_nNumStations = CCircuit::kMostStations;
    doc.m_circuit.m_arrStnName.assign(CCircuit::kMostStations, "Shoulder Press");
    doc.m_circuit.m_arrStnMinLift.assign(CCircuit::kMostStations, 5);
    doc.m_circuit.m_arrStnMaxLift.assign(CCircuit::kMostStations, 400);
    std::vector<double> member;
    std::vector<double> evaluation;
    std::vector<double> bodyComp;
    for (int i = 0; i < repetitions; ++i) { // taking turns: a busy moment hits all
        Measure(member, [&] { doc.EditMember(1); });
        Measure(evaluation, [&] {
            CDAOEval set;
            Require(set.FindEvals(CDAOSmEval::idEval, 2) == 1);
            doc.AddEditEvaluation(&set);
        });
        Measure(bodyComp, [&] {
            CDAOBodyComp set;
            Require(set.FindBodyComps(1) == 2 && set.MoveSet(1));
            doc.AddEditBodyComp(&set);
        });
    }
    std::puts("| sheet | opened in | ratio to the member's |\n|---|---:|---:|");
    for (auto const& [name, times] : {std::pair("member", &member), {"evaluation", &evaluation},
             {"body composition", &bodyComp}}) {
        std::printf(
            "| %s | %.1f ms | %.2f |\n", name, Median(*times), Median(*times) / Median(member));
    }
    return 0;
}
