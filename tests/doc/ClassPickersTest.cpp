#include "doc/ClassLists.h"
#include "doc/CorvanaDoc.h"
#include "platform/qt/DropDown.h"
#include "store/sets/AddRow.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/MessageRecorder.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// The three lists in a form of their own.
struct CListsForm
{
    QWidget m_form;
    CDropDown m_category;
    CDropDown m_course;
    CDropDown m_section;
    QLabel m_categoryLabel;
    QLabel m_courseLabel;
    QLabel m_sectionLabel;
    CClassLists const m_lists
        = {&m_category, &m_course, &m_section, &m_categoryLabel, &m_courseLabel, &m_sectionLabel};

    CListsForm()
    {
        auto* const layout = new QVBoxLayout(&m_form);
        for (auto* const widget : std::initializer_list<QWidget*>{&m_categoryLabel, &m_category,
                 &m_courseLabel, &m_course, &m_sectionLabel, &m_section}) {
            layout->addWidget(widget);
        }
    }
};

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

/// The same of a list in a form; "-" when it is hidden.
QString Content(CDropDown const& list, QLabel const& label)
{
    if (list.isHidden() != label.isHidden()) {
        return u"list and label differ"_s;
    }
    return list.isHidden() ? u"-"_s : Entries(list);
}

QStringList Contents(CListsForm const& form)
{
    return {Content(form.m_category, form.m_categoryLabel),
        Content(form.m_course, form.m_courseLabel), Content(form.m_section, form.m_sectionLabel)};
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

void Choose(CDropDown& list, int index)
{
    list.showPopup();
    list.view()->setCurrentIndex(list.model()->index(index, 0));
    QTest::keyClick(list.view(), Qt::Key_Return);
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
    void classesAreDeletedAfterBothQuestions_data();
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
    CListsForm form;
    LinkClassLists(doc, form.m_lists);
    form.m_form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form.m_form));
    doc.FillCategoryList(form.m_lists);
    auto const categories = Contents(form)[0];
    QCOMPARE(Contents(form), (QStringList{u"[]|Staff|Students|Guests"_s, u"-"_s, u"-"_s}));
    QVERIFY(!HasRealClass(form.m_lists));

    Choose(form.m_category, 1);
    QCOMPARE(Contents(form),
        (QStringList{u"|[Staff]|Students|Guests"_s, u"[Wellness]|Yoga"_s, u"[Morning]|Evening"_s}));
    QVERIFY(HasRealClass(form.m_lists));
    Choose(form.m_course, 1);
    QCOMPARE(Contents(form)[1], u"Wellness|[Yoga]"_s);
    QCOMPARE(Contents(form)[2], u"-"_s);
    QCOMPARE(form.m_section.currentText(), QString());
    Choose(form.m_course, 0);
    QCOMPARE(Contents(form)[2], u"[Morning]|Evening"_s);
    Choose(form.m_category, 3);
    QCOMPARE(Contents(form), (QStringList{u"|Staff|Students|[Guests]"_s, u"-"_s, u"-"_s}));
    QCOMPARE(form.m_course.currentText(), QString());
    Choose(form.m_category, 2);
    QCOMPARE(Contents(form)[1], u"[PE 101]"_s);
    Choose(form.m_category, 0);
    QCOMPARE(Contents(form), (QStringList{categories, u"-"_s, u"-"_s}));
    QVERIFY(!HasRealClass(form.m_lists));
    for (CDAOEFSet* const set :
        std::initializer_list<CDAOEFSet*>{&doc.m_setCat, &doc.m_setCour, &doc.m_setSec}) {
        QVERIFY(set->IsEOF() != 0);
    }
}

void ClassPickersTest::storedClassesAreShown_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("course");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QStringList>("contents");
    QTest::addColumn<bool>("isReal");
    auto const row = [](char const* name, QStringList const& stored, QStringList const& contents,
                         bool isReal = true) {
        QTest::newRow(name) << stored[0] << stored[1] << stored[2] << contents << isReal;
    };
    row("all known", {u"staff"_s, u"Wellness"_s, u"Morning"_s},
        {u"[Staff]|Students"_s, u"[Wellness]|Yoga"_s, u"[Morning]"_s});
    row("nothing stored", {u""_s, u""_s, u""_s},
        {u"[Staff]|Students"_s, u"[Wellness]|Yoga"_s, u"[Morning]"_s});
    row("second course, no sections", {u"Staff"_s, u"Yoga"_s, u""_s},
        {u"[Staff]|Students"_s, u"Wellness|[Yoga]"_s, u"-"_s});
    row("category gone", {u"Alumni"_s, u"PE 1"_s, u"Noon"_s},
        {u"Staff|Students|[Alumni]"_s, u"[PE 1]"_s, u"[Noon]"_s}, false);
    row("category gone, nothing below it", {u"Alumni"_s, u""_s, u""_s},
        {u"Staff|Students|[Alumni]"_s, u"-"_s, u"-"_s}, false);
    row("course gone", {u"Staff"_s, u"Golf"_s, u"Morning"_s},
        {u"[Staff]|Students"_s, u"Wellness|Yoga|[Golf]"_s, u"[Morning]"_s});
    row("course gone, no section", {u"Staff"_s, u"Golf"_s, u""_s},
        {u"[Staff]|Students"_s, u"Wellness|Yoga|[Golf]"_s, u"-"_s});
    row("section gone", {u"Staff"_s, u"Wellness"_s, u"Noon"_s},
        {u"[Staff]|Students"_s, u"[Wellness]|Yoga"_s, u"Morning|[Noon]"_s});
    row("section of a course that has none now", {u"Staff"_s, u"Yoga"_s, u"Noon"_s},
        {u"[Staff]|Students"_s, u"Wellness|[Yoga]"_s, u"[Noon]"_s});
}

void ClassPickersTest::storedClassesAreShown()
{
    QFETCH(QString const, category);
    QFETCH(QString const, course);
    QFETCH(QString const, section);
    QFETCH(QStringList const, contents);
    QFETCH(bool const, isReal);
    CTestCentre const centre;
    CTestCentre::Run("INSERT INTO courses (number, category, name) VALUES (6, 7, 'Yoga')");
    CTestApp app;
    CCorvanaDoc doc(app);
    CListsForm form;
    doc.FillClassLists(
        form.m_lists, category.toStdString(), course.toStdString(), section.toStdString());
    QCOMPARE(Contents(form), contents);
    QCOMPARE(HasRealClass(form.m_lists), isReal);

    CTestCentre::Run("DELETE FROM categories"); // what is stored stays on show even then
    doc.FillClassLists(
        form.m_lists, category.toStdString(), course.toStdString(), section.toStdString());
    auto const shown
        = [](QString const& text) { return text.isEmpty() ? u"-"_s : u"[%1]"_s.arg(text); };
    QCOMPARE(Contents(form), (QStringList{shown(category), shown(course), shown(section)}));
    QVERIFY(!HasRealClass(form.m_lists));
}

void ClassPickersTest::memberClassesAreListed_data()
{
    QTest::addColumn<int>("member");
    QTest::addColumn<int>("preselect");
    QTest::addColumn<bool>("withUnknown");
    QTest::addColumn<bool>("withAll");
    QTest::addColumn<QString>("content");
    auto const row = [](char const* name, int member, int preselect, bool withUnknown, bool withAll,
                         QString const& content) {
        QTest::newRow(name) << member << preselect << withUnknown << withAll << content;
    };
    auto const all = u"All Categories/Courses/Sections"_s;
    row("classes alone", 12, 4, false, false, u"Staff Wellness Morning|[Students PE 101]"_s);
    row("an index of no class", 12, 100, false, false,
        u"[Staff Wellness Morning]|Students PE 101"_s);
    row("all of them", 12, 101, true, true,
        u"Unknown|[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all));
    row("a class below the special ones", 12, 2, true, true,
        u"Unknown|%1|[Staff Wellness Morning]|Students PE 101"_s.arg(all));
    row("the last special one stands for an index of no class", 12, 50, true, true,
        u"Unknown|[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all));
    row("unknown without its flag", 12, 99, false, false,
        u"[Unknown]|Staff Wellness Morning|Students PE 101"_s);
    row("all without its flag", 12, 101, false, false,
        u"[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all));
    row("no classes", 13, 101, true, true, u""_s);
}

void ClassPickersTest::memberClassesAreListed()
{
    QFETCH(int const, member);
    QFETCH(int const, preselect);
    QFETCH(bool const, withUnknown);
    QFETCH(bool const, withAll);
    QFETCH(QString const, content);
    CTestCentre const centre;
    AddMemberOfTwoClasses();
    CTestApp app;
    CCorvanaDoc doc(app);
    CDropDown list;
    list.addItem(u"left over"_s);
    doc.FillMemberClassList(
        member, static_cast<std::uint8_t>(preselect), list, withUnknown, withAll);
    QCOMPARE(Entries(list), content);
    QVERIFY(doc.m_setCls.IsEOF() != 0);
}

void ClassPickersTest::classesAreDeletedAfterBothQuestions_data()
{
    QTest::addColumn<QList<bool>>("answers");
    QTest::addColumn<QString>("section");
    QTest::addColumn<int>("questions");
    QTest::addColumn<QString>("left"); // classes, records of the class, records without one
    auto const row = [](char const* name, QList<bool> const& answers, QString const& section,
                         int questions, QString const& left) {
        QTest::newRow(name) << answers << section << questions << left;
    };
    row("no such class", {true, true}, u"Noon"_s, 0, u"2 1 0"_s);
    row("not wanted", {false}, u"Morning"_s, 1, u"2 1 0"_s);
    row("without its records", {true, false}, u"Morning"_s, 2, u"1 0 1"_s);
    row("with its records", {true, true}, u"Morning"_s, 2, u"1 0 0"_s);
}

void ClassPickersTest::classesAreDeletedAfterBothQuestions()
{
    QFETCH(QList<bool> const, answers);
    QFETCH(QString const, section);
    QFETCH(int const, questions);
    QFETCH(QString const, left);
    CTestCentre const centre;
    AddMemberOfTwoClasses();
    CMessageRecorder messages;
    messages.AnswerNext(answers);
    CTestApp app;
    CCorvanaDoc doc(app);
    // The index of the found class counts, whatever the caller takes it for.
    QCOMPARE(
        doc.DeleteMemberClass(12, 4, "Staff", "Wellness", section.toStdString()), questions == 2);
    QStringList const texts
        = {u"Are you sure you want to delete\nthe class: Staff Wellness Morning?"_s,
            u"Do you want to permanently delete the member's\nworkout, evaluation, and body "
            "composition data\nthat have been recorded for the class?"_s};
    QCOMPARE(messages.Texts(), texts.mid(0, questions));
    for (auto const& message : messages.Messages()) {
        QVERIFY(message.m_question == CQuestion::destroying);
    }
    QCOMPARE(WhatIsLeft(), left);
    QVERIFY(doc.m_setCls.IsEOF() != 0);
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
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

CORVANA_TEST(ClassPickersTest);
#include "ClassPickersTest.moc"
