#include "reports/pages/ReportPrinter.h"
#include "tests/QtTests.h"
#include "tests/ui/PrintedPages.h"

#include <QPdfWriter>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

/// A report's pages as a PDF file.
class CPdf
{
public:
    explicit CPdf(CReport const& report, CReportWatch const& watch = {}, int most = 999)
        : m_printer(report)
        , m_strPath(QString::fromStdString((m_folder.Path() / "report.pdf").string()))
    {
        QPdfWriter device(m_strPath);
        SetReportPaper(device, QPageSize::Letter, report);
        m_outcome = m_printer.Print(device, watch, most);
    }

    QList<QStringList> Lines() const { return CPrintedPages::LinesOf(m_strPath); }
    QList<std::pair<QString, QRectF>> Boxes() const { return CPrintedPages::BoxesOf(m_strPath); }

    CReportPrinter m_printer;
    CPages::Outcome m_outcome = CPages::Outcome::notStarted;

private:
    CTempFolder m_folder;
    QString const m_strPath;
};

CReport Titled(CReportBlock block)
{
    CReport report;
    report.m_strTitle = "Roster";
    report.m_strCenter = "Gym";
    report.m_strMade = "11/26/2026";
    report.m_lstBlocks.push_back(std::move(block));
    return report;
}

CReportTable Table()
{
    return CReportTable({{"Name", 28}, {"Telephone", 14}, {"Count", 6, true}});
}

} // namespace

class ReportPrinterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void repeatsHeadingsAndNumbersPages();
    void keepsGroupsAndSumsWithTheirRows();
    void letsNoTextsOverlap();
    void drawsWhatNoReportShouldHold();
    void stopsBetweenPages();
};

void ReportPrinterTest::repeatsHeadingsAndNumbersPages()
{
    auto table = Table();
    for (int row = 0; row < 200; ++row) {
        table.AddRow({"row" + std::to_string(row), "555", "1"});
    }
    CPdf const pdf(Titled(std::move(table)));
    auto const pages = pdf.Lines();
    QVERIFY(pages.size() > 2);
    QCOMPARE(pdf.m_printer.Pages(), int(pages.size()));
    int row = 0;
    for (int page = 0; page < pages.size(); ++page) {
        auto const& lines = pages[page];
        QCOMPARE(lines.last(),
            u"Made 11/26/2026 from confidential records Page %1 of %2"_s.arg(
                QString::number(page + 1), QString::number(pages.size())));
        auto const first = lines.indexOf(u"Name Telephone Count"_s) + 1;
        QVERIFY(first > 0);
        for (auto line = first; line < lines.size() - 1; ++line) {
            QCOMPARE(lines[line], u"row%1 555 1"_s.arg(row++));
        }
    }
    QCOMPARE(row, 200);
    QVERIFY(CPdf(Titled(Table())).Lines().front().contains(u"Nothing to report."_s));
}

/// Whatever else stands on the page.
void ReportPrinterTest::keepsGroupsAndSumsWithTheirRows()
{
    for (int before = 40; before < 62; ++before) {
        auto table = Table();
        for (int row = 0; row < before; ++row) {
            table.AddRow({"before", "", ""});
        }
        table.AddGroup("group");
        table.AddRow({"between", "", ""});
        table.AddRow({"sum", "", ""}, CReportTable::Row::sum);
        auto const pages = CPdf(Titled(std::move(table))).Lines();
        auto const page = [&](QString const& text) {
            for (qsizetype i = 0; i < pages.size(); ++i) {
                if (pages[i].contains(text)) {
                    return i;
                }
            }
            return qsizetype(-1);
        };
        QVERIFY(page(u"sum"_s) >= 0);
        QCOMPARE(page(u"group"_s), page(u"sum"_s));
        QCOMPARE(page(u"between"_s), page(u"sum"_s));
    }
}

void ReportPrinterTest::letsNoTextsOverlap()
{
    std::string const wide(14, 'W');
    auto table = CReportTable({{"Name of a member of the gym", 28}, {"No.", 4, true},
        {"Telephone", 14}, {"Some", 4}, {"Other", 4}, {"Class", 34}});
    for (auto const* const text :
        {wide.c_str(), "Ñandú Åström-Żółć", "名前のとても長い会員の名前"}) {
        for (int column = 0; column < 6; ++column) {
            std::vector<std::string_view> cells(6, "x");
            cells[std::size_t(column)] = text;
            table.AddRow(cells);
        }
    }
    table.AddGroup(wide + wide + wide + wide);
    table.AddRow({wide, wide, wide, wide, wide, wide}, CReportTable::Row::sum);
    auto report = Titled(std::move(table));
    report.m_lstBlocks.emplace_back(
        CReportFacts{{{"Label that is long enough to wrap", wide + wide}, {"Label", wide}}, 2});
    report.m_strCenter = wide + wide;
    CPdf const pdf(report);
    QCOMPARE(pdf.Lines().size(), 1);
    auto const boxes = pdf.Boxes();
    QVERIFY(boxes.size() > 90);
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        QVERIFY2(QRectF(0, 0, 612, 792).contains(boxes[i].second), qPrintable(boxes[i].first));
        for (qsizetype j = 0; j < i; ++j) {
            auto const both = boxes[i].second.intersected(boxes[j].second);
            // Lines come closer than the boxes of their highest letters.
            QVERIFY2(both.width() < 1 || both.height() < 3.5,
                qPrintable(boxes[i].first + u" over "_s + boxes[j].first));
        }
    }
}

void ReportPrinterTest::drawsWhatNoReportShouldHold()
{
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    std::string const huge(1'000'000, 'x');
    CReport report;
    report.m_strTitle = huge;
    report.m_lstScope.assign(3, huge);
    report.Heading(huge);
    report.Body(huge + "\xFF\xFE");
    auto table = Table();
    table.AddGroup(huge);
    table.AddRow({huge, std::string("a\0b", 3), "\n\t\xE2\x80\xAEgnp"});
    report.m_lstBlocks.emplace_back(std::move(table));
    report.m_lstBlocks.emplace_back(CReportTable({}));
    report.m_lstBlocks.emplace_back(CReportFacts{{{"", huge}}, -5});
    for (auto const value : {kNone, kInfinite, -kInfinite, 1e300, 0.0}) {
        report.m_lstBlocks.emplace_back(CNormBar{"Bar", "value", {{"low", value}, {"high", 2}},
            value, {{value, "here"}, {1, "there"}}, huge, huge});
        for (auto const kind : {CReportChart::Kind::lines, CReportChart::Kind::bars}) {
            report.m_lstBlocks.emplace_back(CReportChart{kind, "Chart",
                {{"one", {{0, value, ""}}}, {"many", {{-1, 1, ""}, {0, value, "x"}}}, {"none", {}}},
                "In words."});
        }
    }
    CPdf const pdf(report);
    QCOMPARE(pdf.m_outcome, CPages::Outcome::printed);
    QVERIFY(pdf.m_printer.Pages() < 30);
    for (auto const& lines : pdf.Lines()) {
        QVERIFY(!lines.join(u' ').contains(u'\u202E'));
    }
}

void ReportPrinterTest::stopsBetweenPages()
{
    auto table = Table();
    for (int row = 0; row < 500; ++row) {
        table.AddRow({"row", "", ""});
    }
    auto const report = Titled(std::move(table));
    int asked = 0;
    CPdf const stopped(report, [&](double) { return ++asked < 3; });
    QCOMPARE(stopped.m_outcome, CPages::Outcome::stopped);
    CPdf const cut(report, {}, 2);
    QCOMPARE(cut.m_outcome, CPages::Outcome::printed);
    QCOMPARE(cut.m_printer.Done(), 2);
    QCOMPARE(cut.Lines().size(), 2);
    QVERIFY(cut.m_printer.Pages() > 2);
}

static CTestEntryOf<ReportPrinterTest> const g_entry;
#include "ReportPrinterTest.moc"
