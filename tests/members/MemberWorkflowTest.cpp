#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/platform/db/Faults.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QCheckBox>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace
{

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
    void addsANewMember();
    void okWithoutChangesKeepsEveryByte();
    void aMemberWithoutClassesShowsNobodyElses();
    void anotherDesksChangesAreNotOverwritten();
    void aNumberTakenMeanwhileIsRefused();
    void aFailedSaveKeepsTheFormAndTheMember();
    void deletesAfterAsking();
};

void MemberWorkflowTest::addsANewMember()
{
    CMemberDesk desk;
    auto const fill = [](QDialog& sheet) {
        QCOMPARE(sheet.windowTitle(), u"Member ID 123"_s);
        Type(Edit(sheet, "workoutNumEdit"), u"7"_s); // member 7's ID, but nobody's workout #
        Type(Edit(sheet, "firstNameEdit"), u"Zo\u00eb"_s);
        Type(Edit(sheet, "lastNameEdit"), u"O'Hara; DROP"_s);
        ShowPage(sheet, 1);
        Child<QCheckBox>(ShowPage(sheet, 2), "loseWeightCheck").click();
        ClickOk(sheet);
    };
    QVERIFY(desk.Use({EnterID(u"123"_s), fill}, [&] { return desk.m_doc.EditMember(0); }));
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    auto const today = QString::number(CEFOleDateTime(2026, 11, 6).Seconds());
    QCOMPARE(
        desk.Rows({u"members"_s, u"profiles"_s, u"classes"_s, u"messages"_s}).filter(u": 123|"_s),
        (QStringList{u"members: 123|7|Zo\u00c3\u00ab||O'Hara; DROP|1"_s,
            u"profiles: 123||||||||||0|0|%1|1|16|0"_s.arg(today),
            u"classes: 123|1|Staff|Wellness|Morning|1|0|0|0"_s, u"messages: 123|"_s}));
    QCOMPARE(desk.m_views.m_lstTreeCalls, (QStringList{u"Remove 123"_s, u"Add 123"_s}));
}

void MemberWorkflowTest::okWithoutChangesKeepsEveryByte()
{
    CMemberDesk desk;
    // What another program may have stored: what no field can show, odd flags and statuses.
    RunOnMembers("UPDATE members SET first_name = 'Bartholomew-James', status = 5,"
                 " middle_initial = CAST(x'c384cc81' AS TEXT)");
    RunOnMembers("UPDATE profiles SET address = printf('%50s', char(10) || 'x'), employee = 3,"
                 " phone = CAST(x'35ff' AS TEXT), birthday = "
        + std::to_string(CEFOleDateTime::GetCurrentTime().Seconds())); // the latest there may be
    RunOnMembers("UPDATE enrollments SET period = 77, enroll_date = 3990000001");
    RunOnMembers("UPDATE classes SET grade_status = 9, orientation = 4");
    auto before = desk.Rows();
    auto const cancel = [](QDialog& sheet) {
        Type(Edit(sheet, "lastNameEdit"), u"Other"_s);
        ShowPage(sheet, 1);
        ClickCancel(sheet);
    };
    QVERIFY(!desk.Use({ClickCancel}, [&] { return desk.m_doc.EditMember(0); }));
    desk.Use({ClickCancel}, [&] { return desk.m_doc.EditExistingMember(), true; });
    QVERIFY(!desk.Use({EnterID(u"7"_s), cancel}, [&] { return desk.m_doc.EditMember(0); }));
    QCOMPARE(desk.Rows(), before);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList());

    auto const look = [](QDialog& sheet) {
        for (int page = 0; page < 4; ++page) {
            ShowPage(sheet, page);
            QCOMPARE(Tabs(sheet).currentIndex(), page);
            QCoreApplication::processEvents();
            QCOMPARE(FaultsOf(sheet), QStringList());
        }
        ClickOk(sheet);
    };
    QVERIFY(desk.Edit(7, look));
    QCOMPARE(desk.Rows(), before);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -10 0"_s});
    QCOMPARE(desk.m_views.m_lstResults, QStringList{u"Member ID 7 was saved."_s});

    auto const none = std::to_string(CEFOleDateTime::Invalid().Seconds());
    RunOnMembers("UPDATE profiles SET birthday = " + none);
    RunOnMembers("UPDATE enrollments SET expire_date = " + none);
    before = desk.Rows();
    CLargeFont const large;
    QVERIFY(desk.Edit(7, look));
    QCOMPARE(desk.Rows(), before);
}

void MemberWorkflowTest::aMemberWithoutClassesShowsNobodyElses()
{
    CMemberDesk desk;
    AddMember(8);
    QVERIFY(desk.Edit(7, ClickOk)); // leaves member 7 in the sets
    QVERIFY(!desk.Edit(8, [](QDialog& sheet) {
        QCOMPARE(Edit(sheet, "addressEdit").text(), QString());
        ShowPage(sheet, 1);
        QCOMPARE(Child<QComboBox>(sheet, "categoryList").currentText(), QString());
        ShowPage(sheet, 0);
        QCOMPARE(Tabs(sheet).currentIndex(), 1); // a member must have a class
        ClickCancel(sheet);
    }));
    // With the enrolment left alone the missing rows are made, and no class.
    QVERIFY(desk.Edit(8, ClickOk));
    QCOMPARE(desk.Rows({u"classes"_s}).size(), 1);
    QCOMPARE(desk.Rows({u"messages"_s})[1], u"messages: 8|"_s);
    QCOMPARE(desk.Rows({u"profiles"_s})[1], u"profiles: 8||||||||||0|0|0|0|0|0"_s);
}

void MemberWorkflowTest::anotherDesksChangesAreNotOverwritten()
{
    CMemberDesk desk;
    AddClass(7, 5, "'Students', 'PE 101', ''");
    auto const question = u"This member has been %1 at another place\nsince you opened the form.\n"
                          "Do you want to %2?"_s;
    auto const replace = question.arg(u"changed"_s, u"replace those changes with yours"_s);
    auto const addAgain = question.arg(u"deleted"_s, u"add the member again"_s);
    auto expected = desk.Rows();
    // A message that was shown meanwhile is no change to ask about, and stays shown.
    for (auto const* const shown : {"DELETE FROM messages", "UPDATE messages SET message = ''"}) {
        QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
            RunOnMembers(shown);
            ClickOk(sheet);
        }));
        QCOMPARE(desk.Rows({u"messages"_s}), QStringList{u"messages: 7|"_s});
        RunOnMembers("UPDATE messages SET message = 'Bring a towel'");
    }
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    desk.m_views.m_lstTreeCalls.clear();
    expected[1].replace(u"Salem"_s, u"Bend"_s);
    for (auto const& [sql, asked] : {std::pair("UPDATE members SET last_name = 'Baker'", replace),
             {"UPDATE profiles SET phone = '1'", replace},
             {"UPDATE enrollments SET expire_date = 5", replace},
             {"UPDATE classes SET grade_status = 3 WHERE class_index = 5", replace},
             {"DELETE FROM classes", replace},
             {"UPDATE messages SET message = 'Call home'", replace},
             {"DELETE FROM members", addAgain}}) {
        desk.m_messages.AnswerNext({false, true});
        QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
            Type(Edit(sheet, "cityEdit"), u"Bend"_s);
            RunOnMembers(sql);
            auto const theirs = desk.Rows();
            QCOMPARE(desk.Ok(sheet), asked + u" @cityEdit"_s);
            QCOMPARE(Edit(sheet, "cityEdit").text(), u"Bend"_s);
            QCOMPARE(desk.Rows(), theirs);
            QCOMPARE(desk.Ok(sheet), QString()); // asks again, and this time the user says yes
        }));
        auto const& last = desk.m_messages.Messages().constLast();
        QCOMPARE(last.m_question == CQuestion::destroying, asked == replace);
        if (asked == addAgain) {
            expected.removeLast(); // what the form did not show has gone
            expected[1].replace(QString::number(0x80000003U), u"3"_s);
            expected[1].replace(QString::number(0x80000001U), u"1"_s);
        }
        QCOMPARE(desk.Rows(), expected);
    }
    QCOMPARE(desk.m_messages.Messages().size(), 14);
    QCOMPARE(desk.m_views.m_lstTreeCalls.sliced(6), (QStringList{u"Remove 7"_s, u"Add 7"_s}));
}

void MemberWorkflowTest::aNumberTakenMeanwhileIsRefused()
{
    CMemberDesk desk;
    for (auto const& [id, others, taken, field, row] :
        {std::tuple(
             30, "30, 31", u"Member ID 30"_s, "memberIDEdit", u"members: 66|80|Zoe||Hart|1"_s),
            {7, "40, 57", u"Workout ID 57"_s, "workoutNumEdit", u"members: 7|66|Zoe|B|Hart|1"_s}}) {
        QVERIFY(desk.Edit(id, [&](QDialog& sheet) {
            Type(Edit(sheet, "workoutNumEdit"), QString::number(50 + id));
            Type(Edit(sheet, "firstNameEdit"), u"Zoe"_s);
            Type(Edit(sheet, "lastNameEdit"), u"Hart"_s);
            ShowPage(sheet, 2);
            RunOnMembers(
                std::string("INSERT INTO members VALUES (NULL, ") + others + ", 'A', '', 'B', 1)");
            auto const before = desk.Rows();
            QCOMPARE(desk.Ok(sheet),
                u"Error: %1 is already\nin use for an existing member @%2"_s.arg(
                    taken, QLatin1StringView(field)));
            QCOMPARE(Tabs(sheet).currentIndex(), 0);
            QCOMPARE(desk.Rows(), before);
            Type(Edit(sheet, field), u"66"_s);
            ClickOk(sheet);
        }));
        QVERIFY(desk.Rows().contains(row));
    }
}

void MemberWorkflowTest::aFailedSaveKeepsTheFormAndTheMember()
{
    CMemberDesk desk;
    auto const before = desk.Rows();
    int failures = 0;
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        Type(Edit(sheet, "memberIDEdit"), u"70"_s);
        Type(Edit(sheet, "cityEdit"), u"Bend"_s);
        // The disk is full from the n-th write on, until there is room for the whole save.
        for (int nth = 1; sheet.isVisible() && nth < 100; ++nth) {
            Faults::Begin(nth, ENOSPC, true);
            auto const refusal = desk.Ok(sheet);
            bool const hit = Faults::End();
            if (!refusal.isEmpty()) {
                QVERIFY(hit);
                ++failures;
                QCOMPARE(refusal,
                    u"Error: the member was not saved.\n"
                    "Your entries are still in the form. @cityEdit"_s);
                QCOMPARE(Edit(sheet, "cityEdit").text(), u"Bend"_s);
                QCOMPARE(desk.Rows(), before);
            }
        }
    }));
    QVERIFY(failures > 0);
    QVERIFY(!desk.m_messages.Messages()[0].m_strDetail.isEmpty());
    QVERIFY(desk.Rows({u"workouts"_s})[0].startsWith(u"workouts: 70|"_s));

    // A member who cannot be read is not taken for a new one.
    RunOnMembers("ALTER TABLE enrollments RENAME TO away");
    QVERIFY(!desk.Use({}, [&] { return desk.m_doc.EditMember(70); }));
    QCOMPARE(desk.m_messages.Texts().constLast(), u"Error: member ID 70 could not be read."_s);
}

void MemberWorkflowTest::deletesAfterAsking()
{
    CMemberDesk desk;
    auto const before = desk.Rows();
    auto const fields = [](QDialog& dialog) {
        QStringList texts;
        for (auto const* const field : dialog.findChildren<QLineEdit*>()) {
            texts += field->text();
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
    QVERIFY(!desk.m_doc.DeleteMember(0, {}));
    QCOMPARE(desk.Rows(), before);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList());
    RunOnMembers("UPDATE members SET middle_initial = '', status = 0");
    QVERIFY(desk.m_doc.DeleteMember(7, u"01/02/2003"_s));
    desk.StoreSeven();
    QVERIFY(desk.m_doc.DeleteMember(7, {}));
    QVERIFY(!desk.m_doc.DeleteMember(8, {})); // nobody has the ID, and nothing is asked
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(desk.Rows(), QStringList());
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList(2, u"Remove 7"_s));
}

static CTestEntryOf<MemberWorkflowTest> const g_entry;
#include "MemberWorkflowTest.moc"
