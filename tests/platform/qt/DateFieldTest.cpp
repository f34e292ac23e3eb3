#include "platform/qt/DateField.h"
#include "platform/qt/TimeField.h"
#include "tests/QtTests.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <functional>

using namespace Qt::StringLiterals;

class DateFieldTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsWhatAClerkTypes_data();
    void readsWhatAClerkTypes();
    void readsTimes_data();
    void readsTimes();
    void showsTheStandardFormOnceLeft();
    void tellsWhenItIsLeftWrong();
    void keepsAMissingValueUntilItIsTouched();
    void keysAndWheelChangeThePartAtTheCursor();
    void calendarChooses();
};

namespace
{

/// Three fields and a button box in a window.
class CForm : public QWidget
{
public:
    CForm()
    {
        auto* const label = new QLabel(u"&Other"_s);
        label->setBuddy(&m_other);
        auto* const layout = new QHBoxLayout(this);
        for (auto* const widget : std::initializer_list<QWidget*>{
                 &m_date, &m_optional, &m_time, label, &m_other, &m_buttons}) {
            layout->addWidget(widget);
        }
        m_date.SetDate({2026, 11, 24});
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qWarning("the window is not active");
        }
        m_date.setFocus();
    }

    CDateField m_date;
    COptionalDateField m_optional;
    CTimeField m_time;
    QLineEdit m_other;
    QDialogButtonBox m_buttons{QDialogButtonBox::Ok | QDialogButtonBox::Cancel};
};

void Retype(QLineEdit& field, QString const& text)
{
    field.setFocus();
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

void TypeInto(QLineEdit& field, std::initializer_list<Qt::Key> keys)
{
    for (auto const key : keys) {
        QTest::keyClick(&field, key);
    }
}

} // namespace

void DateFieldTest::readsWhatAClerkTypes_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<bool>("isBirthday");
    auto const rows
        = [](QDate const& date, QList<char const*> const& texts, bool isBirthday = false) {
              for (auto const* const text : texts) {
                  QTest::newRow(text) << date << isBirthday;
              }
          };
    rows({1990, 10, 10},
        {"10/10/1990", "10101990", "10 10 1990", " 10-10-1990\r\n", "10. 10. 1990"});
    rows({1985, 3, 4}, {"3/4/1985", "03.04.1985", "3-04-1985", "03041985", "3/4/85"});
    rows({1985, 5, 6}, {"050685", "05/06/85"}, true);
    rows({2026, 12, 31},
        {"12/31/2026", "12/31/26", "123126", "12 31 26", "2026-12-31", "2026/12/31",
            "2026-12-31T10:00", "2026-12-31 18:05:09", "2026-12-31T10:00:00.5+01:00",
            "12/31/2026 18:05:09", "12/31/26 6:05 PM"});
    // The year of two digits nearest to 2026, and the latest that lets a birthday be in the past.
    rows({1976, 1, 2}, {"1/2/76"});
    rows({2075, 1, 2}, {"1/2/75"});
    rows({1975, 1, 2}, {"1-2-75"}, true);
    rows({2026, 11, 25}, {"11/25/26"}, true);
    rows({1926, 11, 26}, {"11/26/26"}, true);
    rows({1927, 1, 2}, {"1/2/27"}, true);
    rows({2000, 2, 29}, {"2/29/00"}, true);
    rows({100, 1, 1}, {"01/01/0100"});
    rows({9999, 12, 31}, {"12/31/9999"});
    rows({},
        {"", " ", "11/24", "11/24/", "11/24/6", "11/24/026", "11/24/0099", "11/24/20266", "2/29/26",
            "13/1/2026", "0/1/2026", "1/0/2026", "31/12/2026", "2026-13-01", "20261124", "11242",
            "1124202", "112420266", "11//24/2026", "11/24/2026x", "x11/24/2026", "11/24/2026 18",
            "today", "1\u0661/24/2026", "-1/24/2026"});
}

void DateFieldTest::readsWhatAClerkTypes()
{
    QFETCH(QDate const, date);
    QFETCH(bool const, isBirthday);
    auto const rule = isBirthday ? CShortYear::neverInFuture : CShortYear::nearest;
    auto const text = QString::fromUtf8(QTest::currentDataTag());
    QCOMPARE(ParseDate(text, {2026, 11, 25}, rule).value_or(QDate()), date);
}

void DateFieldTest::readsTimes_data()
{
    QTest::addColumn<QTime>("time");
    auto const rows = [](QTime const& time, QList<char const*> const& texts) {
        for (auto const* const text : texts) {
            QTest::newRow(text) << time;
        }
    };
    rows({18, 5, 9},
        {"18:05:09", "180509", "6:05:09 PM", "60509p", "18.05.09", "18 05 09", " 18: 05:09\n"});
    rows({18, 5}, {"18:05", "1805", "6:05p", "6:05 pm", "605p", "6.05 p.m."});
    rows({6, 5}, {"6:05", "605", "0605", "6:05a"});
    rows({18, 0}, {"18", "6p", "6 PM", "18:00"});
    rows({12, 0}, {"12p", "12:00pm"});
    rows({0, 0}, {"12:00am", "12a", "0", "0:00"});
    rows({23, 59, 59}, {"23:59:59"});
    rows({},
        {"", "24:00", "24", "2400", "13p", "0:05am", "18:60", "18:05:60", "18:5", "18:", "pm",
            "1:2:3", "18:05:09:01", "1805091", "6:05x", "-6:05"});
}

void DateFieldTest::readsTimes()
{
    QFETCH(QTime const, time);
    QCOMPARE(ParseTime(QString::fromUtf8(QTest::currentDataTag())).value_or(QTime()), time);
}

void DateFieldTest::showsTheStandardFormOnceLeft()
{
    CForm form;
    QString seen;
    connect(
        &form.m_date, &QLineEdit::textChanged, &form, [&](QString const& text) { seen = text; });
    form.m_date.selectAll();
    QString typed;
    for (auto const letter : "1/2/2031"_ba) {
        QTest::keyClick(&form.m_date, letter);
        typed += QLatin1Char(letter);
        QCOMPARE(seen, typed);
    }
    QCOMPARE(form.m_date.Date(), QDate(2031, 1, 2));
    form.m_other.setFocus(Qt::PopupFocusReason);
    QCOMPARE(seen, typed);
    form.m_date.setFocus();
    form.m_other.setFocus();
    QCOMPARE(seen, u"01/02/2031"_s);

    Retype(form.m_time, u"6:05p"_s);
    QCOMPARE(form.m_time.text(), u"6:05p"_s);
    QTest::keyClick(&form.m_time, Qt::Key_Tab);
    QCOMPARE(form.m_time.text(), u"18:05:00"_s);
    QCOMPARE(form.m_time.Time(), QTime(18, 5));
}

void DateFieldTest::tellsWhenItIsLeftWrong()
{
    CForm form;
    auto& field = form.m_date;
    QSignalSpy const left(&field, &CPartsField::LeftWrong);
    using CWay = std::function<void()>;
    std::pair<CWay, int> const ways[] = {
        {[&] { QTest::keyClick(&field, Qt::Key_Tab); }, 1},
        {[&] { QTest::keyClick(&field, Qt::Key_Tab, Qt::ShiftModifier); }, 0}, // to Cancel
        {[&] { QTest::mouseClick(&form.m_other, Qt::LeftButton); }, 1},
        {[&] { QTest::keyClick(&form, Qt::Key_O, Qt::AltModifier); }, 1},
        {[&] { QTest::mouseClick(form.m_buttons.button(QDialogButtonBox::Ok), Qt::LeftButton); },
            1},
        {[&] {
             QTest::mouseClick(form.m_buttons.button(QDialogButtonBox::Cancel), Qt::LeftButton);
         },
            0},
        {[&] { form.m_other.setFocus(); }, 0},
        {[&] {
             QTest::keyClick(&field, Qt::Key_F4);
             QApplication::activePopupWidget()->close();
         },
            0},
        {[&] {
             QWidget window;
             window.show();
             window.activateWindow();
             QVERIFY(QTest::qWaitForWindowActive(&window));
         },
            0},
        {[&] { form.hide(); }, 0},
    };
    qsizetype expected = 0;
    for (auto const& [leave, told] : ways) {
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        Retype(field, u"13/1/2026"_s);
        QVERIFY(!field.IsGood() && !field.Date().isValid());
        leave();
        expected += told;
        QCOMPARE(left.size(), expected);
        QCOMPARE(field.text(), u"13/1/2026"_s);
    }
}

void DateFieldTest::keepsAMissingValueUntilItIsTouched()
{
    CForm form;
    auto& field = form.m_date;
    field.SetDate({});
    QVERIFY(field.IsGood() && field.text().isEmpty());
    Retype(field, u"x"_s);
    QVERIFY(!field.IsGood());
    Retype(field, {});
    QVERIFY(field.IsGood()); // again as it came
    field.SetDate({2026, 11, 24});
    Retype(field, u" "_s);
    QVERIFY(!field.IsGood());
    field.SetMayBeEmpty(true);
    QVERIFY(field.IsGood());

    auto& check = *form.m_optional.findChild<QCheckBox*>();
    auto& optional = form.m_optional.Field();
    form.m_optional.SetDate(QDate(2026, 1, 2));
    QSignalSpy const left(&optional, &CPartsField::LeftWrong);
    Retype(optional, u"x"_s);
    QVERIFY(!form.m_optional.IsGood());
    QTest::mouseClick(&check, Qt::LeftButton, {}, {8, check.height() / 2});
    QVERIFY(!form.m_optional.Date() && form.m_optional.IsGood());
    QCOMPARE(left.size(), 0);
}

void DateFieldTest::keysAndWheelChangeThePartAtTheCursor()
{
    CForm form;
    auto& date = form.m_date;
    date.SetDate({2026, 1, 31});
    date.selectAll(); // as Tab does
    TypeInto(date, {Qt::Key_Up});
    QCOMPARE(date.text(), u"02/28/2026"_s);
    QCOMPARE(date.selectedText(), u"02"_s);
    TypeInto(date, {Qt::Key_Down, Qt::Key_Down});
    QCOMPARE(date.text(), u"01/28/2026"_s); // stops at the end of the part
    date.setCursorPosition(4);
    TypeInto(date, {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up});
    QCOMPARE(date.text(), u"01/31/2026"_s);
    TypeInto(date, {Qt::Key_PageUp});
    QCOMPARE(date.text(), u"02/28/2026"_s);
    TypeInto(date, {Qt::Key_PageDown, Qt::Key_PageDown});
    QCOMPARE(date.text(), u"12/28/2025"_s);
    date.undo();
    QVERIFY(date.text() != u"12/28/2025"_s);
    Retype(date, u"2/29/2028"_s);
    TypeInto(date, {Qt::Key_Down});
    QCOMPARE(date.text(), u"02/28/2027"_s);
    QCOMPARE(date.selectedText(), u"2027"_s);
    Retype(date, u"2028-02-29"_s);
    TypeInto(date, {Qt::Key_Up});
    QCOMPARE(date.text(), u"02/29/2028"_s);
    Retype(date, u"123199"_s);
    TypeInto(date, {Qt::Key_Home, Qt::Key_Down});
    QCOMPARE(date.text(), u"11/30/1999"_s);
    Retype(date, u"13/1/26"_s);
    TypeInto(date, {Qt::Key_Up, Qt::Key_PageUp});
    QCOMPARE(date.text(), u"13/1/26"_s);

    auto& time = form.m_time;
    time.SetTime({23, 59, 59});
    for (auto const& [position, text] :
        {std::pair(0, u"22:59:59"_s), {4, u"22:58:59"_s}, {8, u"22:58:58"_s}}) {
        time.setCursorPosition(position);
        TypeInto(time, {Qt::Key_Down});
        QCOMPARE(time.text(), text);
    }
    TypeInto(time, {Qt::Key_PageUp, Qt::Key_PageUp});
    QCOMPARE(time.Time(), QTime(23, 58, 58));
}

void DateFieldTest::calendarChooses()
{
    CForm form;
    auto& field = form.m_date;
    auto const open = [&] {
        auto* const calendar = field.findChild<QCalendarWidget*>(u"calendar"_s);
        return calendar != nullptr && calendar->isVisible() ? calendar : nullptr;
    };
    auto const press = [&](Qt::Key key) {
        auto* const focus = QApplication::activePopupWidget()->focusWidget();
        QTest::keyClick(focus, key);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    QTest::keyClick(&field, Qt::Key_Down, Qt::AltModifier);
    QVERIFY(open());
    QCOMPARE(open()->selectedDate(), QDate(2026, 11, 24));
    press(Qt::Key_Left);
    QCOMPARE(open()->selectedDate(), QDate(2026, 11, 23));
    press(Qt::Key_Escape);
    QVERIFY(!open());
    QCOMPARE(field.text(), u"11/24/2026"_s);
    QTest::keyClick(&field, Qt::Key_F4);
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    QVERIFY(!open());
    QCOMPARE(field.text(), u"11/25/2026"_s);
    QVERIFY(field.hasFocus());
    field.undo();
    QCOMPARE(field.text(), u"11/24/2026"_s);
    field.clear();
    field.findChild<QToolButton*>()->click();
    QCOMPARE(open()->selectedDate(), QDate::currentDate());
    Q_EMIT open()->clicked({2027, 1, 2});
    QCOMPARE(field.Date(), QDate(2027, 1, 2));
}

CORVANA_TEST(DateFieldTest);
#include "DateFieldTest.moc"
