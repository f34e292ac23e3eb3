#include "ui/FormFields.h"

#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FieldForm.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"
#include "ui/DateExchange.h"
#include "ui/FieldExchange.h"
#include "ui/TextLimit.h"

#include <QClipboard>
#include <QKeySequence>
#include <QMap>
#include <QMetaProperty>
#include <QScrollBar>
#include <QWheelEvent>

#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::string_literals;

/// The exchange between fields and what they edit, and the fields themselves.
class FormFieldsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyKindIsShownTakenAndCommitted();
    void datesPassUnchanged();
    void numbersAreChecked();
    void textsEndAtTheirLimit();
    void textsAtTheirLimitCanBeEdited();
    void keysAndTheWheelStep();
    void dropDownsFindBeginningsAndTellWhenTheyClose();
    void oneLineListShowsItsChoice();
};

namespace
{

using CTyped = std::pair<QWidget*, QString>; // into a field

QString TextOf(QWidget const& field)
{
    return field.metaObject()->userProperty().read(&field).toString();
}

} // namespace

void FormFieldsTest::everyKindIsShownTakenAndCommitted()
{
    CMessageRecorder const messages;
    CFieldForm form;
    CFieldValues const shown = form.Values();
    QCOMPARE(form.m_weight.text(), u"61.2"_s);
    QCOMPARE(form.m_time.text(), u"18:05:09"_s);
    QVERIFY(form.m_female.isChecked() && form.m_four.isChecked());
    QVERIFY(!form.m_yes.isChecked() && !form.m_no.isChecked());

    form.m_hasFrom.click();
    form.m_male.click();
    form.m_no.click();
    form.m_three.click();
    for (auto const& [field, text] : {CTyped(&form.m_day, u"1/2/27"_s), {&form.m_time, u"6:07p"_s},
             {&form.m_from.Field(), u"3-4-2025"_s}, {&form.m_name, u"Berta and more"_s},
             {&form.m_note, u"c"_s}, {&form.m_station, u"-9a9.9 "_s}, // digits alone are taken
             {&form.m_bonus, u"-x7"_s}, {&form.m_weight, u"70.5"_s}}) {
        Type(*field, text);
    }
    QTest::keyClick(&form.m_state, Qt::Key_Up);
    QTest::keyClick(&form.m_level, Qt::Key_Up);
    QVERIFY(form.m_fields.Take());
    QVERIFY(form.Values() == shown);
    QCOMPARE(form.m_fields.Taken(form.m_nStation), std::int16_t(999));
    form.m_fields.Commit();
    auto const noDate = u"Enter a date, such as 11/24/2026."_s;
    for (auto const& [field, text, message] :
        {std::tuple<QWidget*, QString, QString>(
             &form.m_bonus, u"100"_s, u"Enter an integer between 0 and 99."_s),
            {&form.m_from.Field(), u"2/30/1999"_s, noDate},
            {&form.m_time, u"25"_s, u"Enter a time, such as 18:05:09."_s},
            {&form.m_day, {}, noDate}}) {
        Type(*field, text); // the one before in the form is refused first
        QVERIFY(!form.m_fields.Take() && field->hasFocus());
        QCOMPARE(messages.Texts().constLast(), message);
    }
    CFieldValues const typed = {CEFOleDateTime(2027, 1, 2), CEFOleDateTime(2026, 11, 24, 18, 7, 0),
        CEFOleDateTime(2025, 3, 4), "Berta", "c", "AL", 999, 7, 70.5, true, false, 3, 1};
    QVERIFY(form.Values() == typed);

    form.m_fields.Show();
    form.m_name.clear();
    form.m_name.insert(u"A\tb\r\n"_s); // as from a cell of a table
    QVERIFY(form.m_fields.Take());
    QCOMPARE(form.m_fields.Taken(form.m_strName), "A b"s);
    form.m_bKnown.reset(); // shown again, as after a calculation
    form.m_fields.Show();
    QVERIFY(!form.m_yes.isChecked() && !form.m_no.isChecked());
    form.m_hasFrom.click();
    form.m_day.SetMayBeEmpty(true);
    form.m_day.clear();
    QVERIFY(form.m_fields.Take());
    QVERIFY(!form.m_fields.Taken(form.m_dtFrom));
    QVERIFY(!form.m_fields.Taken(form.m_dtDay).ChkStatus());
}

void FormFieldsTest::datesPassUnchanged()
{
    qputenv("TZ", "America/New_York");
    CDateField date;
    CTimeField time;
    for (auto const& stored : {CEFOleDateTime(2026, 11, 16, 23, 59, 59),
             CEFOleDateTime(2026, 3, 8, 2, 30, 0), // an hour that clocks skip in this zone
             CEFOleDateTime(1899, 12, 29, 6, 0, 0), CEFOleDateTime(), CEFOleDateTime::Invalid(),
             CEFOleDateTime(100, 1, 1), CEFOleDateTime(9999, 12, 31)}) {
        QCOMPARE(FromQt(ToQt(stored)), stored);
        ShowDate(date, stored);
        ShowTime(time, stored);
        QCOMPARE(date.text(),
            stored.ChkStatus() ? QString::fromStdString(stored.DateStrLongYear()) : QString());
        auto taken = stored;
        QVERIFY(TakeDate(date, taken) && TakeTime(time, taken));
        QCOMPARE(taken, stored);
    }
}

void FormFieldsTest::numbersAreChecked()
{
    CMessageRecorder const messages;
    CFieldForm form;
    auto& field = form.m_weight;
    auto const check = [&](auto range, QString const& texts, QString const& message) {
        for (auto const& text : texts.split(u'|')) {
            auto taken = range.greatest;
            auto const told = messages.Texts().size();
            form.m_day.setFocus();
            field.setText(text);
            bool const isTaken = TakeNumber(field, range, taken);
            QVERIFY2(isTaken == message.isEmpty(), qPrintable(text));
            QCOMPARE(messages.Texts().sliced(told).join(u'|'), message);
            QCOMPARE(double(taken), isTaken ? text.toDouble() : double(range.greatest));
            QVERIFY(isTaken || (field.hasFocus() && field.selectedText() == text));
        }
    };
    CRange<std::int32_t> const whole = {1, 999999999};
    check(whole, u"999999999|1|0000000000012| 12 "_s, {});
    check(whole, u"0|1000000000|99999999999999999999999|-3"_s,
        u"Enter an integer between 1 and 999999999."_s);
    check(whole, u"|-|12a|1.5|\u0663"_s, u"Enter an integer."_s);
    CRange<double> const real = {0.0, 99.75};
    check(real, u"99.75|0|.5"_s, {});
    check(real, u"99.76|-.1"_s, u"Enter a number between 0 and 99.75."_s);
    check(real, u"|.|1,5|1e3|nan|inf|0x10"_s, u"Enter a number."_s);
}

void FormFieldsTest::textsEndAtTheirLimit()
{
    auto const family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    auto const accents = u"A\u0308\u0301"_s;
    auto const paste = [](auto&& field, int limit, QString const& taken) {
        LimitText(field, limit);
        field.paste();
        QTRY_COMPARE(TextOf(field), taken);
        field.undo();
        QCOMPARE(TextOf(field), QString());
    };
    // A line counts letters, a memo characters.
    for (auto const& [limit, pasted, inLine, inMemo] :
        {std::tuple(5, u"Annie"_s, u"Annie"_s, u"Annie"_s), {4, u"Annie"_s, u"Anni"_s, u"Anni"_s},
            {1, accents + u"x"_s, accents, QString()},
            {4, u"a"_s + family + u"bcd"_s, u"a"_s + family + u"bc"_s, u"a"_s}}) {
        QGuiApplication::clipboard()->setText(pasted);
        paste(QLineEdit(), limit, inLine);
        paste(QPlainTextEdit(), limit, inMemo);
    }
}

void FormFieldsTest::textsAtTheirLimitCanBeEdited()
{
    QMap<QChar, QKeySequence> const keys = {{u'V', QKeySequence::Paste}, {u'Z', QKeySequence::Undo},
        {u'Y', QKeySequence::Redo}, {u'A', QKeySequence::SelectAll}, {u'E', Qt::Key_End},
        {u'H', {Qt::Key_Home, Qt::SHIFT | Qt::Key_Right, Qt::SHIFT | Qt::Key_Right}}};
    // Stored by another program, longer than the field takes, with a byte that is no text.
    auto const stored = "0123456789abcdef\xff"s;
    auto const shown = u"0123456789abcdef\uFFFD"_s;
    QGuiApplication::clipboard()->setText(u"xyz"_s);
    auto const walk = [&](auto&& field) {
        LimitText(field, 10);
        for (auto const& [pressed, text] : {std::pair(u"0123456789ab"_s, u"0123456789"_s),
                 {u"HV"_s, u"xy23456789"_s}, {u"c"_s, u"xy23456789"_s}, {u"\b"_s, u"x23456789"_s},
                 {u"Z"_s, u"xy23456789"_s}, {u"Z"_s, u"0123456789"_s}, {u"Y"_s, u"xy23456789"_s},
                 {QString(), shown}, {u"ExyV"_s, shown}, {u"\b\bx"_s, u"0123456789abcde"_s},
                 {u"Z"_s, shown}, {u"Ax"_s, u"x"_s}}) {
            if (pressed.isEmpty()) {
                ShowText(field, stored);
            }
            for (auto const key : pressed) {
                keys.contains(key) ? QTest::keySequence(&field, keys[key])
                                   : QTest::keyClick(&field, key.toLatin1());
                QCoreApplication::processEvents();
            }
            QCOMPARE(TextOf(field), text);
            QCOMPARE(TakeText(field, stored), text == shown ? stored : FromQt(text));
        }
    };
    walk(QLineEdit());
    walk(QPlainTextEdit());
}

void FormFieldsTest::keysAndTheWheelStep()
{
    CFieldForm form;
    auto const turn = [](QWidget& widget) {
        auto const centre = QPointF(widget.rect().center());
        QWheelEvent event(
            centre, widget.mapToGlobal(centre), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&widget, &event);
    };
    form.m_name.setFocus();
    for (auto* const widget : std::initializer_list<QWidget*>{
             &form.m_level, &form.m_bonus, &form.m_day, form.m_state.viewport()}) {
        turn(*widget); // in passing
    }
    QVERIFY(form.m_fields.Take());
    form.m_fields.Commit();
    QVERIFY(form.Values() == CFieldValues());
    for (auto* const field : std::initializer_list<QWidget*>{&form.m_bonus, &form.m_day}) {
        field->setFocus();
        turn(*field);
    }
    QCOMPARE(form.m_bonus.text() + u' ' + form.m_day.text(), u"4 12/24/2026"_s);
    for (auto const& [from, key, to] : {std::tuple(u"750"_s, Qt::Key_Down, u"99"_s),
             {u"99"_s, Qt::Key_Up, u"99"_s}, {QString(), Qt::Key_Up, u"0"_s}}) {
        Type(form.m_bonus, from);
        QTest::keyClick(&form.m_bonus, key);
        QCOMPARE(form.m_bonus.text(), to);
    }
}

void FormFieldsTest::dropDownsFindBeginningsAndTellWhenTheyClose()
{
    QComboBox classes;
    classes.addItems({u"Wellness"_s, u"wells"_s, u"PE 101"_s, u"PE 10"_s, u"well"_s});
    for (auto const& [text, row] : {std::pair(u"WELLS"_s, 1), {QString(), -1},
             {u"pe 10"_s, 3}, // not the one that only begins so
             {u"PE 1012"_s, -1}, {u"wel"_s, 0}}) {
        QCOMPARE(SelectBeginning(classes, text), row >= 0);
        QCOMPARE(classes.currentIndex(), row);
    }
    CFieldForm form;
    auto& list = form.m_level;
    QStringList seen;
    connect(&list, &CDropDown::Closed, &list, [&] { seen += list.currentText(); });
    for (auto const key : {Qt::Key_Return, Qt::Key_Escape}) {
        auto const before = seen;
        Choose(list, 0, key);
        QTRY_COMPARE(seen, before + QStringList{u"0"_s});
    }
    QTest::keyClick(&list, Qt::Key_Down); // chosen while closed
    list.setCurrentIndex(2);
    QCOMPARE(seen, (QStringList{u"0"_s, u"0"_s, u"1"_s}));
}

void FormFieldsTest::oneLineListShowsItsChoice()
{
    CFieldForm form;
    auto& list = form.m_state;
    list.Select(-1);
    QTest::mouseClick(list.viewport(), Qt::LeftButton); // takes the focus and chooses nothing
    QVERIFY(list.hasFocus() && list.SelectedText().isEmpty());
    for (auto const& [key, text] : {std::pair(Qt::Key_I, u"IL"_s), {Qt::Key_Up, u"AL"_s}}) {
        QTest::keyClick(&list, key);
        QCOMPARE(list.SelectedText(), text);
        QVERIFY(list.viewport()->rect().contains(list.visualItemRect(list.currentItem()).center()));
    }
    list.verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QCOMPARE(list.SelectedText(), u"IL"_s);
    QTest::keyClick(&list, Qt::Key_Delete);
    QCOMPARE(list.SelectedText(), QString());
}

static CTestEntryOf<FormFieldsTest> const g_entry;
#include "FormFieldsTest.moc"
