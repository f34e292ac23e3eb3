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
#include <QKeySequence>
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
    void isRefusedWhenItIsLeftWrong();
    void keepsAMissingValueUntilItIsTouched();
    void keysChangeThePartAtTheCursor();
    void calendarChooses();
};

void DateFieldTest::readsWhatAClerkTypes()
{
    auto const nearest = CShortYear::nearest;
    auto const past = CShortYear::neverInFuture;
    using CDate = std::tuple<QDate, CShortYear, QString>;
    for (auto const& [date, rule, texts] :
        {CDate({1990, 10, 10}, nearest,
             u"10/10/1990|10101990|10 10 1990| 10-10-1990\r\n|10. 10. 1990"_s),
            {{1985, 3, 4}, nearest, u"3/4/1985|03.04.1985|3-04-1985|03041985|3/4/85"_s},
            {{2026, 12, 31}, nearest,
                u"12/31/2026|12/31/26|123126|12 31 26|2026-12-31|2026/12/31|2026-12-31T10:00|"
                "2026-12-31 18:05:09|2026-12-31T10:00:00.5+01:00|12/31/26 6:05 PM"_s},
            {{100, 1, 1}, nearest, u"01/01/0100"_s}, {{9999, 12, 31}, nearest, u"12/31/9999"_s},
            {{}, nearest,
                u"|11/24|11/24/|11/24/6|11/24/026|11/24/0099|11/24/20266|2/29/26|13/1/2026|1/0/"
                u"2026|"
                "2026-13-01|20261124|1124202|112420266|11//24/2026|11/24/2026x|11/24/2026 18|"
                "1\u0661/24/2026|-1/24/2026"_s},
            // The year nearest to 2026, and the latest that leaves a birthday in the past.
            {{1976, 1, 2}, nearest, u"1/2/76"_s}, {{2075, 1, 2}, nearest, u"1/2/75"_s},
            {{1975, 1, 2}, past, u"1-2-75"_s}, {{1985, 5, 6}, past, u"050685|05/06/85"_s},
            {{2026, 11, 25}, past, u"11/25/26"_s}, {{1926, 11, 26}, past, u"11/26/26"_s},
            {{2000, 2, 29}, past, u"2/29/00"_s}}) {
        for (auto const& text : texts.split(u'|')) {
            auto const read = ParseDate(text, {2026, 11, 25}, rule).value_or(QDate());
            QVERIFY2(read == date, qPrintable(text));
        }
    }
    using CTime = std::pair<QTime, QString>;
    for (auto const& [time, texts] :
        {CTime({18, 5, 9}, u"18:05:09|180509|6:05:09 PM|60509p|18.05.09|18 05 09| 18: 05:09\n"_s),
            {{18, 5}, u"18:05|1805|6:05p|6:05 pm|605p|6.05 p.m."_s},
            {{6, 5}, u"6:05|605|0605|6:05a"_s}, {{18, 0}, u"18|6p|6 PM|18:00"_s},
            {{12, 0}, u"12p|12:00pm"_s}, {{0, 0}, u"12:00am|12a|0|0:00"_s},
            {{23, 59, 59}, u"23:59:59"_s},
            {{},
                u"|24:00|24|2400|13p|0:05am|18:60|18:05:60|18:5|18:|pm|1:2:3|18:05:09:01|1805091|"
                "6:05x|-6:05"_s}}) {
        for (auto const& text : texts.split(u'|')) {
            QVERIFY2(ParseTime(text).value_or(QTime()) == time, qPrintable(text));
        }
    }
}

void DateFieldTest::isRefusedWhenItIsLeftWrong()
{
    CMessageRecorder messages;
    CFieldForm form;
    auto& field = form.m_day;
    auto const click = [](QWidget& widget) {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, {8, widget.height() / 2});
    };
    std::vector<std::pair<bool, std::function<void()>>> const ways = {
        {true, [&] { QTest::keyClick(&field, Qt::Key_Tab); }},
        {true, [&] { click(form.m_time); }}, // wrong as well, and left by the refusal
        {true, [&] { QTest::keyClick(&form, Qt::Key_N, Qt::AltModifier); }},
        {true, [&] { click(*form.m_buttons.button(QDialogButtonBox::Ok)); }},
        {false, [&] { click(*form.m_buttons.button(QDialogButtonBox::Cancel)); }},
        {false, [&] { QTest::keyClick(&field, Qt::Key_Tab, Qt::ShiftModifier); }}, // to Cancel
        {false, [&] { form.m_name.setFocus(); }},
        {false, [&] { QTest::keyClick(&field, Qt::Key_Tab), form.close(); }},
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
    for (bool const isMissing : {true, false}) {
        field.SetDate(isMissing ? QDate() : QDate(2026, 11, 24));
        QVERIFY(field.IsGood() && field.text().isEmpty() == isMissing);
        Type(field, u"x"_s);
        QVERIFY(!field.IsGood());
        Type(field, QString(isMissing ? 0 : 1, u' ')); // again as it came, or not
        QCOMPARE(field.IsGood(), isMissing);
    }
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
    // A text, the cursor in it (at -1 all is selected, as Tab does), the keys, what it becomes and
    // what is selected then.
    auto const rows = u"1/31/2026 -1 u 02/28/2026 02|2/28/2026 0 dd 01/28/2026 01|"
                      "01/28/2026 4 uuuu 01/31/2026 31|1/31/2026 3 nppp 11/28/2025 28|"
                      "2/29/2028 9 d 02/28/2027 2027|2028-02-29 10 d 02/28/2028 28|"
                      "123199 1 d 11/30/1999 11|123199 4 d 12/30/1999 30|13/1/26 0 un 13/1/26 |"
                      "23:59:59 0 un 23:59:59 23|6:05p 5 d 18:04:00 04|00:00:01 8 dd 00:00:00 00"_s;
    for (auto const& row : rows.split(u'|')) {
        auto const part = row.split(u' ');
        auto& field = part[0].contains(u':') ? static_cast<QLineEdit&>(form.m_time) : form.m_day;
        Type(field, part[0]);
        part[1] == u"-1" ? field.selectAll() : field.setCursorPosition(part[1].toInt());
        for (auto const key : part[2]) {
            QTest::keyClick(&field, keys[key]);
        }
        QCOMPARE(field.text() + u' ' + field.selectedText(), part[3] + u' ' + part[4]);
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
    for (auto const& [opening, closing, text] :
        {std::tuple(QKeySequence(Qt::ALT | Qt::Key_Down), Qt::Key_Escape, u"11/24/2026"_s),
            {Qt::Key_F4, Qt::Key_Return, u"11/25/2026"_s}}) {
        QTest::keySequence(&field, opening);
        QCOMPARE(open()->selectedDate(), QDate(2026, 11, 24));
        for (auto const key : {Qt::Key_Right, closing}) {
            QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), key);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!open() && field.hasFocus());
        QCOMPARE(field.text(), text);
    }
    Type(field, u"1/2/2031"_s);
    form.m_name.setFocus();
    QCOMPARE(field.text(), u"01/02/2031"_s); // in the standard form once it is left
    field.clear();
    field.findChild<QToolButton*>()->click();
    QCOMPARE(open()->selectedDate(), QDate::currentDate());
    Q_EMIT open()->clicked({2027, 1, 2});
    QVERIFY(field.hasFocus() && field.Date() == QDate(2027, 1, 2));
}

static CTestEntryOf<DateFieldTest> const g_entry;
#include "DateFieldTest.moc"
