#include "doc/CorvanaDoc.h"

#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/platform/db/Faults.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace
{

/// All rows of a member file, one line each.
QStringList Rows(QStringList const& tables
    = {u"members"_s, u"profiles"_s, u"enrollments"_s, u"classes"_s, u"messages"_s, u"workouts"_s})
{
    QStringList lines;
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
    for (auto const& table : tables) {
        CRowBlock rows;
        if (!database->Query(FromQt(u"SELECT * FROM %1 ORDER BY id"_s.arg(table)), {}, rows)) {
            qFatal("no table %s", qPrintable(table));
        }
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            QStringList cells;
            for (std::size_t i = 1; i < rows.Columns(); ++i) { // without the key
                auto const& cell = rows.Row(row).Cell(i);
                cells += cell.type == CCell::text ? ToQt(rows.Row(row).Text(cell))
                                                  : QString::number(cell.integerValue);
            }
            lines += table + u": "_s + cells.join(u'|');
        }
    }
    return lines;
}

void RunOnMembers(QString const& sql)
{
    ::RunOnMembers(FromQt(sql));
}

void StoreMember(int id)
{
    RunOnMembers(u"INSERT INTO members (member_id, workout_number, first_name, middle_initial,"
                 " last_name, status) VALUES (%1, %1 + 1000, 'Ann', 'B', 'Archer', 1)"_s.arg(id));
    RunOnMembers(u"INSERT INTO profiles (member_id, address, city, state, zip, phone, email,"
                 " emergency_name, emergency_phone, physician, release, employee, birthday, sex,"
                 " goals, medical_history) VALUES (%1, '3 Elm', 'Salem', 'OR', '97301', '555-0100',"
                 " 'ann@example.org', 'Bo', '555-0101', 'Dr. Ray', 1, 0, 3000000000, 0,"
                 " 0x80000003, 0x80000001)"_s.arg(id));
    RunOnMembers(u"INSERT INTO enrollments (member_id, enroll_date, expire_date, period,"
                 " incentive) VALUES (%1, 3990000000, 4020000000, 3, 1)"_s.arg(id));
    AddClass(id, 4, "'Staff', 'Wellness', 'Morning'");
    RunOnMembers(
        u"INSERT INTO messages (member_id, message) VALUES (%1, 'Bring a towel')"_s.arg(id));
    RunOnMembers(
        u"INSERT INTO workouts (member_id, workout_ok, class_index, check_in, check_out,"
        " circuits, station1, station2, station3, station4, station5, station6, station7,"
        " station8, station9, station10, station11, station12) VALUES"
        " (%1, 1, 4, 4000000000, 4000003000, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12)"_s.arg(id));
}

QTabWidget& Tabs(QDialog const& sheet)
{
    return Child<QTabWidget>(sheet, "tabs");
}

QLineEdit& Edit(QDialog const& dialog, char const* name)
{
    return Child<QLineEdit>(dialog, name);
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
    void savesWhatWasChangedOnEveryPage();
    void aMemberWithoutClassesShowsNobodyElses();
    void aClassDeletedInTheFormIsNoConflict();
    void anotherDesksChangesAreNotOverwritten();
    void aDeletedMemberIsAddedAgainOnlyIfAsked();
    void aMessageShownMeanwhileStaysShown();
    void aNumberTakenMeanwhileIsRefused();
    void aFailedSaveKeepsTheFormAndTheMember();
    void anUnreadableMemberIsNotTakenForANewOne();
    void deletesAfterAsking();

private:
    /// Edits member 7 with these steps and checks that every dialog came and went.
    bool EditSeven(CDialogUser::Step const& step)
    {
        CDialogUser const user({step});
        bool const saved = m_doc->EditMember(7);
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
    m_views.m_lstResults.clear();
    m_doc->SetViews(&m_views);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 9));
    QVERIFY(m_doc->OnNewDocument());
    StoreMember(7);
}

void MemberWorkflowTest::cleanup()
{
    CEFOleDateTime::SetClock(std::nullopt);
    m_doc.reset();
    m_messages.reset();
    m_centre.reset();
}

void MemberWorkflowTest::addsANewMember()
{
    CDialogUser const user({[](QDialog& prompt) {
                                QCOMPARE(prompt.windowTitle(), u"Member ID"_s);
                                Type(Edit(prompt, "memberIDEdit"), u"123"_s);
                                ClickOk(prompt);
                            },
        [](QDialog& sheet) {
            QCOMPARE(sheet.windowTitle(), u"Member ID 123"_s);
            QStringList pages;
            for (int i = 0; i < Tabs(sheet).count(); ++i) {
                pages += Tabs(sheet).tabText(i).remove(u'&');
            }
            QCOMPARE(pages,
                (QStringList{
                    u"Profile"_s, u"Enrollment"_s, u"Fitness Goals"_s, u"Medical History"_s}));
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
    CDAOProf profile;
    QVERIFY(profile.FindProfile(123) != 0);
    QCOMPARE(profile.m_Goals, 0x10U);
    QVERIFY(profile.m_Birthday == CEFOleDateTime(2026, 11, 6));
    auto const rows = Rows({u"members"_s, u"classes"_s, u"messages"_s});
    QCOMPARE(rows[1], u"members: 123|7|Zo\u00eb||O'Hara; DROP|1"_s);
    QCOMPARE(rows[3], u"classes: 123|1|Staff|Wellness|Morning|1|0|0|0"_s);
    QCOMPARE(rows[5], u"messages: 123|"_s);
    QCOMPARE(m_views.m_lstTreeCalls, (QStringList{u"Remove 123"_s, u"Add 123"_s}));
}

void MemberWorkflowTest::okWithoutChangesKeepsEveryByte()
{
    // What another program may have stored: texts beyond their fields, odd flags and statuses.
    RunOnMembers(u"UPDATE members SET first_name = 'Bartholomew-James', status = 5"_s);
    RunOnMembers(u"UPDATE profiles SET address = printf('%50s', char(10) || 'x'), employee = 3"_s);
    RunOnMembers(u"UPDATE enrollments SET period = 77, enroll_date = 3990000001"_s);
    RunOnMembers(u"UPDATE classes SET grade_status = 9, orientation = 4"_s);
    auto const before = Rows();
    auto const cancel = [](QDialog& prompt) { ClickCancel(prompt); };
    CDialogUser const user({cancel, cancel,
        [](QDialog& prompt) {
            Type(Edit(prompt, "memberIDEdit"), u"7"_s);
            ClickOk(prompt);
        },
        [](QDialog& sheet) {
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

    QVERIFY(EditSeven([](QDialog& sheet) {
        QCOMPARE(Child<QPlainTextEdit>(sheet, "messageEdit").toPlainText(), u"Bring a towel"_s);
        for (int page = 0; page < 4; ++page) {
            Tabs(sheet).setCurrentIndex(page);
            QCOMPARE(Tabs(sheet).currentIndex(), page);
        }
        ClickOk(sheet);
    }));
    QCOMPARE(Rows(), before);
    QCOMPARE(m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -10 0"_s});
    QCOMPARE(m_views.m_lstResults, QStringList{u"Member ID 7 was saved."_s});
}

void MemberWorkflowTest::savesWhatWasChangedOnEveryPage()
{
    auto const workout = Rows({u"workouts"_s})[0];
    QVERIFY(EditSeven([](QDialog& sheet) {
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
    auto const rows = Rows();
    auto const id = u"999999999|"_s;
    QCOMPARE(rows[0], u"members: "_s + id + u"1007|Ann|B|Archer|0"_s);
    QVERIFY2(rows[1].contains(u"|Bend|OR|"_s), qPrintable(rows[1]));
    // The bits without a box are kept.
    QVERIFY2(rows[1].endsWith(u"|%1|%2"_s.arg(0x80000003U).arg(0x80001001U)), qPrintable(rows[1]));
    QCOMPARE(rows[2], u"enrollments: "_s + id + u"3990000000|4020000000|1|1"_s);
    QCOMPARE(rows[3], u"classes: "_s + id + u"4|Staff|Wellness|Morning|1|1|2|3"_s);
    QCOMPARE(rows[4], u"messages: "_s + id + u"Hi"_s);
    QCOMPARE(rows[5], QString(workout).replace(u": 7|"_s, u": "_s + id));
    QCOMPARE(m_views.m_lstTreeCalls, QStringList{u"Refresh 999999999 -10 7"_s});
}

void MemberWorkflowTest::aMemberWithoutClassesShowsNobodyElses()
{
    StoreMember(8);
    RunOnMembers(u"DELETE FROM classes WHERE member_id = 8"_s);
    RunOnMembers(u"DELETE FROM profiles WHERE member_id = 8"_s);
    RunOnMembers(u"DELETE FROM messages WHERE member_id = 8"_s);
    QVERIFY(EditSeven([](QDialog& sheet) { ClickOk(sheet); })); // leaves member 7 in the sets
    auto const editEight = [this](CDialogUser::Step const& step) {
        CDialogUser const user({step});
        return m_doc->EditMember(8) && user.Faults().isEmpty();
    };
    editEight([](QDialog& sheet) {
        QCOMPARE(Edit(sheet, "addressEdit").text(), QString());
        Tabs(sheet).setCurrentIndex(1);
        QCOMPARE(Child<QComboBox>(sheet, "categoryList").currentText(), QString());
        Tabs(sheet).setCurrentIndex(0);
        QCOMPARE(Tabs(sheet).currentIndex(), 1); // a member must have a class
        ClickCancel(sheet);
    });
    // With the enrolment left alone the missing rows are made, and no class.
    QVERIFY(editEight([](QDialog& sheet) { ClickOk(sheet); }));
    QCOMPARE(Rows({u"classes"_s}).size(), 1);
    QCOMPARE(Rows({u"messages"_s}).constLast(), u"messages: 8|"_s);
    CDAOProf profile;
    QVERIFY(profile.FindProfile(8) != 0);
    QCOMPARE(profile.m_Address, std::string());
    QCOMPARE(profile.m_Goals, 0U);
}

void MemberWorkflowTest::aClassDeletedInTheFormIsNoConflict()
{
    m_messages->AnswerNext({true, false}); // delete it, keep its records
    QVERIFY(EditSeven([](QDialog& sheet) {
        Tabs(sheet).setCurrentIndex(1);
        Child<QAbstractButton>(sheet, "deleteButton").click();
        auto& category = Child<QComboBox>(sheet, "categoryList");
        category.setFocus();
        QTest::keyClicks(&category, u"Students"_s);
        QCOMPARE(category.currentText(), u"Students"_s);
        ClickOk(sheet);
    }));
    QCOMPARE(m_messages->Texts().size(), 2);
    QCOMPARE(Rows({u"classes"_s}), QStringList{u"classes: 7|4|Students|PE 101||1|0|0|0"_s});
    QVERIFY(Rows({u"workouts"_s})[0].startsWith(u"workouts: 7|1|99|"_s));

    // Cancel does not bring a deleted class back.
    m_messages->AnswerNext({true, true});
    QVERIFY(!EditSeven([](QDialog& sheet) {
        Tabs(sheet).setCurrentIndex(1);
        Child<QAbstractButton>(sheet, "deleteButton").click();
        ClickCancel(sheet);
    }));
    QCOMPARE(Rows({u"classes"_s}), QStringList());
}

void MemberWorkflowTest::anotherDesksChangesAreNotOverwritten()
{
    auto const question
        = u"This member has been changed at another place\nsince you opened the form.\n"
          "Do you want to replace those changes with yours?"_s;
    int number = 0;
    for (auto const& sql :
        {u"UPDATE members SET last_name = 'Baker'"_s, u"UPDATE profiles SET phone = '1'"_s,
            u"UPDATE enrollments SET expire_date = 5"_s, u"UPDATE classes SET grade_status = 3"_s,
            u"DELETE FROM classes"_s, u"UPDATE messages SET message = 'Call home'"_s}) {
        auto const before = Rows();
        auto const city = u"Bend %1"_s.arg(++number);
        m_messages->AnswerNext({false, true});
        QVERIFY(EditSeven([&](QDialog& sheet) {
            Type(Edit(sheet, "cityEdit"), city);
            RunOnMembers(sql);
            auto const theirs = Rows();
            ClickOk(sheet);
            QVERIFY(sheet.isVisible());
            QCOMPARE(Edit(sheet, "cityEdit").text(), city);
            QCOMPARE(Rows(), theirs);
            ClickOk(sheet); // asks again, and this time the user says yes
        }));
        QCOMPARE(m_messages->Texts(), QStringList(2 * number, question));
        QVERIFY(m_messages->Messages().constLast().m_question == CQuestion::destroying);
        auto expected = before;
        expected[1].replace(u"|%1|OR"_s.arg(number > 1 ? u"Bend %1"_s.arg(number - 1) : u"Salem"_s),
            u"|%1|OR"_s.arg(city));
        QCOMPARE(Rows(), expected);
    }
}

void MemberWorkflowTest::aDeletedMemberIsAddedAgainOnlyIfAsked()
{
    m_messages->AnswerNext({false, true});
    QVERIFY(EditSeven([&](QDialog& sheet) {
        RunOnMembers(u"DELETE FROM members"_s);
        ClickOk(sheet);
        QVERIFY(sheet.isVisible());
        QCOMPARE(Rows(), QStringList());
        ClickOk(sheet);
    }));
    QCOMPARE(m_messages->Texts().constLast(),
        u"This member has been deleted at another place\nsince you opened the form.\n"
        "Do you want to add the member again?"_s);
    QCOMPARE(Rows({u"members"_s}), QStringList{u"members: 7|1007|Ann|B|Archer|1"_s});
    QCOMPARE(m_views.m_lstTreeCalls, (QStringList{u"Remove 7"_s, u"Add 7"_s}));
}

void MemberWorkflowTest::aMessageShownMeanwhileStaysShown()
{
    for (auto const& sql : {u"DELETE FROM messages"_s, u"UPDATE messages SET message = ''"_s}) {
        RunOnMembers(u"UPDATE messages SET message = 'Bring a towel'"_s);
        QVERIFY(EditSeven([&](QDialog& sheet) {
            RunOnMembers(sql);
            ClickOk(sheet);
        }));
        QCOMPARE(Rows({u"messages"_s}), QStringList{u"messages: 7|"_s});
    }
    QCOMPARE(m_messages->Texts(), QStringList());
}

void MemberWorkflowTest::aNumberTakenMeanwhileIsRefused()
{
    auto const use
        = [&](int memberID, QString const& sql, QString const& message, char const* field) {
              CDialogUser const user({[&](QDialog& sheet) {
                  Type(Edit(sheet, "workoutNumEdit"), u"55"_s);
                  Type(Edit(sheet, "firstNameEdit"), u"Zoe"_s);
                  Type(Edit(sheet, "lastNameEdit"), u"Hart"_s);
                  Tabs(sheet).setCurrentIndex(2);
                  RunOnMembers(sql);
                  auto const before = Rows();
                  ClickOk(sheet);
                  QCOMPARE(m_messages->Texts().constLast(), message);
                  QCOMPARE(Tabs(sheet).currentIndex(), 0);
                  QCOMPARE(sheet.focusWidget(),
                      &Edit(sheet, field)); // active again when the wait window has gone
                  QCOMPARE(Rows(), before);
                  Type(Edit(sheet, field), u"66"_s);
                  ClickOk(sheet);
              }});
              QVERIFY(m_doc->EditMember(memberID));
              QCOMPARE(user.Faults(), QStringList());
          };
    auto const add = u"INSERT INTO members (member_id, workout_number, first_name, middle_initial,"
                     " last_name, status) VALUES (%1, %2, 'A', '', 'B', 1)"_s;
    use(30, add.arg(30).arg(31), u"Error: Member ID 30 is already\nin use for an existing member"_s,
        "memberIDEdit");
    QVERIFY(Rows({u"members"_s}).contains(u"members: 66|55|Zoe||Hart|1"_s));
    RunOnMembers(u"DELETE FROM members WHERE member_id = 66"_s);
    use(7, add.arg(40).arg(55), u"Error: Workout ID 55 is already\nin use for an existing member"_s,
        "workoutNumEdit");
    QVERIFY(Rows({u"members"_s}).contains(u"members: 7|66|Zoe|B|Hart|1"_s));
}

void MemberWorkflowTest::aFailedSaveKeepsTheFormAndTheMember()
{
    auto const before = Rows();
    int failures = 0;
    QVERIFY(EditSeven([&](QDialog& sheet) {
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
    QCOMPARE(m_messages->Messages().size(), failures);
    for (auto const& message : m_messages->Messages()) {
        QCOMPARE(message.m_strText,
            u"Error: the member was not saved.\nYour entries are still in the form."_s);
        QVERIFY(!message.m_strDetail.isEmpty());
    }
    QVERIFY(Rows({u"workouts"_s})[0].startsWith(u"workouts: 70|"_s));
}

void MemberWorkflowTest::anUnreadableMemberIsNotTakenForANewOne()
{
    RunOnMembers(u"ALTER TABLE enrollments RENAME TO away"_s);
    CDialogUser const user({});
    QVERIFY(!m_doc->EditMember(7));
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(m_messages->Texts(), QStringList{u"Error: member ID 7 could not be read."_s});
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
    CDialogUser const user({[](QDialog& prompt) {
                                Type(Edit(prompt, "memberIDEdit"), u"7"_s);
                                ClickOk(prompt);
                            },
        [&](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), u"Delete Member -  Confirmation"_s);
            QCOMPARE(fields(dialog), u"Ann B Archer|7|Current|"_s + stored);
            QCOMPARE(FaultsOf(dialog).join(u"; "_s), QString());
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); // deletes nobody by accident
        },
        [&](QDialog& dialog) {
            QCOMPARE(fields(dialog), u"Ann Archer|7|Past|01/02/2003"_s);
            RunOnMembers(u"DELETE FROM members"_s); // another desk was faster
            ClickOk(dialog);
        },
        [&](QDialog& dialog) { ClickOk(dialog); }});
    QVERIFY(!m_doc->DeleteMember(0, {}));
    QCOMPARE(Rows(), before);
    QCOMPARE(m_views.m_lstTreeCalls, QStringList());
    RunOnMembers(u"UPDATE members SET middle_initial = '', status = 0"_s);
    QVERIFY(m_doc->DeleteMember(7, u"01/02/2003"_s));
    StoreMember(7);
    QVERIFY(m_doc->DeleteMember(7, {}));
    QVERIFY(!m_doc->DeleteMember(8, {})); // nobody has the ID, and nothing is asked
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(Rows(), QStringList());
    QCOMPARE(m_messages->Texts(), QStringList());
    QCOMPARE(m_views.m_lstTreeCalls, (QStringList{u"Remove 7"_s, u"Remove 7"_s}));
}

CORVANA_TEST(MemberWorkflowTest);
#include "MemberWorkflowTest.moc"
