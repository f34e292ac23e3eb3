// Measures mailing labels and merge letters beside drawing the same texts, one call a line, on a
// device of the same kind.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "doc/CorvanaDoc.h"
#include "members/MailMembers.h"
#include "members/MailingLabels.h"
#include "members/MergeLetter.h"
#include "platform/qt/Printers.h"
#include "ui/Convert.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <functional>
#include <limits>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kMostPages = std::numeric_limits<int>::max();

/// The texts of one page, each with its place in hundredths of an inch.
using CPage = std::vector<std::pair<QPointF, QString>>;

std::vector<CPage> LabelPages(CDAOMem& found)
{
    std::vector<CPage> pages;
    CMailMembers members(found);
    for (int place = 0; place < members.Count(); ++place) {
        if (place % 30 == 0) {
            pages.emplace_back();
        }
        auto const& member = *members.At(place);
        int const row = place % 30 / 3;
        QPointF at(18 + place % 3 * 276, 65 + row * 99);
        for (auto const& text : {MailName(member), member.m_Address, MailPlace(member)}) {
            pages.back().emplace_back(at, ToQt(text));
            at.ry() += 17;
        }
    }
    return pages;
}

std::vector<CPage> LetterPages(CDAOMem& found, QStringList const& body)
{
    std::vector<CPage> pages;
    CMailMembers members(found);
    auto const today = ToQt(CEFOleDateTime::GetCurrentTime().Format("%B %d, %Y"));
    for (int place = 0; place < members.Count(); ++place) {
        auto const& member = *members.At(place);
        auto& page = pages.emplace_back();
        double y = 66;
        for (auto const& text : QStringList{today, ToQt(MailName(member)), ToQt(member.m_Address),
                                    ToQt(MailPlace(member)), ToQt("Dear " + member.m_FirstName)}
                + body) {
            page.emplace_back(QPointF(75, y), text);
            y += 19;
        }
    }
    return pages;
}

/// What a print takes, from the beginning of the document to its end.
double Time(std::function<void(QPdfWriter&)> const& print)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    double const start = CpuMs();
    {
        QPdfWriter device(&buffer);
        SetLetterPaper(device, QPageLayout::Portrait);
        print(device);
    }
    return CpuMs() - start;
}

void DrawRaw(QPdfWriter& device, std::vector<CPage> const& pages, int pixels)
{
    QPainter painter(&device);
    QFont font(u"Times"_s);
    font.setPixelSize(pixels);
    painter.setFont(font);
    double const unit = device.logicalDpiX() / 100.0;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (i > 0) {
            device.newPage();
        }
        for (auto const& [at, text] : pages[i]) {
            painter.drawText(at * unit, text);
        }
    }
}

void Measure(char const* what, int repetitions, std::vector<CPage> const& pages, int pixels,
    std::function<void(QPdfWriter&)> const& print)
{
    std::vector<double> raw;
    std::vector<double> ours;
    for (int i = 0; i < repetitions; ++i) { // taking turns: a busy moment hits both
        raw.push_back(Time([&](QPdfWriter& device) { DrawRaw(device, pages, pixels); }));
        ours.push_back(Time(print));
    }
    std::printf("| %s, %zu pages | %.1f ms | %.1f ms | %.2f |\n", what, pages.size(), Median(raw),
        Median(ours), Median(ours) / Median(raw));
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    int const repetitions = bench.IsQuick() ? 1 : 15;
    CBenchCentre const centre({DataFile::center, DataFile::member});
    {
        CRawDatabase const raw(MemberPath());
        AddMembers(raw, bench.IsQuick() ? 60 : 600);
        AddTablesOfMembers(raw, 100);
    }
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    auto& found = doc.m_setMem;
    if (found.FindAllMembers(true) == 0) {
        std::fputs("the members cannot be read\n", stderr);
        return 1;
    }
    CMergeLetter const letter = {0,
        QStringList(20,
            u"We would like to remind you that your membership ends at the end of "
            "the month."_s)};
    std::puts("| what | raw, CPU | CPU | ratio |\n|---|---:|---:|---:|");
    auto const labels = MailingLabels(doc, found);
    Measure("labels", repetitions, LabelPages(found), 173,
        [&](QPdfWriter& device) { labels.m_fnPrint(device, kMostPages); });
    Measure(
        "letters", repetitions, LetterPages(found, letter.m_lstBody), 195, [&](QPdfWriter& device) {
            PrintMergeLetters(device, found, letter, CLetterExtent::all, kMostPages, [] {});
        });
    return 0;
}
