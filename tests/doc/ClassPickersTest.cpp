#include "doc/ClassPicker.h"
#include "doc/MemberClassDlg.h"
#include "platform/qt/DropDown.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "ui/Convert.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{

/// The entries of a list with the selected one in brackets.
QString Entries(QComboBox const& list)
{
    QStringList entries;
    for (int i = 0; i < list.count(); ++i) {
        entries += (i == list.currentIndex() ? u"[%1]"_s : u"%1"_s).arg(list.itemText(i));
    }
    return entries.join(u'|');
}

/// A picker, and a catalogue in which one category has two courses, and one of those two sections.
class CPickerDesk : public CTestDesk
{
public:
    CClassPicker m_picker;

    explicit CPickerDesk(Qt::Orientation direction)
    {
        CTestCentre::Run("INSERT INTO categories (number, name) VALUES (5, 'Guests')");
        CTestCentre::Run("INSERT INTO courses (number, category, name) VALUES (6, 7, 'Yoga')");
        CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (1, 9, 'Evening')");
        m_picker.SetUp(m_doc, direction);
    }

    /// The entries of the three lists; "-" for one that is hidden, as its label must be.
    QString Shown() const
    {
        QStringList texts;
        auto const& lists = m_picker.Lists();
        for (auto const& [list, label] : {std::pair(lists.m_pCategory, lists.m_pCategoryLabel),
                 {lists.m_pCourse, lists.m_pCourseLabel},
                 {lists.m_pSection, lists.m_pSectionLabel}}) {
            texts += list->isHidden() ? u"-"_s : Entries(*list);
            [&] { QCOMPARE(label->isHidden(), list->isHidden()); }();
        }
        return texts.join(u" > "_s);
    }
    QString Taken() const
    {
        return ToQt(m_picker.Category() + "|" + m_picker.Course() + "|" + m_picker.Section());
    }
};

} // namespace

class ClassPickersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsNarrowEachOther();
    void storedClassesAreShownAndTaken();
    void memberClassesAreListedAndTaken();
};

void ClassPickersTest::listsNarrowEachOther()
{
    CPickerDesk desk(Qt::Vertical);
    auto& picker = desk.m_picker;
    auto& category = *picker.Lists().m_pCategory;
    auto& course = *picker.Lists().m_pCourse;
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    picker.ShowFresh();
    auto const fresh = u"[]|Staff|Students|Guests > - > -"_s;
    QCOMPARE(desk.Shown(), fresh);
    QVERIFY(picker.IsBlank() && !picker.HasRealClass());

    Choose(category, 1);
    QCOMPARE(desk.Shown(), u"|[Staff]|Students|Guests > [Wellness]|Yoga > [Morning]|Evening"_s);
    QVERIFY(picker.HasRealClass());
    Choose(course, 1);
    QCOMPARE(desk.Taken(), u"Staff|Yoga|"_s);
    // A list that closes without a new choice leaves those below it alone.
    Choose(category, 1);
    Choose(category, 2, Qt::Key_Escape);
    QCOMPARE(desk.Taken(), u"Staff|Yoga|"_s);
    QTest::keyClick(&course, Qt::Key_Up); // a choice while it is closed
    QTest::keyClick(picker.Lists().m_pSection, Qt::Key_Down);
    Choose(course, 0);
    QCOMPARE(desk.Taken(), u"Staff|Wellness|Evening"_s);
    Choose(category, 3);
    QCOMPARE(desk.Shown(), u"|Staff|Students|[Guests] > - > -"_s);
    Choose(category, 0);
    QCOMPARE(desk.Shown(), fresh);
    auto& doc = desk.m_doc;
    QVERIFY(doc.m_setCat.IsEOF() != 0 && doc.m_setCour.IsEOF() != 0 && doc.m_setSec.IsEOF() != 0);
}

void ClassPickersTest::storedClassesAreShownAndTaken()
{
    CPickerDesk desk(Qt::Horizontal);
    auto& picker = desk.m_picker;
    auto const show = [&](std::array<std::string, 3> const& stored) {
        picker.ShowStored(stored[0], stored[1], stored[2]);
        return desk.Shown();
    };
    for (auto const& [stored, shown] : {
             std::pair(std::array<std::string, 3>{"staff", "wellness", "Evening"},
                 u"[Staff]|Students|Guests > [Wellness]|Yoga > Morning|[Evening]"_s),
             {{"Staff"}, u"[Staff]|Students|Guests > [Wellness]|Yoga > [Morning]|Evening"_s},
             {{"Staff", "Yoga"}, u"[Staff]|Students|Guests > Wellness|[Yoga] > -"_s},
             // What the catalogue does not have, with all below it.
             {{"Staff", "Wellness", "Noon"},
                 u"[Staff]|Students|Guests > [Wellness]|Yoga > Morning|Evening|[Noon]"_s},
             {{"Staff", "Golf", "Morning"},
                 u"[Staff]|Students|Guests > Wellness|Yoga|[Golf] > [Morning]"_s},
             {{"Alumni", "Well", "Noon"}, u"Staff|Students|Guests|[Alumni] > [Well] > [Noon]"_s},
             {{"Alumni"}, u"Staff|Students|Guests|[Alumni] > - > -"_s},
         }) {
        QCOMPARE(show(stored), shown);
        QCOMPARE(picker.HasRealClass(), stored[0] != "Alumni");
        QVERIFY(picker.IsAsFilled());
    }
    CTestCentre::Run("DELETE FROM categories"); // what is stored stays on show even then
    QCOMPARE(show({"Staff", "Wellness", "Morning"}), u"[Staff] > [Wellness] > [Morning]"_s);
    QCOMPARE(desk.Taken(), u"Staff|Wellness|Morning"_s);
    QVERIFY(!picker.HasRealClass() && !picker.IsBlank());
}

void ClassPickersTest::memberClassesAreListedAndTaken()
{
    CTestDesk desk;
    AddMember(12);
    AddClass(12, 2, "'Staff', 'Wellness', 'Morning'");
    AddClass(12, 4, "'Students', 'PE 101', ''");
    auto const all = u"All Categories/Courses/Sections"_s;
    CMemberClassDlg dialog(desk.m_doc);
    auto& list = Child<CDropDown>(dialog, "classList");
    auto const show = [&](int memberID, int preselect, bool withUnknown, bool withAll) {
        dialog.m_lMemberID = memberID;
        dialog.m_nClassIndex = static_cast<std::uint8_t>(preselect);
        dialog.m_bWithUnknown = withUnknown;
        dialog.m_bWithAll = withAll;
        dialog.show();
        return Entries(list);
    };
    std::uint8_t taken = 0;
    for (auto const& [preselect, withUnknown, withAll, entries] : {
             std::tuple(4, false, false, u"Staff Wellness Morning|[Students PE 101]"_s),
             {50, false, false, u"[Staff Wellness Morning]|Students PE 101"_s}, // no class
             {50, true, false, u"[Unknown]|Staff Wellness Morning|Students PE 101"_s},
             {50, true, true, u"Unknown|[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all)},
             {2, true, true, u"Unknown|%1|[Staff Wellness Morning]|Students PE 101"_s.arg(all)},
             {99, false, false, u"[Unknown]|Staff Wellness Morning|Students PE 101"_s},
             {101, false, false, u"[%1]|Staff Wellness Morning|Students PE 101"_s.arg(all)},
         }) {
        QCOMPARE(show(12, preselect, withUnknown, withAll), entries);
        ClickOk(dialog);
        QCOMPARE(dialog.m_nClassIndex, list.currentData().toInt());
        QCOMPARE(ToQt(dialog.m_strClass), list.currentText());
        QVERIFY(TakeMemberClass(list, taken) && taken == dialog.m_nClassIndex);
    }
    QCOMPARE(show(13, 101, true, true), QString()); // without classes it keeps what was asked for
    ClickOk(dialog);
    QCOMPARE(dialog.m_nClassIndex, 101);
    QCOMPARE(ToQt(dialog.m_strClass), all);
    QVERIFY(!TakeMemberClass(list, taken) && taken == 101);
    QCOMPARE(desk.m_messages.Texts(), QStringList{u"Error: select a category, course, section"_s});
    QVERIFY(desk.m_doc.m_setCls.IsEOF() != 0);
}

static CTestEntryOf<ClassPickersTest> const g_entry;
#include "ClassPickersTest.moc"
