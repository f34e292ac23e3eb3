#include "members/MergeLetter.h"

#include "members/MailMembers.h"
#include "members/MailPages.h"
#include "ui/Convert.h"

#include <QPagedPaintDevice>

namespace
{

constexpr int kFontHeight = 18;
constexpr int kLeft = 75;
constexpr int kTop = 50;

/// One letter, line by line down the page.
class CLetterLines
{
public:
    explicit CLetterLines(CMailPages& pages)
        : m_pages(pages)
    {
    }

    /// A line here. False when it would have stood on a page that cannot be begun. An empty one
    /// needs none.
    bool Print(QString const& text)
    {
        if (!text.isEmpty() && m_y + kFontHeight > m_pages.Height()) {
            if (!m_pages.Next()) {
                return false;
            }
            m_y = kTop;
        }
        m_pages.Draw(kLeft, m_y, text, RoomOf(m_pages));
        return true;
    }
    void Advance(int lines = 1) { m_y += lines * m_pages.LineHeight(); }

    static int RoomOf(CMailPages const& pages) { return pages.Width() - kLeft; }

private:
    CMailPages& m_pages;
    int m_y = kTop;
};

bool PrintHeading(CLetterLines& lines, CDAOMem const& member, int blankLines)
{
    lines.Advance(blankLines);
    bool isDone = lines.Print(ToQt(CEFOleDateTime::GetCurrentTime().Format("%B %d, %Y")));
    lines.Advance(2);
    isDone = isDone && lines.Print(ToQt(MailName(member)));
    lines.Advance();
    if (!member.m_Address.empty()) {
        isDone = isDone && lines.Print(ToQt(member.m_Address));
        lines.Advance();
    }
    isDone = isDone && lines.Print(ToQt(MailPlace(member)));
    lines.Advance(2);
    isDone = isDone && lines.Print(ToQt("Dear " + member.m_FirstName + ':'));
    lines.Advance(2);
    return isDone;
}

bool PrintLetter(CMailPages& pages, CDAOMem const& member, int blankLines, QStringList const& body)
{
    CLetterLines lines(pages);
    if (!pages.Next() || !PrintHeading(lines, member, blankLines)) {
        return false;
    }
    for (auto const& line : body) {
        if (!lines.Print(line)) {
            return false;
        }
        lines.Advance();
    }
    return true;
}

} // namespace

CPrinted PrintMergeLetters(QPagedPaintDevice& device, CDAOMem& found, CMergeLetter const& letter,
    CLetterExtent extent, int mostPages, std::function<void()> const& step)
{
    CMailMembers members(found);
    CMailPages pages(device, kFontHeight, mostPages);
    QStringList body;
    for (auto const& line : letter.m_lstBody) {
        body += pages.Wrap(line, CLetterLines::RoomOf(pages));
    }
    auto place = members.FirstFrom(0);
    if (place < members.Count() && !pages.Begin()) {
        return {CPages::Outcome::notStarted, 0, false, true};
    }
    bool isDone = true;
    while (isDone && place < members.Count()) {
        isDone = PrintLetter(pages, *members.At(place), letter.m_nBlankLines, body);
        step();
        place = extent == CLetterExtent::first ? members.Count() : members.FirstFrom(place + 1);
    }
    return {pages.End(), pages.Number(), !isDone, members.IsRead()};
}
