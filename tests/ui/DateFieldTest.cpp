#include "platform/qt/DateField.h"

#include "platform/qt/TimeField.h"
#include "platform/qt/TypedDate.h"
#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FieldForm.h"
#include "tests/ui/MessageRecorder.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QMap>
#include <QPushButton>
#include <QToolButton>

#include <functional>
#include <tuple>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

class DateFieldTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsWhatAClerkTypes();
    void readsTimes();
    void showsTheStandardFormOnceLeft();
    void isRefusedWhenItIsLeftWrong();
    void keepsAMissingValueUntilItIsTouched();
    void keysChangeThePartAtTheCursor();
    void calendarChooses();
};

void DateFieldTest::readsWhatAClerkTypes()
{
    std::vector<std::tuple<QDate, CShortYear, QString>> const rows = {
        {{1990, 10, 10}, CShortYear::nearest,
            u"10/10/1990|10101990|10 10 1990| 10-10-1990\r\n|10. 10. 1990"_s},
        {{1985, 3, 4}, CShortYear::nearest, u"3/4/1985|03.04.1985|3-04-1985|03041985|3/4/85"_s},
        {{1985, 5, 6}, CShortYear::neverInFuture, u"050685|05/06/85"_s},
        {{2026, 12, 31}, CShortYear::nearest,
            u"12/31/2026|12/31/26|123126|12 31 26|2026-12-31|2026/12/31|"
            "2026-12-31T10:00|2026-12-31 18:05:09|2026-12-31T10:00:00.5+01:00|12/31/26 6:05 PM"_s},
        // The year nearest to 2026, and the latest that leaves a birthday in the past.
        {{1976, 1, 2}, CShortYear::nearest, u"1/2/76"_s},
        {{2075, 1, 2}, CShortYear::nearest, u"1/2/75"_s},
        {{1975, 1, 2}, CShortYear::neverInFuture, u"1-2-75"_s},
        {{2026, 11, 25}, CShortYear::neverInFuture, u"11/25/26"_s},
        {{1926, 11, 26}, CShortYear::neverInFuture, u"11/26/26"_s},
        {{1927, 1, 2}, CShortYear::neverInFuture, u"1/2/27"_s},
        {{2000, 2, 29}, CShortYear::neverInFuture, u"2/29/00"_s},
        {{100, 1, 1}, CShortYear::nearest, u"01/01/0100"_s},
        {{9999, 12, 31}, CShortYear::nearest, u"12/31/9999"_s},
        {{}, CShortYear::nearest,
            u"| |11/24|11/24/|11/24/6|11/24/026|11/24/0099|11/24/20266|2/29/26|13/1/2026|"
            "0/1/2026|1/0/2026|2026-13-01|20261124|11242|1124202|112420266|11//24/2026|11/24/2026x|"
            "x11/24/2026|11/24/2026 18|today|1\u0661/24/2026|-1/24/2026"_s},
    };
    for (auto const& [date, rule, texts] : rows) {
        for (auto const& text : texts.split(u'|')) {
            auto const read = ParseDate(text, {2026, 11, 25}, rule).value_or(QDate());
            QVERIFY2(read == date, qPrintable(text));
        }
    }
}

void DateFieldTest::readsTimes()
{
    std::vector<std::pair<QTime, QString>> const rows = {
        {{18, 5, 9}, u"18:05:09|180509|6:05:09 PM|60509p|18.05.09|18 05 09| 18: 05:09\n"_s},
        {{18, 5}, u"18:05|1805|6:05p|6:05 pm|605p|6.05 p.m."_s},
        {{6, 5}, u"6:05|605|0605|6:05a"_s},
        {{18, 0}, u"18|6p|6 PM|18:00"_s},
        {{12, 0}, u"12p|12:00pm"_s},
        {{0, 0}, u"12:00am|12a|0|0:00"_s},
        {{23, 59, 59}, u"23:59:59"_s},
        {{},
            u"|24:00|24|2400|13p|0:05am|18:60|18:05:60|18:5|18:|pm|"
            "1:2:3|18:05:09:01|1805091|6:05x|-6:05"_s},
    };
    for (auto const& [time, texts] : rows) {
        for (auto const& text : texts.split(u'|')) {
            QVERIFY2(ParseTime(text).value_or(QTime()) == time, qPrintable(text));
        }
    }
}

void DateFieldTest::showsTheStandardFormOnceLeft()
{
    CFieldForm form; // gives the field the focus, and so selects what is in it
    QString typed;
    for (auto const letter : "1/2/2031"_ba) {
        QTest::keyClick(&form.m_day, letter);
        QCOMPARE(form.m_day.text(), typed += QLatin1Char(letter));
    }
    QCOMPARE(form.m_day.Date(), QDate(2031, 1, 2));
    form.m_name.setFocus(Qt::PopupFocusReason);
    QCOMPARE(form.m_day.text(), typed);
    form.m_day.setFocus();
    form.m_name.setFocus();
    QCOMPARE(form.m_day.text(), u"01/02/2031"_s);
    Type(form.m_time, u"6:05p"_s);
    QCOMPARE(form.m_time.text(), u"6:05p"_s);
    QTest::keyClick(&form.m_time, Qt::Key_Tab);
    QCOMPARE(form.m_time.text(), u"18:05:00"_s);
    QCOMPARE(form.m_time.Time(), QTime(18, 5));
}

void DateFieldTest::isRefusedWhenItIsLeftWrong()
{
    CMessageRecorder messages;
    CFieldForm form;
    auto& field = form.m_day;
    auto const click = [](QWidget& widget) {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, {8, widget.height() / 2});
    };
    auto const tabAndClose = [&] {
        QTest::keyClick(&field, Qt::Key_Tab);
        form.close();
    };
    std::vector<std::pair<bool, std::function<void()>>> const ways = {
        {true, [&] { QTest::keyClick(&field, Qt::Key_Tab); }},
        {true, [&] { click(form.m_time); }}, // wrong as well, and left by the refusal
        {true, [&] { QTest::keyClick(&form, Qt::Key_N, Qt::AltModifier); }},
        {true, [&] { click(*form.m_buttons.button(QDialogButtonBox::Ok)); }},
        {false, [&] { click(*form.m_buttons.button(QDialogButtonBox::Cancel)); }},
        {false, [&] { QTest::keyClick(&field, Qt::Key_Tab, Qt::ShiftModifier); }}, // to Cancel
        {false, [&] { form.m_name.setFocus(); }},
        {false, tabAndClose},
    };
    messages.m_fnWhileShown = [&] { QVERIFY(!field.hasFocus()); };
    QStringList told;
    Type(form.m_time, u"x"_s);
    for (auto const& [isTold, leave] : ways) {
        form.Show();
        Type(field, u"13/1/2026"_s);
        QVERIFY(!field.IsGood() && !field.Date().isValid());
        leave();
        QCOMPARE(messages.Texts(), told); // not in the middle of the click
        told += isTold ? QStringList{u"Enter a date, such as 11/24/2026."_s} : QStringList();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QCOMPARE(messages.Texts(), told);
        QCOMPARE(field.text(), u"13/1/2026"_s);
        QVERIFY(!isTold || (field.hasFocus() && field.selectedText() == field.text()));
    }
}

void DateFieldTest::keepsAMissingValueUntilItIsTouched()
{
    CMessageRecorder const messages;
    CFieldForm form;
    auto& field = form.m_day;
    field.SetDate({});
    QVERIFY(field.IsGood() && field.text().isEmpty());
    Type(field, u"x"_s);
    QVERIFY(!field.IsGood());
    Type(field, {});
    QVERIFY(field.IsGood()); // again as it came
    field.SetDate({2026, 11, 24});
    Type(field, u" "_s);
    QVERIFY(!field.IsGood());
    field.SetMayBeEmpty(true);
    QVERIFY(field.IsGood());

    form.m_from.SetDate(QDate(2026, 1, 2));
    Type(form.m_from.Field(), u"x"_s);
    QVERIFY(!form.m_from.IsGood());
    QPoint const box(8, form.m_hasFrom.height() / 2);
    QTest::mousePress(&form.m_hasFrom, Qt::LeftButton, {}, box);
    QCoreApplication::processEvents(); // no message comes before the button is up again
    QTest::mouseRelease(&form.m_hasFrom, Qt::LeftButton, {}, box);
    QVERIFY(!form.m_from.Date() && form.m_from.IsGood());
    QCOMPARE(messages.Texts(), QStringList());
}

void DateFieldTest::keysChangeThePartAtTheCursor()
{
    CFieldForm form;
    QMap<QChar, Qt::Key> const keys = {
        {u'u', Qt::Key_Up}, {u'd', Qt::Key_Down}, {u'n', Qt::Key_PageUp}, {u'p', Qt::Key_PageDown}};
    // The cursor at -1: all of the text is selected, as Tab does.
    using CRow = std::tuple<QLineEdit*, QString, int, QString, QString, QString>;
    std::vector<CRow> const rows = {
        {&form.m_day, u"1/31/2026"_s, -1, u"u"_s, u"02/28/2026"_s, u"02"_s},
        {&form.m_day, u"2/28/2026"_s, 0, u"dd"_s, u"01/28/2026"_s, u"01"_s},
        {&form.m_day, u"01/28/2026"_s, 4, u"uuuu"_s, u"01/31/2026"_s, u"31"_s},
        {&form.m_day, u"1/31/2026"_s, 3, u"nppp"_s, u"11/28/2025"_s, u"28"_s},
        {&form.m_day, u"2/29/2028"_s, 9, u"d"_s, u"02/28/2027"_s, u"2027"_s},
        {&form.m_day, u"2028-02-29"_s, 10, u"d"_s, u"02/28/2028"_s, u"28"_s},
        {&form.m_day, u"123199"_s, 1, u"d"_s, u"11/30/1999"_s, u"11"_s},
        {&form.m_day, u"123199"_s, 4, u"d"_s, u"12/30/1999"_s, u"30"_s},
        {&form.m_day, u"13/1/26"_s, 0, u"un"_s, u"13/1/26"_s, {}},
        {&form.m_time, u"23:59:59"_s, 0, u"un"_s, u"23:59:59"_s, u"23"_s},
        {&form.m_time, u"6:05p"_s, 5, u"d"_s, u"18:04:00"_s, u"04"_s},
        {&form.m_time, u"00:00:01"_s, 8, u"dd"_s, u"00:00:00"_s, u"00"_s},
    };
    for (auto const& [field, text, cursor, pressed, result, selected] : rows) {
        Type(*field, text);
        cursor < 0 ? field->selectAll() : field->setCursorPosition(cursor);
        for (auto const key : pressed) {
            QTest::keyClick(field, keys[key]);
        }
        QCOMPARE(field->text(), result);
        QCOMPARE(field->selectedText(), selected);
    }
    Type(form.m_day, {});
    QTest::keyClick(&form.m_day, Qt::Key_Up);
    QCOMPARE(form.m_day.Date(), QDate::currentDate());
}

void DateFieldTest::calendarChooses()
{
    CFieldForm form;
    auto& field = form.m_day;
    auto const open = [&] { return field.findChild<QCalendarWidget*>(u"calendar"_s); };
    auto const press = [&](Qt::Key key) {
        QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), key);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    QTest::keyClick(&field, Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(open()->selectedDate(), QDate(2026, 11, 24));
    press(Qt::Key_Left);
    QCOMPARE(open()->selectedDate(), QDate(2026, 11, 23));
    press(Qt::Key_Escape);
    QVERIFY(!open());
    QCOMPARE(field.text(), u"11/24/2026"_s);
    QTest::keyClick(&field, Qt::Key_F4);
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    QVERIFY(!open() && field.hasFocus());
    QCOMPARE(field.text(), u"11/25/2026"_s);
    field.undo();
    QCOMPARE(field.text(), u"11/24/2026"_s);
    field.clear();
    form.m_name.setFocus();
    field.findChild<QToolButton*>()->click();
    QCOMPARE(open()->selectedDate(), QDate::currentDate());
    Q_EMIT open()->clicked({2027, 1, 2});
    QVERIFY(field.hasFocus() && field.Date() == QDate(2027, 1, 2));
}

static CTestEntryOf<DateFieldTest> const g_entry;
#include "DateFieldTest.moc"
