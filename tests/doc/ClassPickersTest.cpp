#include "doc/ClassPicker.h"
#include "doc/CorvanaDoc.h"
#include "platform/qt/DropDown.h"
#include "store/sets/AddRow.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// The entries of a list with the selected one in brackets.
QString Entries(QComboBox const& list)
{
    QStringList entries;
    for (int i = 0; i < list.count(); ++i) {
        auto const text = list.itemText(i);
        entries += i == list.currentIndex() ? u"[%1]"_s.arg(text) : text;
    }
    return entries.join(u"|"_s);
}

/// The same of the three lists; "-" for one that is hidden, as its label must be.
QStringList Contents(CClassPicker const& picker)
{
    auto const content = [](CDropDown const& list, QLabel const& label) {
        if (list.isHidden() != label.isHidden()) {
            return u"list and label differ"_s;
        }
        return list.isHidden() ? u"-"_s : Entries(list);
    };
    auto const& lists = picker.Lists();
    return {content(*lists.m_pCategory, *lists.m_pCategoryLabel),
        content(*lists.m_pCourse, *lists.m_pCourseLabel),
        content(*lists.m_pSection, *lists.m_pSectionLabel)};
}

QString Taken(CClassPicker const& picker)
{
    return ToQt(picker.Category() + "|" + picker.Course() + "|" + picker.Section());
}

/// Class 2 has a workout, class 4 has none.
void AddMemberOfTwoClasses()
{
    AddMember(12);
    AddClass(12, 2, "'Staff', 'Wellness', 'Morning'");
    AddClass(12, 4, "'Students', 'PE 101', ''");
    QVERIFY(AddRow<CDAOWk>([](CDAOWk& workout) {
        workout.m_lMemberID = 12;
        workout.m_nClassIndex = 2;
    }).IsOK());
}

/// The numbers of the member's classes, of workouts of class 2 and of workouts without a class.
QString WhatIsLeft()
{
    CDAOCls classes;
    CDAOWk workouts;
    int ofClass = 0;
    int unknown = 0;
    int const classCount = classes.FindClasses(12);
    for (int left = workouts.OpenSet(true); left > 0; --left) {
        ofClass += workouts.m_nClassIndex == 2 ? 1 : 0;
        unknown += workouts.m_nClassIndex == CDAOCls::kUnknown ? 1 : 0;
        workouts.Op(CDAOEFSet::opMoveNext);
    }
    return u"%1 %2 %3"_s.arg(classCount).arg(ofClass).arg(unknown);
}

/// Opens the list, goes to an entry and closes it by that key.
void Choose(CDropDown& list, int index, Qt::Key key = Qt::Key_Return)
{
    list.showPopup();
    list.view()->setCurrentIndex(list.model()->index(index, 0));
    QTest::keyClick(list.view(), key);
    QCoreApplication::processEvents(); // the list tells that it closed once its choice stands
}

} // namespace

class ClassPickersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsNarrowEachOther();
    void storedClassesAreShown_data();
    void storedClassesAreShown();
    void memberClassesAreListed_data();
    void memberClassesAreListed();
    void classesAreDeletedAfterBothQuestions();
    void tellsWhenAClassIsNotDeleted();
};

void ClassPickersTest::listsNarrowEachOther()
{
    CTestCentre const centre;
    CTestCentre::Run("INSERT INTO categories (number, name) VALUES (5, 'Guests')");
    CTestCentre::Run("INSERT INTO courses (number, category, name) VALUES (6, 7, 'Yoga')");
    CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (1, 9, 'Evening')");
    CTestApp app;
    CCorvanaDoc doc(app);
    CClassPicker picker;
    picker.SetUp(doc, Qt::Vertical);
    auto& category = *picker.Lists().m_pCategory;
    auto& course = *picker.Lists().m_pCourse;
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    picker.ShowFresh();
    QStringList const fresh = {u"[]|Staff|Students|Guests"_s, u"-"_s, u"-"_s};
    QCOMPARE(Contents(picker), fresh);
    QVERIFY(picker.IsBlank() && !picker.HasRealClass());

    Choose(category, 1);
    QCOMPARE(Contents(picker),
        (QStringList{u"|[Staff]|Students|Guests"_s, u"[Wellness]|Yoga"_s, u"[Morning]|Evening"_s}));
    QVERIFY(picker.HasRealClass());
    Choose(course, 1);
    QCOMPARE(Taken(picker), u"Staff|Yoga|"_s);
    // A list that closes without a new choice leaves those below it alone.
    Choose(category, 1);
    Choose(category, 2, Qt::Key_Escape);
    QCOMPARE(Taken(picker), u"Staff|Yoga|"_s);
    QTest::keyClick(&course, Qt::Key_Up); // a choice while it is closed
    QTest::keyClick(picker.Lists().m_pSection, Qt::Key_Down);
    Choose(course, 0);
    QCOMPARE(Taken(picker), u"Staff|Wellness|Evening"_s);
    Choose(category, 3);
    QCOMPARE(Contents(picker), (QStringList{u"|Staff|Students|[Guests]"_s, u"-"_s, u"-"_s}));
    QCOMPARE(Taken(picker), u"Guests||"_s);
    Choose(category, 0);
    QCOMPARE(Contents(picker), fresh);
    QVERIFY(!picker.HasRealClass());
    for (CDAOEFSet* const set :
        std::initializer_list<CDAOEFSet*>{&doc.m_setCat, &doc.m_setCour, &doc.m_setSec}) {
        QVERIFY(set->IsEOF() != 0);
    }
}

void ClassPickersTest::storedClassesAreShown_data()
{
    QTest::addColumn<QStringList>("stored"); // category, course, section
    QTest::addColumn<QStringList>("contents");
    QTest::addColumn<bool>("isReal");
    auto const row
        = [](char const* name, QStringList const& stored, QStringList const& contents,
              bool isReal = true) { QTest::newRow(name) << stored << contents << isReal; };
    row("the catalogue's spelling", {u"staff"_s, u"Wellness"_s, u"Morning"_s},
        {u"[Staff]|Students|Staff 2"_s, u"[Wellness]|Yoga"_s, u"[Morning]"_s});
    row("nothing below the category", {u"Staff"_s, u""_s, u""_s},
        {u"[Staff]|Students|Staff 2"_s, u"[Wellness]|Yoga"_s, u"[Morning]"_s});
    row("second course, no sections", {u"Staff"_s, u"Yoga"_s, u""_s},
        {u"[Staff]|Students|Staff 2"_s, u"Wellness|[Yoga]"_s, u"-"_s});
    row("category gone", {u"Alumni"_s, u"PE 1"_s, u"Noon"_s},
        {u"Staff|Students|Staff 2|[Alumni]"_s, u"[PE 1]"_s, u"[Noon]"_s}, false);
    row("category gone, nothing below it", {u"Alumni"_s, u""_s, u""_s},
        {u"Staff|Students|Staff 2|[Alumni]"_s, u"-"_s, u"-"_s}, false);
    row("course gone", {u"Staff"_s, u"Golf"_s, u"Morning"_s},
        {u"[Staff]|Students|Staff 2"_s, u"Wellness|Yoga|[Golf]"_s, u"[Morning]"_s});
    row("course gone, no section", {u"Staff"_s, u"Golf"_s, u""_s},
        {u"[Staff]|Students|Staff 2"_s, u"Wellness|Yoga|[Golf]"_s, u"-"_s});
    row("section gone", {u"Staff"_s, u"Wellness"_s, u"Noon"_s},
        {u"[Staff]|Students|Staff 2"_s, u"[Wellness]|Yoga"_s, u"Morning|[Noon]"_s});
    row("section of a course that has none now", {u"Staff"_s, u"Yoga"_s, u"Noon"_s},
        {u"[Staff]|Students|Staff 2"_s, u"Wellness|[Yoga]"_s, u"[Noon]"_s});
}

void ClassPickersTest::storedClassesAreShown()
{
    QFETCH(QStringList const, stored);
    QFETCH(QStringList const, contents);
    QFETCH(bool const, isReal);
    CTestCentre const centre;
    CTestCentre::Run("INSERT INTO categories (number, name) VALUES (2, 'Staff 2')");
    CTestCentre::Run("INSERT INTO courses (number, category, name) VALUES (6, 7, 'Yoga')");
    CTestApp app;
    CCorvanaDoc doc(app);
    CClassPicker picker;
    picker.SetUp(doc, Qt::Horizontal);
    auto const show = [&] {
        picker.ShowStored(FromQt(stored[0]), FromQt(stored[1]), FromQt(stored[2]));
        QStringList shown = Contents(picker);
        for (auto& list : shown) { // what is shown is what is taken
            list = list.section(u'[', 1).section(u']', 0, 0);
        }
        QCOMPARE(Taken(picker), shown.join(u'|'));
    };
    show();
    QCOMPARE(Contents(picker), contents);
    QCOMPARE(picker.HasRealClass(), isReal);

    CTestCentre::Run("DELETE FROM categories"); // what is stored stays on show even then
    show();
    QCOMPARE(Taken(picker), stored.join(u'|'));
    QVERIFY(!picker.HasRealClass());
}

void ClassPickersTest::memberClassesAreListed_data()
{
    QTest::addColumn<int>("member");
    QTest::addColumn<int>("preselect");
    QTest::addColumn<bool>("withSpecial"); // the entries of index 99 and 101
    QTest::addColumn<QString>("content");
    auto const row = [](char const* name, int member, int preselect, bool withSpecial,
                         QString const& content) {
        QTest::newRow(name) << member << preselect << withSpecial << content;
    };
    auto const all = u"All Categories/Courses/Sections"_s;
    row("classes alone", 12, 4, false, u"Staff Wellness Morning|[Students PE 101]"_s);
    row("an index of no class", 12, 100, false, u"[Staff Wellness Morning]|Students PE 101"_s);
    row("all of them", 12, 101, true,
        u"Unknown|[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all));
    row("a class below the special ones", 12, 2, true,
        u"Unknown|%1|[Staff Wellness Morning]|Students PE 101"_s.arg(all));
    row("the last special one stands for an index of no class", 12, 50, true,
        u"Unknown|[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all));
    row("unknown without its flag", 12, 99, false,
        u"[Unknown]|Staff Wellness Morning|Students PE 101"_s);
    row("all without its flag", 12, 101, false,
        u"[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all));
    row("no classes", 13, 101, true, u""_s);
}

void ClassPickersTest::memberClassesAreListed()
{
    QFETCH(int const, member);
    QFETCH(int const, preselect);
    QFETCH(bool const, withSpecial);
    QFETCH(QString const, content);
    CTestCentre const centre;
    AddMemberOfTwoClasses();
    CTestApp app;
    CCorvanaDoc doc(app);
    CDropDown list;
    list.addItem(u"left over"_s);
    doc.FillMemberClassList(
        member, static_cast<std::uint8_t>(preselect), list, withSpecial, withSpecial);
    QCOMPARE(Entries(list), content);
    CMessageRecorder const messages;
    std::uint8_t taken = 100;
    QCOMPARE(TakeMemberClass(list, taken), !content.isEmpty());
    QCOMPARE(taken, content.isEmpty() ? 100 : list.currentData().toInt());
    auto const refusal = u"Error: select a category, course, section"_s;
    QCOMPARE(messages.Texts(), content.isEmpty() ? QStringList{refusal} : QStringList());
    QVERIFY(doc.m_setCls.IsEOF() != 0);
}

void ClassPickersTest::classesAreDeletedAfterBothQuestions()
{
    QStringList const questions
        = {u"Are you sure you want to delete\nthe class: Staff Wellness Morning?"_s,
            u"Do you want to permanently delete the member's\nworkout, evaluation, and body "
            "composition data\nthat have been recorded for the class?"_s};
    for (auto const& [section, answers, asked, left] :
        std::initializer_list<std::tuple<char const*, QList<bool>, int, QString>>{
            {"Noon", {true, true}, 0, u"2 1 0"_s}, // no such class
            {"Morning", {false}, 1, u"2 1 0"_s}, {"Morning", {true, false}, 2, u"1 0 1"_s},
            {"Morning", {true, true}, 2, u"1 0 0"_s}}) {
        CTestCentre const centre;
        AddMemberOfTwoClasses();
        CMessageRecorder messages;
        messages.AnswerNext(answers);
        CTestApp app;
        CCorvanaDoc doc(app);
        // The index of the found class counts, whatever the caller takes it for.
        QCOMPARE(doc.DeleteMemberClass(12, 4, "Staff", "Wellness", section), asked == 2);
        QCOMPARE(messages.Texts(), questions.mid(0, asked));
        for (auto const& message : messages.Messages()) {
            QVERIFY(message.m_question == CQuestion::destroying);
        }
        QCOMPARE(WhatIsLeft(), left);
        QVERIFY(doc.m_setCls.IsEOF() != 0);
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    }
}

void ClassPickersTest::tellsWhenAClassIsNotDeleted()
{
    CTestCentre const centre;
    AddMemberOfTwoClasses();
    CTestCentre::Run("CREATE TRIGGER t BEFORE DELETE ON classes BEGIN "
                     "SELECT RAISE(ABORT, 'no'); END",
        DataFile::member);
    CTestApp app;
    CCorvanaDoc doc(app);
    for (bool const withRecords : {false, true}) {
        CMessageRecorder messages;
        messages.AnswerNext({true, withRecords});
        QVERIFY(!doc.DeleteMemberClass(12, 2, "Staff", "Wellness", "Morning"));
        QCOMPARE(messages.Texts().size(), 3);
        QVERIFY(messages.Texts()[2].startsWith(u"Error: the class was not deleted."_s));
        QVERIFY(!messages.Messages()[2].m_strDetail.isEmpty());
        QCOMPARE(WhatIsLeft(), u"2 1 0"_s);
    }
}

static CTestEntryOf<ClassPickersTest> const g_entry;
#include "ClassPickersTest.moc"
