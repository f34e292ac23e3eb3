#include "ui/ListPrinter.h"
#include "tests/QtTests.h"
#include "tests/ui/PrintedPages.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// Prints rows of which the n-th has these texts and its number.
CListPrinter::Outcome PrintRows(int count, QStringList const& texts,
    std::vector<CListPrinter::CColumn> columns, QPageLayout::Orientation orientation,
    int most = 999)
{
    CListPrinter printer(u"Members %1 <Gym>"_s, std::move(columns), 62);
    auto const device = DefaultPrinter(u"Members"_s, orientation);
    int row = 0;
    return printer.Print(
        *device,
        [&](QStringList& to) {
            to = texts + QStringList{u"row%1"_s.arg(++row)};
            return row <= count;
        },
        most);
}

} // namespace

class ListPrinterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fillsPagesWithRowsBelowTheirHeadings();
    void putsColumnsAtWholeLettersAndCutsNothing();
    void endsWhenThereIsNothingToPrintOn();
};

void ListPrinterTest::fillsPagesWithRowsBelowTheirHeadings()
{
    for (auto const& [rows, pages] : {std::pair(62, 1), {125, 3}}) {
        CPrintedPages const printed;
        QCOMPARE(
            PrintRows(rows, {u"Åsa"_s}, {{u"Name"_s, 35}, {u"No."_s, 0}}, QPageLayout::Landscape),
            CListPrinter::Outcome::printed);
        auto const lines = printed.Lines();
        QCOMPARE(lines.size(), pages);
        int row = 0;
        for (int page = 0; page < pages; ++page) {
            QCOMPARE(lines[page].value(0),
                u"Members %1 <Gym> - Page %2"_s.replace(u"%2"_s, QString::number(page + 1)));
            QCOMPARE(lines[page].value(1), u"Name No."_s);
            for (auto const& line : lines[page].sliced(2)) {
                QCOMPARE(line, u"Åsa row%1"_s.arg(++row));
            }
        }
        QCOMPARE(row, rows);
    }
}

void ListPrinterTest::putsColumnsAtWholeLettersAndCutsNothing()
{
    CPrintedPages const printed;
    auto const wide = QString(u'W').repeated(14);
    PrintRows(62, {u"a"_s, wide, u"b"_s}, {{u"A"_s, 10}, {u"B"_s, 10}, {u"C"_s, 10}, {u"D"_s, 0}},
        QPageLayout::Landscape);
    auto const words = printed.Boxes();
    auto const heading = std::ranges::find(words, u"A"_s, &std::pair<QString, QRectF>::first);
    auto const left = heading->second.left();
    auto const column = (heading + 1)->second.left() - left;
    QVERIFY(column > 40 && column < 60); // ten letters of 8 points
    // Behind the wide text, or run into by it, the last column stands where it stands on all rows.
    auto const& [row, place] = words.constLast();
    QCOMPARE(row, u"row62"_s);
    QVERIFY(std::abs(place.left() - left - 3 * column) < 0.5);
    QCOMPARE(printed.Lines()[0].filter(wide).size(), 62);
    QVERIFY(place.top() < 612 - 18 - 6);
    // So many columns that eight points are too large.
    std::vector<CListPrinter::CColumn> many(30, {u"Hd"_s, 9});
    many.push_back({u"Last"_s, 0});
    PrintRows(1, QStringList(30, u"123456789"_s), many, QPageLayout::Portrait);
    auto const last = printed.Boxes().constLast();
    QCOMPARE(last.first.right(4), u"row1"_s);
    QVERIFY(last.second.left() < 612 - 18);
}

void ListPrinterTest::endsWhenThereIsNothingToPrintOn()
{
    using Outcome = CListPrinter::Outcome;
    std::vector<CListPrinter::CColumn> const columns = {{u"No."_s, 0}};
    CPrintedPages const printed;
    QCOMPARE(PrintRows(0, {}, columns, QPageLayout::Portrait), Outcome::printed);
    QCOMPARE(printed.Lines(), QList<QStringList>());
    PrintRows(200, {}, columns, QPageLayout::Portrait, 2);
    QCOMPARE(printed.Lines().size(), 2);
    CPrintedPages const nowhere(u"/nonexistent/printed.pdf"_s);
    QCOMPARE(PrintRows(1, {}, columns, QPageLayout::Portrait), Outcome::notStarted);
    CPrintedPages const full(u"/dev/full"_s);
    QCOMPARE(PrintRows(100000, {}, columns, QPageLayout::Portrait), Outcome::stopped);
}

static CTestEntryOf<ListPrinterTest> const g_entry;
#include "ListPrinterTest.moc"
