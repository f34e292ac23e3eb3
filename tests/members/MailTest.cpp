#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/ui/FileRecorder.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/PrintedPages.h"

#include <QListView>
#include <QPlainTextEdit>

#include <filesystem>
#include <set>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{

/// A desk with members who are to get mail, and a folder of two templates.
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
        qputenv("CORV_TXT", m_templates.Path().c_str());
        Write("tnames.txt", "First\nSecond\n@ignored\nThird\n");
        Write("templ0.txt", "Hello\n");
        Write("templ1.txt", "Dear all,\r\n\r\nbye\n");
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

    std::filesystem::path Place(char const* name) const { return m_templates.Path() / name; }
    QString Path(char const* name) const { return QString::fromStdString(Place(name).string()); }
    void Write(char const* name, std::string const& text) const { WriteFile(Place(name), text); }
    QString Read(char const* name) const { return QString::fromStdString(ReadFile(Place(name))); }

    /// The dialog, after the template at that place was chosen, if there are any.
    void Open(int entry, CDialogUser::Step const& step)
    {
        Use({Choose(entry), step}, [this] { return m_doc.PrintLetters(m_doc.m_setMem), true; });
    }
    static CDialogUser::Step Choose(int entry) { return Steps(u"templateList=%1 OK"_s.arg(entry)); }
    /// The letters that a button prints.
    QList<QStringList> Print(QDialog const& form, QString const& button)
    {
        CPrintedPages const printed;
        Press(form, button);
        return printed.Lines();
    }

    CTempFolder m_templates;
};

QPlainTextEdit& Body(QDialog const& form)
{
    return Child<QPlainTextEdit>(form, "bodyEdit");
}

void TypeBody(QDialog const& form, QString const& text)
{
    auto& body = Body(form);
    body.selectAll();
    body.insertPlainText(text);
}

QString const kDone = u"You have successfully updated the current template."_s;

} // namespace

/// Labels and letters, from the button of the list to the pages and files.
class MailTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fillsSheetsInOrderAndPassesOverWhatIsMissing();
    void keepsEveryLineOnItsLabel();
    void printsALetterToEachMember();
    void carriesOnWhatDoesNotFit();
    void savesTheTemplateAsItStands();
    void losesNoTemplate();
    void readsOnlyTexts();
    void namesWhatIsMissing();
};

void MailTest::fillsSheetsInOrderAndPassesOverWhatIsMissing()
{
    CMailDesk desk(61);
    for (auto const& [count, sheets] : {std::pair(61, 3), {31, 2}, {30, 1}}) {
        RunOnMembers("DELETE FROM members WHERE member_id > " + std::to_string(count));
        QCOMPARE(desk.m_doc.m_setMem.FindAllMembers(true), count);
        auto const pages = desk.Labels();
        QCOMPARE(desk.Last(),
            u"Printing mailing labels will require %1 sheet(s)\nof 1\" x 2 5/8\" labels. If your "
            "printer is ready,\nclick \"OK\" to print the labels now."_s.arg(sheets));
        QCOMPARE(pages.size(), sheets);
        for (qsizetype i = 0; i < count; ++i) {
            auto const row = pages[i / 30].value(i % 30 / 3 * 3).split(u"Jo N"_s);
            QCOMPARE(row.value(i % 3 + 1).toInt(), i);
            QCOMPARE(row.size(), std::min<qsizetype>(3, count - i / 3 * 3) + 1);
        }
    }
    CPrintedPages const printed;
    desk.m_doc.PrintLabels(desk.m_doc.m_setMem); // the answer is Cancel
    QCOMPARE(printed.Lines().size(), 0);
    QCOMPARE(desk.m_messages.Messages().constLast().m_question, CQuestion::okCancel);
    desk.Add("Street", "Jo", "'', 'Salem', 'WA', '98'");
    desk.Add("City", "Jo", "'3 Elm', '', 'ID', '99'");
    desk.Add("State", "Jo", "'4 Elm', 'Boise', '', '99'");
    desk.Add("Zip", "Jo", "'5 Elm', 'Boise', 'ID', ''");
    // Deleted meanwhile: the first one, one within a row, which ends there, and most of the sheet.
    RunOnMembers("DELETE FROM members WHERE member_id IN (1, 5) OR member_id BETWEEN 7 AND 29");
    auto const pages = desk.Labels();
    QVERIFY(desk.Last().contains(u" 2 sheet(s)") && pages.size() == 1);
    QCOMPARE(pages.value(0).join(u'|'),
        u"Jo N1 Jo N2 Jo N3|1 Oak 1 Oak 1 Oak|Bend, OR 97 Bend, OR 97 Bend, OR 97|"
        "Jo N5|1 Oak|Bend, OR 97|Jo N29 Jo Street Jo City|1 Oak 3 Elm|"
        "Bend, OR 97 Salem, WA 98|Jo State Jo Zip|4 Elm 5 Elm"_s);
    RunOnMembers("DROP VIEW member_view");
    QCOMPARE(desk.Labels(), QList<QStringList>());
    QCOMPARE(desk.Last(), u"Error: the members could not be read."_s);
}

void MailTest::keepsEveryLineOnItsLabel()
{
    CMailDesk desk;
    for (int i = 0; i < 30; ++i) {
        auto const of
            = [i](int count) { return std::string(std::size_t(count), i % 2 != 0 ? 'W' : 'm'); };
        desk.Add(of(20), of(12), "'" + of(28) + "', '" + of(16) + "', 'WA', '98101-1234'");
    }
    CPrintedPages const printed;
    desk.PrintLabels();
    // Sheets of this kind begin half an inch below the edge and 3/16 from the left, with 1/8
    // between their columns.
    QList<int> words(30);
    std::set<long> tops; // in hundredths of an inch, as the left edge
    double left = 900;
    for (auto const& [word, box] : printed.Boxes()) {
        int const row = int(box.top() / 72 - 0.5);
        int const column = int((box.left() / 72 - 0.1875) / 2.75);
        QRectF const label((0.1875 + column * 2.75) * 72, (0.5 + row) * 72, 2.625 * 72, 72);
        QVERIFY2(label.contains(box), qPrintable(word));
        ++words[row * 3 + column];
        tops.insert(std::lround((box.top() - printed.Boxes()[0].second.top()) / 0.72));
        left = std::min(left, box.left() - column * 276 * 0.72);
    }
    QCOMPARE(words, QList<int>(30, 6));
    QCOMPARE(std::lround((left - 18) / 0.72), 18); // behind what is not printed on
    std::set<long> expected;
    for (int line = 0; line < 30; ++line) {
        expected.insert(line / 3 * 99 + line % 3 * 17);
    }
    QVERIFY(tops == expected);
}

void MailTest::printsALetterToEachMember()
{
    CMailDesk desk;
    desk.Add("Archer", "Ann", "'3 Elm', 'Salem', 'OR', '97301'");
    desk.Add("Baker", "Bo", "'', 'Bend', 'WA', '98'");
    desk.Add("Clark", "Cy", "'9 Oak', '', 'WA', '98'");
    CLargeFont const large;
    auto const list = [&](QDialog& form) {
        QCOMPARE(FaultsOf(form), QStringList());
        auto& names = Child<QListView>(form, "templateList");
        QCOMPARE(names.model()->rowCount(), 2);
        auto const second = names.visualRect(names.model()->index(1, 0)).center();
        QTest::mouseClick(names.viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(names.viewport(), Qt::LeftButton, {}, second);
    };
    auto const use = [&](QDialog& form) {
        QCOMPARE(FaultsOf(form), QStringList());
        QCOMPARE(Body(form).toPlainText(), u"Dear all,\n\nbye\n\n"_s);
        TypeBody(form, u"Dear all,\n\nbye\n\tnow\nnot this"_s);
        auto const letter = [](QString const& heading) {
            return (u"November 06, 2026|"_s + heading + u"|Dear all,|bye|now"_s).split(u'|');
        };
        auto const first = letter(u"Ann Archer|3 Elm|Salem, OR 97301|Dear Ann:"_s);
        auto const second = letter(u"Bo Baker|Bend, WA 98|Dear Bo:"_s);
        auto const third = letter(u"Cy Clark|9 Oak|Dear Cy:"_s);
        QCOMPARE(desk.Print(form, u"printAllButton"_s), (QList{first, second, third}));
        // Where the lines stand, in lines below the first one of a letter without blank lines.
        CPrintedPages const printed;
        Do(form, u"blankLinesSpin=0 testPrintButton"_s);
        auto const top = printed.Boxes()[0].second.top();
        QCOMPARE(std::lround((printed.Boxes()[0].second.left() - 18) / 0.72), 75);
        Do(form, u"blankLinesSpin=40 testPrintButton"_s);
        std::set<long> places;
        for (auto const& [word, box] : printed.Boxes()) {
            places.insert(std::lround((box.top() - top) / (19 * 0.72)));
        }
        QVERIFY(places == (std::set<long>{40, 42, 43, 44, 46, 48, 50, 51}));
        Do(form, u"blankLinesSpin=41"_s);
        QCOMPARE(desk.Press(form, u"printAllButton"_s), u"Enter an integer between 0 and 40."_s);
        Do(form, u"blankLinesSpin=3"_s);
        // Members are passed over when somebody has deleted them, also the first one.
        RunOnMembers("DELETE FROM members WHERE member_id = 1");
        QCOMPARE(desk.Print(form, u"testPrintButton"_s), QList<QStringList>{second});
        CFileRecorder files;
        files.AnswerNext({desk.Path("letters.pdf")});
        desk.Press(form, u"pdfButton"_s);
        QCOMPARE(CPrintedPages::LinesOf(desk.Path("letters.pdf")), (QList{second, third}));
        RunOnMembers("DROP VIEW member_view");
        QCOMPARE(desk.Press(form, u"printAllButton"_s), u"Error: the members could not be read."_s);
        // What was written is not lost by Esc; OK closes.
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        Child<QPushButton>(form, "okButton").click();
    };
    desk.Told({list, use}, [&] { desk.m_doc.PrintLetters(desk.m_doc.m_setMem); });
}

void MailTest::carriesOnWhatDoesNotFit()
{
    CMailDesk desk(1);
    desk.Open(0, [&](QDialog& form) {
        // A line that is wider than the paper, and more lines than a page has.
        QStringList words;
        for (int i = 0; i < 60; ++i) {
            words += u"word%1"_s.arg(i);
        }
        TypeBody(form, words.join(u' ') + u'\n' + words.join(u'\n') + u"\n\n\n\n"_s);
        CPrintedPages const printed;
        desk.Press(form, u"testPrintButton"_s);
        auto const pages = printed.Lines();
        QCOMPARE(pages.size(), 2);
        QCOMPARE((pages[0] + pages[1]).join(u' ').section(u"Dear Jo: "_s, 1),
            (words + words).join(u' '));
        for (auto const& [word, box] : printed.Boxes()) {
            QVERIFY(QRectF(18, 18, 612 - 36, 792 - 36).contains(box));
        }
        // A letter that just fills its page takes no second one for the empty lines below.
        TypeBody(form, QStringList(42, u"line"_s).join(u'\n') + QString(30, u'\n'));
        QCOMPARE(desk.Print(form, u"testPrintButton"_s).size(), 1);
        form.accept();
    });
}

void MailTest::savesTheTemplateAsItStands()
{
    CMailDesk desk;
    desk.Open(1, [&](QDialog& form) {
        auto const name = [&](QDialog& dialog) {
            QCOMPARE(FaultsOf(dialog), QStringList());
            QCOMPARE(Edit(dialog, "nameEdit").text(), u"Second"_s);
            desk.Refuses(dialog,
                {{u"nameEdit="_s, u"Error: enter template name @nameEdit"_s},
                    {u"nameEdit=@home"_s,
                        u"Error: the name of a template cannot begin with \"@\" @nameEdit"_s}});
            Do(dialog, u"nameEdit=%1 OK"_s.arg(QString(40, u'n')));
        };
        QCOMPARE(FaultsOf(form), QStringList());
        TypeBody(form, u"Grüße\n\nend\nlost"_s);
        desk.m_messages.AnswerNext({false, true, true, true});
        QCOMPARE(desk.Press(form, u"saveTemplateButton"_s),
            u"Are you sure you want to replace the template\n\"Second\" with the current\ncustomization?"_s);
        desk.Press(form, u"saveTemplateButton"_s, {[](QDialog& dialog) { dialog.reject(); }});
        QCOMPARE(desk.Read("tnames.txt"), u"First\nSecond\n@ignored\nThird\n"_s);
        QVERIFY(desk.Press(form, u"saveTemplateButton"_s, {name}).endsWith(kDone));
        QCOMPARE(desk.Read("tnames.txt"), u"First\n"_s + QString(28, u'n') + u"\n@"_s);
        QCOMPARE(desk.Read("templ1.txt"), u"Grüße\n\nend\n\n"_s);
        TypeBody(form, u"single"_s); // a body of one line has nothing to save
        QVERIFY(desk.Press(form, u"saveTemplateButton"_s, {ClickOk}).endsWith(kDone));
        // Read again it has grown by its end.
        desk.Press(form, u"selectTemplateButton"_s, {CMailDesk::Choose(1)});
        QCOMPARE(Body(form).toPlainText(), u"Grüße\n\nend\n\n\n"_s);
        QVERIFY(!Body(form).document()->isUndoAvailable());
        QTest::keyClick(&form, Qt::Key_Escape); // nothing would be lost
    });
}

void MailTest::losesNoTemplate()
{
    CMailDesk desk;
    auto const many = u"Template\n"_s.repeated(1000);
    desk.Write("tnames.txt", many.toStdString());
    desk.Write("templ10.txt", "eleven\n");
    desk.Open(10, [&](QDialog& form) {
        QCOMPARE(Body(form).toPlainText(), u"eleven\n\n"_s);
        auto const save = [&](QList<CDialogUser::Step> const& steps = {}) {
            return desk.Press(form, u"saveTemplateButton"_s, steps);
        };
        QCOMPARE(save(), u"Error: only the first 10 templates can be replaced"_s);
        desk.Press(form, u"selectTemplateButton"_s, {CMailDesk::Choose(1)});
        desk.m_messages.AnswerNext({true, false});
        QVERIFY(save().contains(u"|There are 1000 templates, "));
        QCOMPARE(desk.Read("tnames.txt"), many);
        desk.m_messages.AnswerNext({true, true});
        QVERIFY(save({ClickOk}).endsWith(kDone));
        QCOMPARE(desk.Read("tnames.txt").count(u'\n'), 10);
        // Another desk renames a template meanwhile, or takes some away.
        desk.m_messages.AnswerNext({true});
        QVERIFY(save({[&](QDialog& name) {
            desk.Write("tnames.txt", "theirs\nours\n@");
            ClickOk(name);
        }}).contains(u"Nothing was saved."));
        // Neither file is written when one cannot be.
        std::filesystem::remove(desk.Place("templ1.txt"));
        std::filesystem::create_directory(desk.Place("templ1.txt"));
        desk.m_messages.AnswerNext({true});
        QVERIFY(save({Steps(u"nameEdit=new OK"_s)})
                    .endsWith(u"|Error: cannot open file:\n"_s + desk.Path("templ1.txt")));
        QCOMPARE(desk.Read("tnames.txt"), u"theirs\nours\n@"_s);
        desk.Write("tnames.txt", "only\n@");
        QCOMPARE(save(), u"Error: there is no template to replace"_s);
        form.accept();
    });
}

void MailTest::readsOnlyTexts()
{
    CMailDesk desk;
    auto const refused = u"Error: cannot open file:\n"_s + desk.Path("templ1.txt");
    auto const x = [](int count) { return QByteArray(count, 'x'); };
    for (auto const& [bytes, body] : {std::pair("\xEF\xBB\xBFGrüße\n"_ba, "Grüße\n\n"_ba),
             {"Gr\xFC\xDF\x65 \x80\n"_ba, "Grüße €\n\n"_ba}, // Windows-1252
             {"\xFF\xFEG\0r\0\xFC\0"_ba, "Grü\n"_ba}, {""_ba, "\n"_ba},
             {x(400), x(199) + '\n' + x(199) + "\nxx\n"}, {x(199) + '\n', x(199) + "\n\n"},
             {"a\0b\n"_ba, refused.toUtf8()}, {x(20'000'000), refused.toUtf8()}}) {
        desk.Write("templ1.txt", bytes.toStdString());
        QString shown;
        auto const look = [&shown](QDialog& form) {
            shown = Body(form).isEnabled() ? Body(form).toPlainText() : QString();
            form.accept();
        };
        auto const told = desk.Told({CMailDesk::Choose(1), look},
            [&desk] { desk.m_doc.PrintLetters(desk.m_doc.m_setMem); });
        QCOMPARE(told + shown, QString::fromUtf8(body));
        QVERIFY(ReadFile(desk.Place("templ1.txt")) == bytes.toStdString());
    }
}

void MailTest::namesWhatIsMissing()
{
    CMailDesk desk;
    auto const told = [&desk] {
        return desk.Told({CMailDesk::Choose(0),
                             [](QDialog& form) {
                                 QVERIFY(!Body(form).isEnabled());
                                 form.accept();
                             }},
            [&desk] { desk.m_doc.PrintLetters(desk.m_doc.m_setMem); });
    };
    auto const cannot = u"Error: cannot open file:\n"_s;
    auto const body = desk.Path("templ0.txt");
    std::filesystem::remove(body.toStdString());
    QCOMPARE(told(), cannot + body);
    // To open a pipe would take until somebody writes into it.
    QCOMPARE(::mkfifo(qPrintable(body), 0600), 0);
    QCOMPARE(told(), cannot + body);
    qputenv("CORV_TXT", qPrintable(desk.Path("templ1.txt")));
    QCOMPARE(told(), cannot + desk.Path("templ1.txt/tnames.txt"));
    qunsetenv("CORV_TXT");
    QCOMPARE(told(),
        u"Error: system environment variable \"CORV_TXT\" is not set|"_s + cannot
            + u"tnames.txt"_s);
}

static CTestEntryOf<MailTest> const g_entry;
#include "MailTest.moc"
