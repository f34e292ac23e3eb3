#include "members/MemberListDlg.h"
#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/ui/FileRecorder.h"
#include "tests/ui/PrintedPages.h"

#include <QAction>

#include <set>

using namespace Qt::StringLiterals;

namespace
{

/// A desk with members who are to get mail.
class CMailDesk : public CMemberDesk
{
public:
    /// Each called after the number in which he is found, with a whole address.
    explicit CMailDesk(int count = 0)
    {
        RunOnMembers("DELETE FROM members");
        for (int i = 0; i < count; ++i) {
            Add("N" + std::to_string(i), "Jo", "'1 Oak', 'Bend', 'OR', '97'");
        }
    }
    void Add(std::string const& last, std::string const& first, std::string const& address)
    {
        auto const id = m_doc.m_setMem.FindAllMembers(true) + 1;
        StoreMember(id, last, first, "Q");
        RunOnMembers("INSERT INTO profiles SELECT NULL, " + std::to_string(id) + ", " + address
            + ", '', '', '', '', '', 0, 0, 0, 0, 0, 0");
        QCOMPARE(m_doc.m_setMem.FindAllMembers(true), id);
    }
    QString Last() const { return m_messages.Texts().constLast(); }

    /// Presses OK for labels.
    void PrintLabels()
    {
        m_messages.AnswerNext({true});
        m_doc.PrintLabels(m_doc.m_setMem);
    }
    QList<QStringList> Labels()
    {
        CPrintedPages const printed;
        PrintLabels();
        return printed.Lines();
    }

    QString Path(char const* name) const
    {
        return QString::fromStdString((m_folder.Path() / name).string());
    }

    CTempFolder m_folder;
};

} // namespace

/// Labels, from the button of the list to the pages and files.
class MailTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fillsSheetsOfThirtyLabelsInOrder();
    void leavesOutWhatAnAddressLacks();
    void passesOverDeletedMembers();
    void keepsEveryLineOnItsLabel();
};

void MailTest::fillsSheetsOfThirtyLabelsInOrder()
{
    for (auto const& [count, sheets] : {std::pair(1, 1), {30, 1}, {31, 2}, {61, 3}}) {
        CMailDesk desk(count);
        auto const pages = desk.Labels();
        QCOMPARE(desk.Last(),
            u"Printing mailing labels will require %1 sheet(s)\nof 1\" x 2 5/8\" labels. If your "
            "printer is ready,\nclick \"OK\" to print the labels now."_s.arg(sheets));
        QCOMPARE(desk.m_messages.Messages().constLast().m_question, CQuestion::okCancel);
        QCOMPARE(pages.size(), sheets);
        for (int i = 0; i < count; ++i) {
            auto const row = pages[i / 30].value(i % 30 / 3 * 3).split(u"Jo N"_s);
            QCOMPARE(row.value(i % 3 + 1).toInt(), i);
            QCOMPARE(row.size(), std::min(3, count - i / 3 * 3) + 1);
        }
        CPrintedPages const printed;
        desk.m_doc.PrintLabels(desk.m_doc.m_setMem); // the answer is Cancel
        QCOMPARE(printed.Lines().size(), 0);
    }
}

void MailTest::leavesOutWhatAnAddressLacks()
{
    CMailDesk desk;
    desk.Add("Whole", "Jo", "'1 Elm', 'Bend', 'OR', '97'");
    desk.Add("Street", "Jo", "'', 'Salem', 'WA', '98'");
    desk.Add("City", "Jo", "'3 Elm', '', 'ID', '99'");
    desk.Add("State", "Jo", "'4 Elm', 'Boise', '', '99'");
    desk.Add("Zip", "Jo", "'5 Elm', 'Boise', 'ID', ''");
    QCOMPARE(desk.Labels(),
        (QList<QStringList>{{u"Jo Whole Jo Street Jo City"_s, u"1 Elm 3 Elm"_s,
            u"Bend, OR 97 Salem, WA 98"_s, u"Jo State Jo Zip"_s, u"4 Elm 5 Elm"_s}}));
}

void MailTest::passesOverDeletedMembers()
{
    CMailDesk desk(40);
    auto& doc = desk.m_doc;
    // The first one, one within a row, which ends there, and all of the second sheet.
    RunOnMembers("DELETE FROM members WHERE member_id IN (1, 6) OR member_id > 30");
    auto const pages = desk.Labels();
    QVERIFY(desk.Last().contains(u" 2 sheet(s)"));
    QCOMPARE(pages.size(), 1);
    auto const names = pages[0].filter(u"Jo "_s);
    QCOMPARE(
        names.mid(0, 3), (QStringList{u"Jo N1 Jo N2 Jo N3"_s, u"Jo N4"_s, u"Jo N6 Jo N7 Jo N8"_s}));
    QCOMPARE(names.join(u' ').count(u"Jo"), 28);
    CMemberListDlg list(doc, doc.m_setMem, false);
    CFileRecorder files;
    files.AnswerNext({desk.Path("labels.pdf")});
    list.findChild<QAction*>(u"pdfLabelsAction"_s)->trigger();
    QCOMPARE(CPrintedPages::LinesOf(desk.Path("labels.pdf")), pages);
    RunOnMembers("DELETE FROM members");
    QCOMPARE(desk.Labels(), QList<QStringList>());
    RunOnMembers("DROP VIEW member_view");
    QCOMPARE(desk.Labels(), QList<QStringList>());
    QCOMPARE(desk.Last(), u"Error: the members could not be read."_s);
}

void MailTest::keepsEveryLineOnItsLabel()
{
    CMailDesk desk;
    for (int i = 0; i < 30; ++i) {
        auto const of
            = [i](int count) { return std::string(std::size_t(count), i % 2 ? 'W' : 'm'); };
        desk.Add(of(20), of(12), "'" + of(28) + "', '" + of(16) + "', 'WA', '98101-1234'");
    }
    CPrintedPages const printed;
    desk.PrintLabels();
    // Sheets of this kind begin half an inch below the edge and 3/16 from the left, with 1/8
    // between their columns.
    QList<int> words(30);
    std::set<double> tops;
    double left = 900;
    for (auto const& [word, box] : printed.Boxes()) {
        int const row = int(box.top() / 72 - 0.5);
        int const column = int((box.left() / 72 - 0.1875) / 2.75);
        QRectF const label((0.1875 + column * 2.75) * 72, (0.5 + row) * 72, 2.625 * 72, 72);
        QVERIFY2(label.contains(box), qPrintable(word));
        ++words[row * 3 + column];
        tops.insert(box.top());
        left = std::min(left, box.left() - column * 276 * 0.72);
    }
    QCOMPARE(words, QList<int>(30, 6));
    // To the hundredth of an inch, behind the quarter of an inch that is not printed on.
    QCOMPARE(std::lround((left - 18) / 0.72), 18);
    int line = 0;
    for (auto const top : tops) {
        QCOMPARE(std::lround((top - *tops.begin()) / 0.72), line / 3 * 99 + line % 3 * 17);
        ++line;
    }
    QCOMPARE(line, 30);
}

static CTestEntryOf<MailTest> const g_entry;
#include "MailTest.moc"
