#include "doc/CorvanaDoc.h"

#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/platform/db/Faults.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace
{

/// All rows of these tables of the member file, one line each, without their keys.
QStringList Rows(QStringList const& tables
    = {u"members"_s, u"profiles"_s, u"enrollments"_s, u"classes"_s, u"messages"_s, u"workouts"_s})
{
    QStringList lines;
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
    for (auto const& table : tables) {
        CRowBlock rows;
        status = database->Query(FromQt(u"SELECT * FROM %1 ORDER BY id"_s.arg(table)), {}, rows);
        [&] { QVERIFY2(status, qPrintable(table)); }();
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            QStringList cells;
            for (std::size_t i = 1; i < rows.Columns(); ++i) {
                auto const& cell = rows.Row(row).Cell(i);
                cells += cell.type == CCell::text ? ToQt(rows.Row(row).Text(cell))
                                                  : QString::number(cell.integerValue);
            }
            lines += table + u": "_s + cells.join(u'|');
        }
    }
    return lines;
}

/// Member 7 with a row in each of those tables.
void StoreSeven()
{
    for (auto const* const row : {"members VALUES (NULL, 7, 1007, 'Ann', 'B', 'Archer', 1)",
             "profiles VALUES (NULL, 7, '3 Elm', 'Salem', 'OR', '97301', '555-0100',"
             " 'ann@example.org', 'Bo', '555-0101', 'Dr. Ray', 1, 0, 3000000000, 0, 0x80000003,"
             " 0x80000001)",
             "enrollments VALUES (NULL, 7, 3990000000, 4020000000, 3, 1)",
             "classes VALUES (NULL, 7, 4, 'Staff', 'Wellness', 'Morning', 1, 1, 2, 3)",
             "messages VALUES (NULL, 7, 'Bring a towel')",
             "workouts VALUES (NULL, 7, 1, 4, 4000000000, 4000003000, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9,"
             " 10, 11, 12)"}) {
        RunOnMembers(std::string("INSERT INTO ") + row);
    }
}

QTabWidget& Tabs(QDialog const& sheet)
{
    return Child<QTabWidget>(sheet, "tabs");
}

QLineEdit& Edit(QDialog const& dialog, char const* name)
{
    return Child<QLineEdit>(dialog, name);
}

/// Answers the question for a member ID.
CDialogUser::Step EnterID(QString const& id)
{
    return [id](QDialog& prompt) {
        QCOMPARE(prompt.windowTitle(), u"Member ID"_s);
        Type(Edit(prompt, "memberIDEdit"), id);
        ClickOk(prompt);
    };
}

} // namespace

/// The document's member operations, used through their real dialogs over a real file.
class MemberWorkflowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void addsANewMember();
    void okWithoutChangesKeepsEveryByte();
    void pagesSuitKeyboardReaderAndFont();
    void savesWhatWasChangedOnEveryPage();
    void aMemberWithoutClassesShowsNobodyElses();
    void aClassDeletedInTheFormIsNoConflict();
    void anotherDesksChangesAreNotOverwritten();
    void aMessageShownMeanwhileStaysShown();
    void aNumberTakenMeanwhileIsRefused();
    void aFailedSaveKeepsTheFormAndTheMember();
    void deletesAfterAsking();

private:
    /// Edits a member with this step and checks that every dialog came and went.
    bool Edits(int memberID, CDialogUser::Step const& step)
    {
        CDialogUser const user({step});
        bool const saved = m_doc->EditMember(memberID);
        [&] { QCOMPARE(user.Faults(), QStringList()); }();
        return saved;
    }

    std::unique_ptr<CTestCentre> m_centre;
    std::unique_ptr<CMessageRecorder> m_messages;
    CTestApp m_app;
    CTestViews m_views;
    std::unique_ptr<CCorvanaDoc> m_doc;
};

void MemberWorkflowTest::init()
{
    m_centre = std::make_unique<CTestCentre>();
    m_messages = std::make_unique<CMessageRecorder>();
    m_doc = std::make_unique<CCorvanaDoc>(m_app);
    m_views.m_lstTreeCalls.clear();
    m_doc->SetViews(&m_views);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 9));
    QVERIFY(m_doc->OnNewDocument());
    StoreSeven();
}

void MemberWorkflowTest::cleanup()
{
    m_doc.reset();
    m_messages.reset();
    m_centre.reset();
}

void MemberWorkflowTest::addsANewMember()
{
    CDialogUser const user(
        {EnterID(u"123"_s), [](QDialog& sheet) {
             QCOMPARE(sheet.windowTitle(), u"Member ID 123"_s);
             QStringList pages;
             for (int i = 0; i < Tabs(sheet).count(); ++i) {
                 pages += Tabs(sheet).tabText(i).remove(u'&');
             }
             QCOMPARE(pages.join(u'|'), u"Profile|Enrollment|Fitness Goals|Medical History"_s);
             QCOMPARE(Edit(sheet, "memberIDEdit").text(), u"123"_s);
             Type(Edit(sheet, "workoutNumEdit"), u"7"_s); // member 7's ID, but nobody's workout #
             Type(Edit(sheet, "firstNameEdit"), u"Zo\u00eb"_s);
             Type(Edit(sheet, "lastNameEdit"), u"O'Hara; DROP"_s);
             Tabs(sheet).setCurrentIndex(1);
             auto const boxes = sheet.findChildren<QComboBox*>(u"categoryList"_s);
             QCOMPARE(boxes.size(), 3);
             QCOMPARE(boxes[0]->currentText(), u"Staff"_s);
             QCOMPARE(boxes[1]->currentText(), QString());
             Tabs(sheet).setCurrentIndex(2);
             Child<QCheckBox>(*Tabs(sheet).currentWidget(), "loseWeightCheck").click();
             ClickOk(sheet);
         }});
    QVERIFY(m_doc->EditMember(0));
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(m_messages->Texts(), QStringList());
    auto const rows = Rows({u"members"_s, u"profiles"_s, u"classes"_s, u"messages"_s});
    QCOMPARE(rows[1], u"members: 123|7|Zo\u00eb||O'Hara; DROP|1"_s);
    QCOMPARE(rows[3],
        u"profiles: 123||||||||||0|0|%1|1|16|0"_s.arg(CEFOleDateTime(2026, 11, 6).Seconds()));
    QCOMPARE(rows[5], u"classes: 123|1|Staff|Wellness|Morning|1|0|0|0"_s);
    QCOMPARE(rows[7], u"messages: 123|"_s);
    QCOMPARE(m_views.m_lstTreeCalls, (QStringList{u"Remove 123"_s, u"Add 123"_s}));
}

void MemberWorkflowTest::okWithoutChangesKeepsEveryByte()
{
    // What another program may have stored: texts beyond their fields, odd flags and statuses.
    RunOnMembers("UPDATE members SET first_name = 'Bartholomew-James', status = 5");
    RunOnMembers("UPDATE profiles SET address = printf('%50s', char(10) || 'x'), employee = 3");
    RunOnMembers("UPDATE enrollments SET period = 77, enroll_date = 3990000001");
    RunOnMembers("UPDATE classes SET grade_status = 9, orientation = 4");
    auto const before = Rows();
    CDialogUser const user({ClickCancel, ClickCancel, EnterID(u"7"_s), [](QDialog& sheet) {
                                Type(Edit(sheet, "lastNameEdit"), u"Other"_s);
                                Tabs(sheet).setCurrentIndex(1);
                                ClickCancel(sheet);
                            }});
    QVERIFY(!m_doc->EditMember(0));
    m_doc->EditExistingMember();
    QVERIFY(!m_doc->EditMember(0));
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(Rows(), before);
    QCOMPARE(m_views.m_lstTreeCalls, QStringList());

    QVERIFY(Edits(7, [](QDialog& sheet) {
        QCOMPARE(Child<QPlainTextEdit>(sheet, "messageEdit").toPlainText(), u"Bring a towel"_s);
        for (int page = 0; page < 4; ++page) {
            Tabs(sheet).setCurrentIndex(page);
        }
        ClickOk(sheet);
    }));
    QCOMPARE(Rows(), before);
    QCOMPARE(m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -10 0"_s});
    QCOMPARE(m_views.m_lstResults.constLast(), u"Member ID 7 was saved."_s);
}

void MemberWorkflowTest::pagesSuitKeyboardReaderAndFont()
{
    auto const look = [](QDialog& sheet) {
        for (int page = 0; page < 4; ++page) {
            Tabs(sheet).setCurrentIndex(page);
            QCOMPARE(Tabs(sheet).currentIndex(), page);
            QCoreApplication::processEvents();
            QCOMPARE(FaultsOf(sheet), QStringList());
        }
        ClickOk(sheet);
    };
    QVERIFY(Edits(7, look));
    CLargeFont const large;
    QVERIFY(Edits(7, look));
}

void MemberWorkflowTest::savesWhatWasChangedOnEveryPage()
{
    auto expected = Rows();
    QVERIFY(Edits(7, [](QDialog& sheet) {
        Type(Edit(sheet, "memberIDEdit"), u"999999999"_s); // everything follows
        Type(Edit(sheet, "cityEdit"), u"Bend"_s);
        Type(Child<QPlainTextEdit>(sheet, "messageEdit"), u"Hi"_s);
        Child<QAbstractButton>(sheet, "pastRadio").click();
        Tabs(sheet).setCurrentIndex(1);
        Child<QComboBox>(sheet, "periodList").setCurrentIndex(1);
        Tabs(sheet).setCurrentIndex(3);
        Child<QCheckBox>(*Tabs(sheet).currentWidget(), "strokeCheck").click();
        ClickOk(sheet);
    }));
    expected.replaceInStrings(u": 7|"_s, u": 999999999|"_s);
    expected[0].replace(u"Archer|1"_s, u"Archer|0"_s);
    expected[1].replace(u"Salem"_s, u"Bend"_s);
    // The bit without a box is kept.
    expected[1].replace(QString::number(0x80000001U), QString::number(0x80001001U));
    expected[2].replace(u"|3|1"_s, u"|1|1"_s);
    expected[4].replace(u"Bring a towel"_s, u"Hi"_s);
    QCOMPARE(Rows(), expected);
    QCOMPARE(m_views.m_lstTreeCalls, QStringList{u"Refresh 999999999 -10 7"_s});
}

void MemberWorkflowTest::aMemberWithoutClassesShowsNobodyElses()
{
    AddMember(8);
    QVERIFY(Edits(7, ClickOk)); // leaves member 7 in the sets
    QVERIFY(!Edits(8, [](QDialog& sheet) {
        QCOMPARE(Edit(sheet, "addressEdit").text(), QString());
        Tabs(sheet).setCurrentIndex(1);
        QCOMPARE(Child<QComboBox>(sheet, "categoryList").currentText(), QString());
        Tabs(sheet).setCurrentIndex(0);
        QCOMPARE(Tabs(sheet).currentIndex(), 1); // a member must have a class
        ClickCancel(sheet);
    }));
    // With the enrolment left alone the missing rows are made, and no class.
    QVERIFY(Edits(8, ClickOk));
    QCOMPARE(Rows({u"classes"_s}).size(), 1);
    QCOMPARE(Rows({u"messages"_s})[1], u"messages: 8|"_s);
    QCOMPARE(Rows({u"profiles"_s})[1], u"profiles: 8||||||||||0|0|0|0|0|0"_s);
}

void MemberWorkflowTest::aClassDeletedInTheFormIsNoConflict()
{
    auto const deleteFirst = [](QDialog& sheet) {
        Tabs(sheet).setCurrentIndex(1);
        Child<QAbstractButton>(sheet, "deleteButton").click();
    };
    m_messages->AnswerNext({true, false}); // delete it, keep its records
    QVERIFY(Edits(7, [&](QDialog& sheet) {
        deleteFirst(sheet);
        auto& category = Child<QComboBox>(sheet, "categoryList");
        category.setFocus();
        QTest::keyClicks(&category, u"Students"_s);
        ClickOk(sheet);
    }));
    QCOMPARE(m_messages->Texts().size(), 2);
    QCOMPARE(Rows({u"classes"_s}), QStringList{u"classes: 7|4|Students|PE 101||1|0|0|0"_s});
    QVERIFY(Rows({u"workouts"_s})[0].startsWith(u"workouts: 7|1|99|"_s));

    // Cancel does not bring a deleted class back.
    m_messages->AnswerNext({true, true});
    QVERIFY(!Edits(7, [&](QDialog& sheet) {
        deleteFirst(sheet);
        ClickCancel(sheet);
    }));
    QCOMPARE(Rows({u"classes"_s}), QStringList());
}

void MemberWorkflowTest::anotherDesksChangesAreNotOverwritten()
{
    auto const replace
        = u"This member has been changed at another place\nsince you opened the form.\n"
          "Do you want to replace those changes with yours?"_s;
    auto const addAgain
        = u"This member has been deleted at another place\nsince you opened the form.\n"
          "Do you want to add the member again?"_s;
    auto expected = Rows();
    expected[1].replace(u"Salem"_s, u"Bend"_s);
    for (auto const& [sql, question] :
        {std::pair("UPDATE members SET last_name = 'Baker'", replace),
            {"UPDATE profiles SET phone = '1'", replace},
            {"UPDATE enrollments SET expire_date = 5", replace},
            {"UPDATE classes SET grade_status = 3", replace}, {"DELETE FROM classes", replace},
            {"UPDATE messages SET message = 'Call home'", replace},
            {"DELETE FROM members", addAgain}}) {
        m_messages = nullptr;
        m_messages = std::make_unique<CMessageRecorder>();
        m_messages->AnswerNext({false, true});
        m_views.m_lstTreeCalls.clear();
        QVERIFY(Edits(7, [&](QDialog& sheet) {
            Type(Edit(sheet, "cityEdit"), u"Bend"_s);
            RunOnMembers(sql);
            auto const theirs = Rows();
            ClickOk(sheet);
            QVERIFY(sheet.isVisible());
            QCOMPARE(Edit(sheet, "cityEdit").text(), u"Bend"_s);
            QCOMPARE(Rows(), theirs);
            ClickOk(sheet); // asks again, and this time the user says yes
        }));
        QCOMPARE(m_messages->Texts(), QStringList(2, question));
        QCOMPARE(
            m_messages->Messages()[0].m_question == CQuestion::destroying, question == replace);
        if (question == addAgain) {
            expected.removeLast(); // what the form did not show has gone
            expected[1].replace(QString::number(0x80000003U), u"3"_s);
            expected[1].replace(QString::number(0x80000001U), u"1"_s);
        }
        QCOMPARE(Rows(), expected);
    }
    QCOMPARE(m_views.m_lstTreeCalls, (QStringList{u"Remove 7"_s, u"Add 7"_s}));
}

void MemberWorkflowTest::aMessageShownMeanwhileStaysShown()
{
    for (auto const* const sql : {"DELETE FROM messages", "UPDATE messages SET message = ''"}) {
        RunOnMembers("UPDATE messages SET message = 'Bring a towel'");
        QVERIFY(Edits(7, [&](QDialog& sheet) {
            RunOnMembers(sql);
            ClickOk(sheet);
        }));
        QCOMPARE(Rows({u"messages"_s}), QStringList{u"messages: 7|"_s});
    }
    QCOMPARE(m_messages->Texts(), QStringList());
}

void MemberWorkflowTest::aNumberTakenMeanwhileIsRefused()
{
    for (auto const& [id, others, taken, field, row] :
        {std::tuple(
             30, "30, 31", u"Member ID 30"_s, "memberIDEdit", u"members: 66|80|Zoe||Hart|1"_s),
            {7, "40, 57", u"Workout ID 57"_s, "workoutNumEdit", u"members: 7|66|Zoe|B|Hart|1"_s}}) {
        QVERIFY(Edits(id, [&](QDialog& sheet) {
            Type(Edit(sheet, "workoutNumEdit"), QString::number(50 + id));
            Type(Edit(sheet, "firstNameEdit"), u"Zoe"_s);
            Type(Edit(sheet, "lastNameEdit"), u"Hart"_s);
            Tabs(sheet).setCurrentIndex(2);
            RunOnMembers(
                std::string("INSERT INTO members VALUES (NULL, ") + others + ", 'A', '', 'B', 1)");
            auto const before = Rows();
            ClickOk(sheet);
            QCOMPARE(m_messages->Texts().constLast(),
                u"Error: %1 is already\nin use for an existing member"_s.arg(taken));
            QCOMPARE(Tabs(sheet).currentIndex(), 0);
            QCOMPARE(sheet.focusWidget(), &Edit(sheet, field)); // the wait window has gone again
            QCOMPARE(Rows(), before);
            Type(Edit(sheet, field), u"66"_s);
            ClickOk(sheet);
        }));
        QVERIFY(Rows().contains(row));
    }
}

void MemberWorkflowTest::aFailedSaveKeepsTheFormAndTheMember()
{
    auto const before = Rows();
    int failures = 0;
    QVERIFY(Edits(7, [&](QDialog& sheet) {
        Type(Edit(sheet, "memberIDEdit"), u"70"_s);
        Type(Edit(sheet, "cityEdit"), u"Bend"_s);
        // The disk is full from the n-th write on, until there is room for the whole save.
        for (int nth = 1; sheet.isVisible() && nth < 100; ++nth) {
            Faults::Begin(nth, ENOSPC, true);
            ClickOk(sheet);
            bool const hit = Faults::End();
            if (sheet.isVisible()) {
                QVERIFY(hit);
                ++failures;
                QCOMPARE(Edit(sheet, "cityEdit").text(), u"Bend"_s);
                QCOMPARE(Rows(), before);
            }
        }
    }));
    QVERIFY(failures > 0);
    QCOMPARE(m_messages->Texts(),
        QStringList(
            failures, u"Error: the member was not saved.\nYour entries are still in the form."_s));
    QVERIFY(!m_messages->Messages()[0].m_strDetail.isEmpty());
    QVERIFY(Rows({u"workouts"_s})[0].startsWith(u"workouts: 70|"_s));

    // A member who cannot be read is not taken for a new one.
    RunOnMembers("ALTER TABLE enrollments RENAME TO away");
    CDialogUser const user({});
    QVERIFY(!m_doc->EditMember(70));
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(m_messages->Texts().constLast(), u"Error: member ID 70 could not be read."_s);
}

void MemberWorkflowTest::deletesAfterAsking()
{
    auto const before = Rows();
    auto const fields = [](QDialog& dialog) {
        QStringList texts;
        for (auto const* const name : {"memberEdit", "idEdit", "statusEdit", "expirationEdit"}) {
            texts += Edit(dialog, name).text();
        }
        return texts.join(u'|');
    };
    auto const stored = ToQt(CEFOleDateTime::FromSeconds(4020000000).DateStrLongYear());
    CDialogUser const user({EnterID(u"7"_s),
        [&](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), u"Delete Member -  Confirmation"_s);
            QCOMPARE(fields(dialog), u"Ann B Archer|7|Current|"_s + stored);
            QCOMPARE(FaultsOf(dialog), QStringList());
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); // deletes nobody by accident
        },
        [&](QDialog& dialog) {
            QCOMPARE(fields(dialog), u"Ann Archer|7|Past|01/02/2003"_s);
            RunOnMembers("DELETE FROM members"); // another desk was faster
            ClickOk(dialog);
        },
        ClickOk});
    QVERIFY(!m_doc->DeleteMember(0, {}));
    QCOMPARE(Rows(), before);
    QCOMPARE(m_views.m_lstTreeCalls, QStringList());
    RunOnMembers("UPDATE members SET middle_initial = '', status = 0");
    QVERIFY(m_doc->DeleteMember(7, u"01/02/2003"_s));
    StoreSeven();
    QVERIFY(m_doc->DeleteMember(7, {}));
    QVERIFY(!m_doc->DeleteMember(8, {})); // nobody has the ID, and nothing is asked
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(Rows(), QStringList());
    QCOMPARE(m_messages->Texts(), QStringList());
    QCOMPARE(m_views.m_lstTreeCalls, QStringList(2, u"Remove 7"_s));
}

CORVANA_TEST(MemberWorkflowTest);
#include "MemberWorkflowTest.moc"
