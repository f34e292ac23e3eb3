#include "tests/QtTests.h"
#include "tests/members/RecordDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

using namespace Qt::StringLiterals;

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
    CTestCentre::Run("UPDATE defaults SET grade_status = 2, re_eval_bonuses = 3, other_bonuses = 4,"
                     " flags = 0x20");
    desk.m_doc.OnNewDocument();
    desk.Edit(7, ClickOk); // leaves what is not of the new one in the sets
    desk.m_views.m_lstTreeCalls.clear();
    CEFOleDateTime::SetClock(CEFOleDateTime(2027, 1, 31, 12, 0, 0));
    auto const fill = [](QDialog& sheet) {
        QCOMPARE(sheet.windowTitle(), u"Member ID 123"_s);
        // Member 7's ID, but nobody's workout #.
        Do(sheet,
            u"workoutNumEdit=7 firstNameEdit=Zo\u00eb lastNameEdit=O'Hara;DROP "
            "@1 @2 loseWeightCheck OK"_s);
    };
    QVERIFY(desk.Use(
        {Steps(u"memberIDEdit=123 OK"_s), fill}, [&desk] { return desk.m_doc.EditMember(0); }));
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    auto const today = CEFOleDateTime(2027, 1, 31).Seconds();
    auto const expires = CEFOleDateTime(2027, 2, 28).Seconds();
    QCOMPARE(desk.Rows().filter(u": 123|"_s),
        (QStringList{u"members: 123|7|Zo\u00c3\u00ab||O'Hara;DROP|1"_s,
            u"profiles: 123||||||||||0|0|%1|1|16|0"_s.arg(today),
            u"enrollments: 123|%1|%2|0|0"_s.arg(today).arg(expires),
            u"classes: 123|1|Staff|Wellness|Morning|2|1|3|4"_s, u"messages: 123|"_s}));
    QCOMPARE(desk.m_views.m_lstTreeCalls, (QStringList{u"Remove 123"_s, u"Add 123"_s}));
    CTestCentre::Run("DELETE FROM defaults");
    QVERIFY(
        !desk.Use({Steps(u"memberIDEdit=124 OK"_s)}, [&desk] { return desk.m_doc.EditMember(0); }));
}

void MemberWorkflowTest::okWithoutChangesKeepsEveryByte()
{
    CMemberDesk desk;
    CLargeFont const large;
    // What another program may have stored: what no field can show, odd flags and statuses.
    RunOnMembers("UPDATE members SET first_name = 'Bartholomew-James', status = 5,"
                 " middle_initial = CAST(x'c384cc81' AS TEXT)");
    auto const none = std::to_string(CEFOleDateTime::Invalid().Seconds());
    RunOnMembers("UPDATE profiles SET address = printf('%50s', char(10) || 'x'), employee = 3,"
                 " phone = CAST(x'35ff' AS TEXT), birthday = "
        + none);
    RunOnMembers(
        "UPDATE enrollments SET period = 77, enroll_date = 3990000001, expire_date = " + none);
    RunOnMembers("UPDATE classes SET grade_status = 9, orientation = 4");
    auto const before = desk.Rows();
    auto const edit = [&desk] { return desk.m_doc.EditMember(0); };
    QVERIFY(!desk.Use({ClickCancel}, edit));
    desk.Told({ClickCancel}, &CCorvanaDoc::EditExistingMember);
    QVERIFY(
        !desk.Use({Steps(u"memberIDEdit=7 OK"_s), Steps(u"lastNameEdit=Other @2 Cancel"_s)}, edit));
    QCOMPARE(desk.Rows(), before);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList());

    QStringList focus;
    QVERIFY(desk.Edit(7, [&focus](QDialog& sheet) {
        for (int page = 0; page < 4; ++page) {
            ShowPage(sheet, page);
            QCOMPARE(Tabs(sheet).currentIndex(), page);
            focus += sheet.focusWidget()->objectName();
            QCoreApplication::processEvents();
            QCOMPARE(FaultsOf(sheet), QStringList());
        }
        ClickOk(sheet);
    }));
    QCOMPARE(desk.Rows(), before);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -10 0"_s});
    QCOMPARE(desk.m_views.m_lstResults, QStringList{u"Member ID 7 was saved."_s});
    QCOMPARE(focus.join(u' '), // the first field of each page
        u"memberIDEdit enrollEdit feelBetterCheck tobaccoCheck"_s);
}

void MemberWorkflowTest::aMemberWithoutClassesShowsNobodyElses()
{
    CMemberDesk desk;
    AddMember(8);
    QVERIFY(desk.Edit(7, ClickOk)); // leaves member 7 in the sets
    QVERIFY(!desk.Edit(8, [](QDialog& sheet) {
        QCOMPARE(Texts(sheet, u"addressEdit"_s), QString());
        Do(sheet, u"@1"_s);
        QCOMPARE(Child<QComboBox>(sheet, "categoryList").currentText(), QString());
        Do(sheet, u"@0"_s);
        QCOMPARE(Tabs(sheet).currentIndex(), 1); // a member must have a class
        ClickCancel(sheet);
    }));
    // With the enrolment left alone the missing rows are made, and no class.
    QVERIFY(desk.Edit(8, ClickOk));
    QCOMPARE(desk.Rows().filter(u": 8|"_s),
        (QStringList{u"members: 8|8|Jo||Doe|1"_s, u"profiles: 8||||||||||0|0|0|0|0|0"_s,
            u"enrollments: 8|0|0|0|0"_s, u"messages: 8|"_s}));
}

void MemberWorkflowTest::anotherDesksChangesAreNotOverwritten()
{
    CMemberDesk desk;
    AddClass(7, 5, "'Students', 'PE 101', ''");
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
    for (std::string const sql : {"UPDATE members SET last_name = 'Baker'",
             "UPDATE profiles SET phone = '1'", "UPDATE enrollments SET expire_date = 5",
             "UPDATE classes SET grade_status = 3 WHERE class_index = 5", "DELETE FROM classes",
             "UPDATE messages SET message = 'Call home'", "DELETE FROM members"}) {
        bool const isDeleted = sql == "DELETE FROM members";
        QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
            Do(sheet, u"cityEdit=Bend"_s);
            AsksBeforeReplacing(
                desk, sheet, u"member"_s, sql, isDeleted, [&desk] { return desk.Rows(); });
        }));
        if (isDeleted) {
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
             30, "30, 31", u"Member ID 30"_s, u"memberIDEdit"_s, u"members: 66|80|Zoe||Hart|1"_s),
            {7, "40, 57", u"Workout ID 57"_s, u"workoutNumEdit"_s,
                u"members: 7|66|Zoe|B|Hart|1"_s}}) {
        QVERIFY(desk.Edit(id, [&](QDialog& sheet) {
            Do(sheet, u"workoutNumEdit=%1 firstNameEdit=Zoe lastNameEdit=Hart @2"_s.arg(50 + id));
            RunOnMembers(
                std::string("INSERT INTO members VALUES (NULL, ") + others + ", 'A', '', 'B', 1)");
            auto const before = desk.Rows();
            QCOMPARE(desk.Ok(sheet),
                u"Error: %1 is already\nin use for an existing member @%2"_s.arg(taken, field));
            QCOMPARE(Tabs(sheet).currentIndex(), 0);
            QCOMPARE(desk.Rows(), before);
            Do(sheet, field + u"=66 OK"_s);
        }));
        QVERIFY(desk.Rows().contains(row));
    }
}

void MemberWorkflowTest::aFailedSaveKeepsTheFormAndTheMember()
{
    CMemberDesk desk;
    QVERIFY(desk.Edit(7, [&desk](QDialog& sheet) {
        Do(sheet, u"memberIDEdit=70 cityEdit=Bend"_s);
        SavesOnceThereIsRoom(desk, sheet, u"member"_s, [&desk] { return desk.Rows(); });
        QCOMPARE(Texts(sheet, u"cityEdit"_s), u"Bend"_s);
    }));
    QVERIFY(desk.Rows({u"workouts"_s})[0].startsWith(u"workouts: 70|"_s));

    // A member who cannot be read is not taken for a new one.
    RunOnMembers("ALTER TABLE enrollments RENAME TO away");
    QVERIFY(!desk.Use({}, [&desk] { return desk.m_doc.EditMember(70); }));
    QCOMPARE(desk.m_messages.Texts().constLast(), u"Error: member ID 70 could not be read."_s);
}

void MemberWorkflowTest::deletesAfterAsking()
{
    CMemberDesk desk;
    auto const before = desk.Rows();
    auto const fields = u"memberEdit idEdit statusEdit expirationEdit"_s;
    auto const stored = ToQt(CEFOleDateTime::FromSeconds(4020000000).DateStrLongYear());
    CDialogUser const user({Steps(u"memberIDEdit=7 OK"_s),
        [&](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), u"Delete Member -  Confirmation"_s);
            QCOMPARE(Texts(dialog, fields), u"Ann B Archer|7|Current|"_s + stored);
            QCOMPARE(FaultsOf(dialog), QStringList());
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); // deletes nobody by accident
        },
        [&](QDialog& dialog) {
            QCOMPARE(Texts(dialog, fields), u"Ann Archer|7|Past|01/02/2003"_s);
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
