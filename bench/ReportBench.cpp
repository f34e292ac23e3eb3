// Measures a report on many members, from its records to its pages, beside drawing the same texts,
// one call a row, on a device of the same kind.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "platform/qt/Printers.h"
#include "reports/pages/PageText.h"
#include "reports/pages/ReportPrinter.h"

#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kRowsOfAPage = 50;

CReportJob const kJob = {.m_nType = CDAOReport::rtMembershipStatus,
    .m_nParam = CDAOReport::roAll | CDAOReport::roMemberIDs};

/// The longest time between two looks at whether the user wants to stop.
class CLongestLook
{
public:
    void Begin() { m_last = Clock::now(); }
    CReportWatch Watch()
    {
        return [this](double) {
            auto const now = Clock::now();
            m_longest = std::max(m_longest, now - std::exchange(m_last, now));
            return true;
        };
    }
    double Ms() const { return std::chrono::duration<double, std::milli>(m_longest).count(); }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point m_last = Clock::now();
    Clock::duration m_longest = {};
};

QStringList Rows(CReport const& report)
{
    QStringList rows;
    std::vector<std::string_view> cells;
    auto const& table = std::get<CReportTable>(report.m_lstBlocks.front());
    for (std::size_t row = 0; row < table.CountRows(); ++row) {
        table.ReadRow(row, cells);
        QString text;
        for (auto const cell : cells) {
            text += QString::fromUtf8(cell.data(), qsizetype(cell.size())) + u"  "_s;
        }
        rows += text;
    }
    return rows;
}

void DrawRaw(QPdfWriter& device, QStringList const& rows)
{
    QPainter painter(&device);
    CFace const face(device, 8);
    painter.setFont(face.Font());
    for (qsizetype row = 0; row < rows.size(); ++row) {
        if (row % kRowsOfAPage == 0 && row > 0) {
            device.newPage();
        }
        painter.drawText(QPointF(0, double(row % kRowsOfAPage + 1) * face.LineHeight()), rows[row]);
    }
}

/// What a document takes, from the beginning of its file to its end.
template <typename Print>
double Time(Print const& print)
{
    QTemporaryDir const folder;
    QFile file(folder.filePath(u"report.pdf"_s));
    file.open(QIODevice::WriteOnly);
    double const start = CpuMs();
    {
        QPdfWriter device(&file);
        SetLetterPaper(device, QPageLayout::Portrait);
        print(device);
    }
    return CpuMs() - start;
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    int const members = bench.IsQuick() ? 300 : 100'000;
    int const repetitions = bench.IsQuick() ? 1 : 5;
    CBenchCentre const centre({DataFile::center, DataFile::member});
    {
        CRawDatabase const raw(MemberPath());
        AddMembers(raw, members);
        AddTablesOfMembers(raw, 100);
    }
    CRawDatabase(CDatabaseSession::Get().PathOf(DataFile::center))
        .Run("INSERT INTO center (name, address1, address2, city, state, zip, phone, email, web,"
             " min_minutes, min_circuits) VALUES ('Gym', '', '', '', '', '', '', '', '', 0, 0)");
    CLongestLook look;
    int pages = 0;
    auto const print = [&](QPdfWriter& device) {
        CReport report;
        look.Begin();
        if (auto const status = BuildReport(kJob, look.Watch(), report); !status) {
            std::fprintf(stderr, "%s\n", status.Text().c_str());
            std::exit(1);
        }
        CReportPrinter printer(report);
        printer.Print(device, look.Watch());
        pages = printer.Pages();
    };
    std::vector<double> ours = {Time(print)};
    double const memory = MemoryMB("VmHWM"); // before the raw rows are there too
    QStringList rows;
    {
        CReport report;
        static_cast<void>(BuildReport(kJob, {}, report));
        rows = Rows(report);
    }
    std::vector<double> raw;
    for (int i = 0; i < repetitions; ++i) { // taking turns: a busy moment hits both
        raw.push_back(Time([&](QPdfWriter& device) { DrawRaw(device, rows); }));
        ours.push_back(Time(print));
    }
    std::puts("| what | raw, CPU | CPU | ratio |\n|---|---:|---:|---:|");
    std::printf("| membership status of %d members, %d pages | %.0f ms | %.0f ms | %.2f |\n",
        members, pages, Median(raw), Median(ours), Median(ours) / Median(raw));
    std::printf("| peak memory of the process | | %.0f MB | |\n", memory);
    std::printf("| longest time between two looks at Stop | | %.0f ms | |\n", look.Ms());
    return 0;
}
