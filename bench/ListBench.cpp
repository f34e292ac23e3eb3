// Measures the lists of members and workouts: opening, paging, sorting, narrowing and printing,
// against plain SQLite with the barest model, or the barest drawing, that does the same. Times are
// CPU of this process, each the median of its repetitions, with the two sides taking turns.

#include "bench/ConsoleBench.h"
#include "bench/RawList.h"
#include "bench/RawMember.h"
#include "doc/CorvanaDoc.h"
#include "members/MemberListDlg.h"
#include "store/services/MemberSearchData.h"
#include "store/sets/SetCloser.h"
#include "ui/ListModel.h"
#include "ui/ListPrinter.h"
#include "ui/ProgressDlg.h"
#include "workouts/WorkoutListDlg.h"

#include <QBuffer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QShortcut>
#include <QTemporaryDir>
#include <QTreeView>

#include <array>
#include <functional>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kPages = 50; // of paging down

[[noreturn]] void Fail(char const* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::exit(1);
}

// ---- what is listed

/// A kind of list, and the same in plain SQL.
struct CKind
{
    struct CSort
    {
        char const* name;
        int column; ///< from 0 on
        char const* raw; ///< what it is by
        bool isJoined; ///< that is not a column of the table
    };

    char const* name;
    CDAOEFSet& set;
    std::function<int()> find;
    std::function<std::unique_ptr<CListDlg>()> make;
    CRawSelection const& raw;
    std::vector<CSort> sorts;
};

CKind Members(CCorvanaDoc& doc)
{
    return {"members", doc.m_setMem, [&doc] { return doc.m_setMem.FindMembers({}, true, true); },
        [&doc] { return std::make_unique<CMemberListDlg>(doc, doc.m_setMem, false); }, RawMembers(),
        {{"name", 0,
             "r.last_name COLLATE NOCASE, r.first_name COLLATE NOCASE, "
             "r.middle_initial COLLATE NOCASE",
             false},
            {"ID", 1, "r.member_id", false}, {"expiration", 4, "e.expire_date", true}}};
}

CKind Workouts(CCorvanaDoc& doc)
{
    return {"workouts", doc.m_setWk, [&doc] { return doc.m_setWk.FindWks(0); },
        [&doc] { return std::make_unique<CWorkoutListDlg>(doc, doc.m_setWk); }, RawWorkouts(),
        {{"name of the member", 0,
             "m.last_name COLLATE NOCASE, m.first_name COLLATE NOCASE, "
             "m.middle_initial COLLATE NOCASE",
             true},
            {"minutes", 5, "max(r.check_out - r.check_in, 0) / 60", false},
            {"a station", 7, "r.station1", false}}};
}

// ---- windows

/// What has changed is laid out by a timer and painted by the event after that.
void Paint()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
    }
}

void Press(QWidget& widget, int key)
{
    QKeyEvent press(QEvent::KeyPress, key, {});
    QCoreApplication::sendEvent(&widget, &press);
    Paint();
}

/// A list of found rows on the screen.
class CShownList
{
public:
    explicit CShownList(CKind const& kind)
        : m_close(kind.set)
    {
        if (kind.find() == 0) {
            Fail("nothing is found");
        }
        m_pDialog = kind.make();
        m_pDialog->show();
        Paint();
    }

    QTreeView& View() const { return *m_pDialog->findChild<QTreeView*>(); }
    CListModel& Model() const { return *m_pDialog->findChild<CListModel*>(); }
    QLineEdit& FindField() const { return *m_pDialog->findChild<QLineEdit*>(); }
    /// Sorts by a column from 0 on, or by none, as its key does.
    void Sort(int column) const
    {
        for (auto* const key : m_pDialog->findChildren<QShortcut*>()) {
            if (key->key() == QKeySequence(u"Ctrl+%1"_s.arg(column + 1))) {
                Q_EMIT key->activated();
                Paint();
            }
        }
        if (Model().SortColumn() != column) {
            Fail("the list is not sorted");
        }
    }

private:
    CSetCloser const m_close;
    std::unique_ptr<CListDlg> m_pDialog;
};

// ---- times

/// Figures of both sides, taken in turn.
class CTurns
{
public:
    explicit CTurns(std::string what)
        : m_strWhat(std::move(what))
    {
    }
    template <typename Work>
    static void Take(std::vector<double>& times, Work const& work)
    {
        double const start = CpuMs();
        work();
        times.push_back(CpuMs() - start);
    }
    template <typename Work>
    void Raw(Work const& work)
    {
        Take(m_raw, work);
    }
    template <typename Work>
    void List(Work const& work)
    {
        Take(m_list, work);
    }
    void Print() const
    {
        std::printf("| %s | %.1f ms | %.1f ms | %.2f |\n", m_strWhat.c_str(), Median(m_raw),
            Median(m_list), Median(m_list) / Median(m_raw));
    }

private:
    std::string const m_strWhat;
    std::vector<double> m_raw;
    std::vector<double> m_list;
};

/// From the find to the first paint, then down by pages, then to the end, each in a new window.
void MeasureOpening(CKind const& kind, int repetitions)
{
    QSize size;
    std::vector<int> widths;
    {
        CShownList const list(kind);
        size = list.View().size();
        for (int column = 0; column < list.Model().columnCount(); ++column) {
            widths.push_back(list.View().columnWidth(column));
        }
    }
    CRawDatabase const raw(MemberPath());
    std::string const of = std::string(" ") + kind.name;
    CTurns open("open, from the find to the first paint," + of);
    CTurns pages("50 times page down," + of);
    CTurns end("to the end," + of);
    auto const pageDown = [](QTreeView& view) {
        for (int page = 0; page < kPages; ++page) {
            Press(view, Qt::Key_PageDown);
        }
    };
    for (int i = 0; i < repetitions; ++i) {
        std::optional<CRawListWindow> window;
        open.Raw([&] {
            window.emplace(raw, kind.raw, size, widths);
            window->show();
            Paint();
        });
        if (!window->IsPainted()) {
            Fail("the window is not painted");
        }
        pages.Raw([&] { pageDown(window->View()); });
        end.Raw([&] { Press(window->View(), Qt::Key_End); });
        window.reset();
        std::optional<CShownList> list;
        open.List([&] { list.emplace(kind); });
        pages.List([&] { pageDown(list->View()); });
        end.List([&] { Press(list->View(), Qt::Key_End); });
    }
    for (auto const* const turns : {&open, &pages, &end}) {
        turns->Print();
    }
}

void MeasureSorting(CKind const& kind, int repetitions)
{
    CRawDatabase const raw(MemberPath());
    raw.Run("PRAGMA temp_store = MEMORY"); // as the store does
    CShownList const list(kind);
    for (auto const& sort : kind.sorts) {
        CTurns turns(std::string("sort ") + kind.name + " by " + sort.name);
        auto const sql = kind.raw.Keys(std::string(sort.raw) + ", ", sort.isJoined);
        std::size_t rows = 0;
        for (int i = 0; i < repetitions; ++i) {
            turns.Raw([&] { rows += ReadRawKeys(raw, sql); });
            turns.List([&] { list.Sort(sort.column); });
            list.Sort(-1);
        }
        if (rows != static_cast<std::size_t>(list.Model().Found() * repetitions)) {
            Fail("the selections differ");
        }
        turns.Print();
    }
}

/// The search for a word in all rows, and the longest piece of it that no key can interrupt.
void MeasureNarrowing(CKind const& kind, QString const& word, int repetitions)
{
    CRawDatabase const raw(MemberPath());
    CShownList const list(kind);
    CTurns turns(std::string("narrow ") + kind.name + " to \"" + qPrintable(word) + "\"");
    std::vector<double> longest;
    std::size_t sum = 0;
    for (int i = 0; i < repetitions; ++i) {
        turns.Raw([&] { sum += ScanRaw(raw, kind.raw); });
        double most = 0;
        turns.List([&] {
            double start = CpuMs();
            list.FindField().setText(word);
            do {
                QCoreApplication::processEvents();
                double const now = CpuMs();
                most = std::max(most, now - start);
                start = now;
            } while (list.Model().IsNarrowing());
        });
        longest.push_back(most);
        if (list.Model().rowCount() == 0 || sum == 0) {
            Fail("nothing is found");
        }
        list.FindField().clear();
        Paint();
    }
    turns.Print();
    std::printf("| longest slice | | %.1f ms | |\n", Median(longest));
}

/// Fills a narrowed list, which looks through all rows, with and without steps of a bar.
void MeasureSteps(CKind const& kind, int repetitions)
{
    CShownList const list(kind);
    list.FindField().setText(u"lee"_s);
    CTurns turns(std::string("fill a narrowed list of ") + kind.name + ", raw without steps");
    int const count = list.Model().Found();
    auto const fill = [&] { list.Model().Fill(count, [](int) {}); };
    for (int i = 0; i < repetitions; ++i) {
        CProgressDlg progress(nullptr, u"Loading..."_s, count);
        auto const step = [&](int rows) { progress.Step(rows); };
        auto const fillInSteps = [&] { list.Model().Fill(count, step); };
        if (i % 2 == 0) { // who comes second finds the memory in order
            turns.Raw(fill);
            turns.List(fillInSteps);
        } else {
            turns.List(fillInSteps);
            turns.Raw(fill);
        }
    }
    turns.Print();
}

/// Prints rows of a width into memory.
void MeasurePrinting(int rows, int repetitions)
{
    std::vector<CListPrinter::CColumn> const columns = {
        {u"Name"_s, 35}, {u"ID #"_s, 11}, {u"Workout #"_s, 11}, {u"Status"_s, 19}, {u"Date"_s, 0}};
    std::vector<QStringList> cells;
    std::vector<QString> lines;
    for (int row = 0; row < rows; ++row) {
        auto const number = QString::number(row);
        cells.push_back({u"Featherstone"_s + number + u", Katharine Q"_s, number, number,
            u"Current"_s, u"11/06/26"_s});
        QString line;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            line += cells.back()[qsizetype(i)].leftJustified(columns[i].m_nLetters);
        }
        lines.push_back(line);
    }
    CTurns turns("print " + std::to_string(rows) + " rows");
    for (int i = 0; i < repetitions; ++i) {
        std::array<qsizetype, 2> sizes = {};
        turns.Raw([&] {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            QPdfWriter device(&buffer);
            QPainter painter(&device);
            QFont font(u"monospace"_s, 8);
            font.setKerning(false);
            painter.setFont(font);
            int const rowHeight = device.height() / 72;
            for (std::size_t row = 0; row < lines.size(); ++row) {
                if (row > 0 && row % 67 == 0) {
                    device.newPage();
                }
                painter.drawText(0, rowHeight * int(1 + row % 67), lines[row]);
            }
            painter.end();
            sizes[0] = buffer.size();
        });
        turns.List([&] {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            QPdfWriter device(&buffer);
            std::size_t next = 0;
            CListPrinter printer(u"Members"_s, columns, 67);
            printer.Print(device, [&](QStringList& texts) {
                if (next == cells.size()) {
                    return false;
                }
                texts = cells[next++];
                return true;
            });
            sizes[1] = buffer.size();
        });
        if (sizes[0] < rows || sizes[1] < rows) {
            Fail("nothing is printed");
        }
    }
    turns.Print();
}

// ---- memory

/// In a process of its own: what a list takes at its peak beyond the same window without rows,
/// until it is painted, and until it was paged, sorted and narrowed.
void MeasureMemory(CKind const& kind)
{
    auto none = kind;
    none.find = [&kind] { return kind.set.OpenSet(false) + 1; };
    double empty = 0;
    {
        CShownList const list(none);
        empty = MemoryMB("VmHWM");
    }
    CShownList const list(kind);
    double const opened = MemoryMB("VmHWM");
    Press(list.View(), Qt::Key_PageDown);
    Press(list.View(), Qt::Key_End);
    list.Sort(0);
    list.FindField().setText(u"a"_s);
    while (list.Model().IsNarrowing()) {
        QCoreApplication::processEvents();
    }
    std::printf("| memory of %s over the empty window's %.1f MB: opened %.1f MB, used %.1f MB |\n",
        kind.name, empty, opened - empty, MemoryMB("VmHWM") - empty);
}

/// The document of a centre with so many stations as there can be.
class CBenchDoc
{
public:
    CBenchDoc()
        : m_doc(m_commands)
    {
        for (int station = 0; station < CDAOWk::kStationValues; ++station) {
            m_doc.m_lstStnAbbrs.push_back("S" + std::to_string(station));
        }
    }
    CKind Kind(bool isMembers) { return isMembers ? Members(m_doc) : Workouts(m_doc); }

private:
    CNoCommands m_commands;
    CCorvanaDoc m_doc;
};

constexpr char const* kMemory = "--memory";

int RunMemory(QStringList const& arguments)
{
    CDatabaseSession::Get().SetDataFolder(arguments.value(3).toStdString());
    {
        CBenchDoc doc;
        MeasureMemory(doc.Kind(arguments.value(2) == u"members"));
    }
    CDatabaseSession::Get().ShutDown();
    return 0;
}

void StartMemory(CKind const& kind)
{
    auto const folder = std::filesystem::path(MemberPath()).parent_path().string();
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(),
        {QLatin1StringView(kMemory), QLatin1StringView(kind.name), QString::fromStdString(folder)});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        Fail("the memory cannot be measured");
    }
}

} // namespace

int main(int argc, char** argv)
{
    QTemporaryDir const settings; // not those of whoever measures
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    CConsoleBench const bench(argc, argv);
    if (argc == 4 && std::strcmp(argv[1], kMemory) == 0) {
        return RunMemory(QCoreApplication::arguments());
    }
    int const rows = bench.IsQuick() ? 2'000 : 300'000;
    int const repetitions = bench.IsQuick() ? 1 : 9;
    std::puts("| what | raw | list | ratio |\n|---|---:|---:|---:|");
    for (bool const isMembers : {true, false}) {
        CBenchCentre const centre({DataFile::center, DataFile::member});
        StoreListedMembers(isMembers ? rows : rows / 10);
        if (!isMembers) {
            StoreListedWorkouts(rows / 10, rows);
        }
        CBenchDoc doc;
        auto const kind = doc.Kind(isMembers);
        StartMemory(kind);
        MeasureOpening(kind, repetitions);
        MeasureSorting(kind, repetitions);
        MeasureNarrowing(kind, u"lee"_s, repetitions);
        MeasureNarrowing(kind, u"a"_s, repetitions);
        MeasureSteps(kind, repetitions);
    }
    MeasurePrinting(bench.IsQuick() ? 1'000 : 20'000, repetitions);
    return 0;
}
