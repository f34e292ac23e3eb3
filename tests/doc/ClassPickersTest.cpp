#include "doc/ClassDlg.h"
#include "doc/ClassPicker.h"
#include "doc/MemberClassDlg.h"
#include "platform/qt/DropDown.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QLabel>

#include <tuple>

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

/// A centre whose first category has two courses, and the first of those two sections.
class CPickerDesk : public CTestDesk
{
public:
    CPickerDesk()
    {
        CTestCentre::Run("INSERT INTO categories (number, name) VALUES (5, 'Guests')");
        CTestCentre::Run("INSERT INTO courses (number, category, name) VALUES (6, 7, 'Yoga')");
        CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (1, 9, 'Evening')");
    }
};

/// The entries of the three lists; "-" for one that is hidden, as its label must be.
QString Entries(CClassPicker const& picker)
{
    QStringList texts;
    auto const& lists = picker.Lists();
    for (auto const& [list, label] : {std::pair(lists.m_pCategory, lists.m_pCategoryLabel),
             {lists.m_pCourse, lists.m_pCourseLabel}, {lists.m_pSection, lists.m_pSectionLabel}}) {
        auto const text = list->isHidden() ? u"-"_s : Entries(*list);
        texts += label->isHidden() == list->isHidden() ? text : text + u", its label not"_s;
    }
    return texts.join(u" > "_s);
}

std::string Taken(CClassPicker const& picker)
{
    return picker.Category() + "|" + picker.Course() + "|" + picker.Section();
}

} // namespace

class ClassPickersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsNarrowEachOther();
    void storedClassesAreShownAndTaken();
    void memberClassesAreListedAnew();
};

void ClassPickersTest::listsNarrowEachOther()
{
    CLargeFont const large;
    CPickerDesk desk;
    CClassDlg dialog(desk.m_doc);
    auto const taken = [&dialog] {
        return dialog.m_strCategory + "|" + dialog.m_strCourse + "|" + dialog.m_strSection;
    };
    auto const& picker = *dialog.findChild<CClassPicker*>();
    auto& category = *picker.Lists().m_pCategory;
    auto& course = *picker.Lists().m_pCourse;
    dialog.m_strSection = "left over";
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto const fresh = u"[]|Staff|Students|Guests > - > -"_s;
    QCOMPARE(Entries(picker), fresh);
    QVERIFY(picker.IsBlank());
    QCOMPARE(FaultsOf(dialog), QStringList());
    auto const size = dialog.size();
    QCOMPARE(desk.Ok(dialog), u"Error: select a category, course, and/or section @categoryList"_s);
    QCOMPARE(taken(), "||left over");

    Choose(category, 1);
    QCOMPARE(Entries(picker), u"|[Staff]|Students|Guests > [Wellness]|Yoga > [Morning]|Evening"_s);
    QCOMPARE(FaultsOf(dialog), QStringList());
    QCOMPARE(dialog.size(), size); // it does not jump when lists come and go
    Choose(course, 1);
    QCOMPARE(Taken(picker), "Staff|Yoga|");
    // A list that closes without a new choice leaves those below it alone.
    Choose(category, 1);
    Choose(category, 2, Qt::Key_Escape);
    QCOMPARE(Taken(picker), "Staff|Yoga|");
    QTest::keyClick(&course, Qt::Key_Up); // a choice while it is closed
    QTest::keyClick(picker.Lists().m_pSection, Qt::Key_Down);
    Choose(course, 0);
    QCOMPARE(desk.Ok(dialog), QString());
    QCOMPARE(taken(), "Staff|Wellness|Evening");
    dialog.show();
    QCOMPARE(Entries(picker), fresh);
    Choose(category, 3);
    QCOMPARE(desk.Ok(dialog), QString());
    QCOMPARE(taken(), "Guests||");
}

void ClassPickersTest::storedClassesAreShownAndTaken()
{
    CPickerDesk desk;
    CClassPicker picker;
    picker.SetUp(desk.m_doc, Qt::Horizontal);
    for (auto const& [category, course, section, shown] :
        {std::tuple("staff", "wellness", "Evening",
             u"[Staff]|Students|Guests > [Wellness]|Yoga > Morning|[Evening]"_s),
            // What the catalogue does not have, with all below it.
            {"Staff", "Wellness", "Noon",
                u"[Staff]|Students|Guests > [Wellness]|Yoga > Morning|Evening|[Noon]"_s},
            {"Staff", "Golf", "Morning",
                u"[Staff]|Students|Guests > Wellness|Yoga|[Golf] > [Morning]"_s},
            {"Alumni", "Well", "Noon", u"Staff|Students|Guests|[Alumni] > [Well] > [Noon]"_s}}) {
        picker.ShowStored(category, course, section);
        QCOMPARE(Entries(picker), shown);
        QVERIFY(picker.IsAsFilled());
    }
}

void ClassPickersTest::memberClassesAreListedAnew()
{
    CTestDesk desk;
    AddMember(12);
    AddClass(12, 2, "'Staff', 'Wellness', 'Morning'");
    AddClass(12, 4, "'Students', 'PE 101', ''");
    CMemberClassDlg dialog(desk.m_doc);
    dialog.m_lMemberID = 12;
    for (auto const& [preselect, entries] :
        {std::pair(4, u"Staff Wellness Morning|[Students PE 101]"_s),
            {50, u"[Staff Wellness Morning]|Students PE 101"_s}, // no class
            {99, u"[Unknown]|Staff Wellness Morning|Students PE 101"_s}}) {
        dialog.m_nClassIndex = static_cast<std::uint8_t>(preselect);
        dialog.show();
        QCOMPARE(Entries(Child<CDropDown>(dialog, "classList")), entries);
        ClickOk(dialog);
    }
}

static CTestEntryOf<ClassPickersTest> const g_entry;
#include "ClassPickersTest.moc"
