#include "members/MailingLabels.h"

#include "doc/CorvanaDoc.h"
#include "members/MailMembers.h"
#include "members/MailPages.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/PrintOut.h"
#include "ui/WaitCursor.h"

#include <QPagedPaintDevice>

#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kRowsOfSheet = 10;
constexpr int kLabelsOfSheet = 30;
constexpr int kFontHeight = 16;
constexpr int kLetterWidth = 6; // on average, of a roman font of that height
constexpr std::array<int, 3> kColumns = {3 * kLetterWidth, 49 * kLetterWidth, 95 * kLetterWidth};
constexpr int kRoom = 37 * kLetterWidth; // what a label has behind its left edge, and some to spare
constexpr int kFirstLine = 3;
constexpr double kSpaceBelow = 2.87; // in lines

/// The lines of one label.
using CLabel = std::array<QString, 3>;

/// A row of labels, as long as the members at these places are there.
std::vector<CLabel> ReadRow(CMailMembers& members, std::int32_t place)
{
    std::vector<CLabel> row;
    while (row.size() < kColumns.size()) {
        auto const* const member = members.At(place++);
        if (member == nullptr) {
            break;
        }
        row.push_back({ToQt(MailName(*member)), ToQt(member->m_Address), ToQt(MailPlace(*member))});
    }
    return row;
}

void DrawRow(CMailPages& pages, int y, std::vector<CLabel> const& row)
{
    for (std::size_t line = 0; line < CLabel().size(); ++line) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            pages.Draw(kColumns[i], y, row[i][line], kRoom);
        }
        y += pages.LineHeight();
    }
}

CPrinted PrintOn(QPagedPaintDevice& device, CDAOMem& found, int mostPages)
{
    CMailMembers members(found);
    CMailPages pages(device, kFontHeight, mostPages);
    auto next = members.FirstFrom(0);
    if (next < members.Count() && !pages.Begin()) {
        return {CPages::Outcome::notStarted, 0, false, true};
    }
    int const height = pages.LineHeight();
    while (next < members.Count() && pages.Next()) {
        int y = kFirstLine * height;
        for (int i = 0; i < kRowsOfSheet && next < members.Count(); ++i) {
            auto const row = ReadRow(members, next);
            DrawRow(pages, y, row);
            y += static_cast<int>(row[0].size()) * height + static_cast<int>(height * kSpaceBelow);
            next = members.FirstFrom(next + static_cast<std::int32_t>(row.size()));
        }
    }
    return {pages.End(), pages.Number(), next < members.Count(), members.IsRead()};
}

} // namespace

CPrintOut MailingLabels(CCorvanaDoc& doc, CDAOMem& found)
{
    return {CCorvanaDoc::tr("Mailing Labels"), QPageLayout::Portrait,
        [&found](
            QPagedPaintDevice& device, int mostPages) { return PrintOn(device, found, mostPages); },
        [&doc, &found] {
            doc.Fail(CCorvanaDoc::tr("Error: the members could not be read."), found);
        }};
}

std::int32_t LabelSheets(std::int32_t members)
{
    return members / kLabelsOfSheet + (members % kLabelsOfSheet != 0 ? 1 : 0);
}

void CCorvanaDoc::PrintLabels(CDAOMem& members)
{
    CWaitCursor const wait;
    auto const question
        = tr("Printing mailing labels will require %1 sheet(s)\nof 1\" x 2 5/8\" labels. If your "
             "printer is ready,\nclick \"OK\" to print the labels now.")
              .arg(LabelSheets(members.CountSet()));
    if (Ask(Window(), question, CQuestion::okCancel, CMessageIcon::none, PrinterNote())) {
        Print(Window(), MailingLabels(*this, members));
    }
}
