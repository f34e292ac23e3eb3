#include "ui/FieldExchange.h"

#include "platform/qt/DateField.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/SpinField.h"
#include "platform/qt/TimeField.h"
#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FileRecorder.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/DateExchange.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace std::string_literals;

class FieldExchangeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void numbersAreChecked();
    void textsEndAtTheirLimit_data();
    void textsEndAtTheirLimit();
    void textsAtTheirLimitCanBeEdited();
    void datesAndTimesAreTakenOrRefused();
    void wrongDatesAreRefusedWhenLeft();
    void numberFieldsTakeDigitsAndStopAtTheEnds();
    void dropDownsTellWhenTheyClose();
    void oneLineListShowsItsChoice();
    void beginningsAreFound();
    void theWheelChangesNothingInPassing();
    void filesAreAskedForInOnePlace();
};

void FieldExchangeTest::numbersAreChecked()
{
    CMessageRecorder const messages;
    QWidget window;
    QLineEdit field(&window);
    QLineEdit other(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto const check = [&](auto taken, auto range, QString const& text, QString const& message) {
        auto const before = taken;
        auto const told = messages.Texts().size();
        other.setFocus();
        field.setText(text);
        QCOMPARE(TakeNumber(field, range, taken), message.isEmpty());
        QCOMPARE(messages.Texts().sliced(told),
            message.isEmpty() ? QStringList() : QStringList{message});
        if (message.isEmpty()) {
            QCOMPARE(double(taken), text.toDouble());
        } else {
            QCOMPARE(taken, before);
            QVERIFY(field.hasFocus());
            QCOMPARE(field.selectedText(), text);
        }
    };
    using CWhole = CRange<std::int32_t>;
    using CReal = CRange<double>;
    for (auto const& text : {u"1"_s, u"999999999"_s, u"0000000000012"_s, u" 12 "_s}) {
        check(5, CWhole{1, 999999999}, text, {});
    }
    auto const range = u"Enter an integer between 1 and 999999999."_s;
    for (auto const& text : {u"0"_s, u"1000000000"_s, u"99999999999999999999999"_s, u"-3"_s}) {
        check(5, CWhole{1, 999999999}, text, range);
    }
    for (auto const& text : {u""_s, u"-"_s, u"12a"_s, u"1.5"_s, u"\u0663"_s}) {
        check(5, CWhole{1, 999999999}, text, u"Enter an integer."_s);
    }
    for (auto const& text : {u"0"_s, u".5"_s, u"99.75"_s}) {
        check(-1.0, CReal{0.0, 99.75}, text, {});
    }
    for (auto const& text : {u""_s, u"."_s, u"1,5"_s, u"1e3"_s, u"nan"_s, u"inf"_s, u"0x10"_s}) {
        check(-1.0, CReal{0.0, 99.75}, text, u"Enter a number."_s);
    }
    check(-1.0, CReal{0.0, 99.75}, u"99.76"_s, u"Enter a number between 0 and 99.75."_s);
}

void FieldExchangeTest::textsEndAtTheirLimit_data()
{
    QTest::addColumn<int>("letters");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("inLine"); // counts letters
    QTest::addColumn<QString>("inMemo"); // counts characters
    auto const face = u"\U0001F600"_s;
    auto const family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    auto const accents = u"A\u0308\u0301"_s;
    QTest::newRow("fits") << 5 << u"Annie"_s << u"Annie"_s << u"Annie"_s;
    QTest::newRow("too long") << 4 << u"Annie"_s << u"Anni"_s << u"Anni"_s;
    QTest::newRow("beyond U+FFFF")
        << 12 << face.repeated(13) << face.repeated(12) << face.repeated(12);
    QTest::newRow("one such") << 1 << face + u"x"_s << face << face;
    QTest::newRow("accents") << 1 << accents + u"x"_s << accents << QString();
    QTest::newRow("one of many parts")
        << 4 << u"a"_s + family + u"bcd"_s << u"a"_s + family + u"bc"_s << u"a"_s;
}

void FieldExchangeTest::textsEndAtTheirLimit()
{
    QFETCH(int const, letters);
    QFETCH(QString const, pasted);
    QFETCH(QString const, inLine);
    QFETCH(QString const, inMemo);
    QGuiApplication::clipboard()->setText(pasted);
    QLineEdit line;
    LimitText(line, letters);
    line.paste();
    QTRY_COMPARE(line.text(), inLine);
    QCOMPARE(TakeText(line, "stored"), inLine.toStdString());
    line.undo();
    QCOMPARE(line.text(), QString());
    QPlainTextEdit memo;
    LimitText(memo, letters);
    memo.paste();
    QCOMPARE(memo.toPlainText(), inMemo);
    memo.undo();
    QCOMPARE(memo.toPlainText(), QString());
}

void FieldExchangeTest::textsAtTheirLimitCanBeEdited()
{
    auto const walk = [](auto& field, auto const& text) {
        LimitText(field, 10);
        QTest::keyClicks(&field, u"0123456789ab"_s);
        QCOMPARE(text(), u"0123456789"_s);
        QTest::keyClick(&field, Qt::Key_Home);
        QTest::keyClick(&field, Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(&field, Qt::Key_Right, Qt::ShiftModifier);
        QGuiApplication::clipboard()->setText(u"xyz"_s);
        field.paste();
        QTRY_COMPARE(text(), u"xy23456789"_s);
        QTest::keyClicks(&field, u"c"_s);
        QCOMPARE(text(), u"xy23456789"_s);
        QTest::keyClick(&field, Qt::Key_Backspace);
        QCOMPARE(text(), u"x23456789"_s);
        field.undo();
        QCOMPARE(text(), u"xy23456789"_s);
        field.undo();
        QCOMPARE(text(), u"0123456789"_s);
        field.redo();
        QCOMPARE(text(), u"xy23456789"_s);

        // Stored by another program, longer than the field takes, with a byte that is no text.
        auto const stored = "0123456789abcdef\xff"s;
        ShowText(field, stored);
        QTest::keyClick(&field, Qt::Key_End);
        auto const shown = text();
        QCOMPARE(shown.size(), 17);
        QTest::keyClicks(&field, u"xy"_s);
        field.paste();
        QCoreApplication::processEvents();
        QCOMPARE(text(), shown);
        QCOMPARE(TakeText(field, stored), stored);
        QTest::keyClick(&field, Qt::Key_Backspace);
        QTest::keyClick(&field, Qt::Key_Backspace);
        QTest::keyClicks(&field, u"x"_s);
        QCOMPARE(text(), u"0123456789abcde"_s);
        QCOMPARE(TakeText(field, stored), "0123456789abcde"s);
        field.undo();
        QCOMPARE(text(), shown);
        QCOMPARE(TakeText(field, stored), stored);
        field.selectAll();
        QTest::keyClicks(&field, u"x"_s);
        QCOMPARE(text(), u"x"_s);
    };
    QLineEdit line;
    walk(line, [&] { return line.text(); });
    QPlainTextEdit memo;
    walk(memo, [&] { return memo.toPlainText(); });
}

void FieldExchangeTest::datesAndTimesAreTakenOrRefused()
{
    CMessageRecorder const messages;
    CDateField date;
    CTimeField time;
    for (auto const& stored : {CEFOleDateTime(2026, 11, 24, 18, 5, 9), CEFOleDateTime(),
             CEFOleDateTime::Invalid(), CEFOleDateTime(100, 1, 1), CEFOleDateTime(9999, 12, 31)}) {
        ShowDate(date, stored);
        ShowTime(time, stored);
        QCOMPARE(date.text(),
            stored.ChkStatus() ? QString::fromStdString(stored.DateStrLongYear()) : QString());
        auto taken = stored;
        QVERIFY(TakeDate(date, taken) && TakeTime(time, taken));
        QCOMPARE(taken, stored);
    }
    CEFOleDateTime value(2026, 11, 24, 18, 5, 9);
    Type(date, u"2/30/1999"_s);
    Type(time, {});
    QVERIFY(!TakeDate(date, value) && !TakeTime(time, value));
    QCOMPARE(value, CEFOleDateTime(2026, 11, 24, 18, 5, 9));
    QCOMPARE(messages.Texts().size(), 2);
    date.SetMayBeEmpty(true);
    Type(date, {});
    QVERIFY(TakeDate(date, value) && !value.ChkStatus());

    COptionalDateField optional;
    std::optional<CEFOleDateTime> choice;
    ShowOptionalDate(optional, choice);
    Child<QLineEdit>(optional, "field").setText(u"x"_s);
    QVERIFY(TakeOptionalDate(optional, choice) && !choice);
    Child<QCheckBox>(optional, "check").click();
    QVERIFY(!TakeOptionalDate(optional, choice) && !choice);
    Type(optional.Field(), u"1/2/2026"_s);
    QVERIFY(TakeOptionalDate(optional, choice));
    QCOMPARE(choice.value(), CEFOleDateTime(2026, 1, 2));
    Child<QCheckBox>(optional, "check").click();
    QVERIFY(TakeOptionalDate(optional, choice) && !choice);
}

void FieldExchangeTest::wrongDatesAreRefusedWhenLeft()
{
    CMessageRecorder messages;
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const date = new CDateField;
    auto* const time = new CTimeField;
    auto* const other = new QLineEdit;
    for (QLineEdit* const field :
        {static_cast<QLineEdit*>(date), static_cast<QLineEdit*>(time), other}) {
        layout->addWidget(field);
    }
    RefuseWhenLeft(*date);
    RefuseWhenLeft(*time);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    messages.m_fnWhileShown = [&] { QVERIFY(!date->hasFocus()); };
    Type(*time, u"x"_s);
    Type(*date, u"12/31/"_s);
    QTest::mouseClick(time, Qt::LeftButton);
    QCOMPARE(messages.Texts(), QStringList()); // not in the middle of the click
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(messages.Texts(), QStringList{u"Enter a date, such as 11/24/2026."_s});
    QVERIFY(date->hasFocus());
    QCOMPARE(date->selectedText(), u"12/31/"_s);
    QTest::keyClick(date, Qt::Key_Tab);
    window.close();
    QCoreApplication::processEvents();
    QCOMPARE(messages.Texts().size(), 1);
}

void FieldExchangeTest::numberFieldsTakeDigitsAndStopAtTheEnds()
{
    QLineEdit field;
    TakeDigitsOnly(field);
    QTest::keyClicks(&field, u"-1a2.3 4"_s);
    QCOMPARE(field.text(), u"1234"_s);
    CSpinField spin;
    spin.SetRange(0, 99);
    spin.SetValue(7);
    spin.Edit()->setCursorPosition(1);
    QTest::keyClicks(&spin, u"-x50"_s);
    QTest::keyClick(&spin, Qt::Key_Tab);
    QCOMPARE(spin.text(), u"750"_s); // out of range, and kept for the check to see
    for (auto const& [from, key, to] : {std::tuple(u"750"_s, Qt::Key_Down, u"99"_s),
             {u"99"_s, Qt::Key_Up, u"99"_s}, {u"1"_s, Qt::Key_Down, u"0"_s},
             {u"0"_s, Qt::Key_Down, u"0"_s}, {QString(), Qt::Key_Up, u"0"_s}}) {
        spin.Edit()->setText(from);
        QTest::keyClick(&spin, key);
        QCOMPARE(spin.text(), to);
    }
}

void FieldExchangeTest::dropDownsTellWhenTheyClose()
{
    CDropDown list;
    list.addItems({u"A"_s, u"B"_s, u"C"_s});
    list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    QSignalSpy const closed(&list, &CDropDown::Closed);
    QStringList seen;
    connect(&list, &CDropDown::Closed, &list, [&] { seen += list.currentText(); });

    list.showPopup();
    QTest::keyClick(list.view(), Qt::Key_Down);
    QTest::keyClick(list.view(), Qt::Key_Down);
    QCOMPARE(closed.size(), 0);
    QTest::keyClick(list.view(), Qt::Key_Return);
    QTRY_COMPARE(closed.size(), 1);
    list.showPopup();
    QTest::keyClick(list.view(), Qt::Key_Escape);
    QTRY_COMPARE(closed.size(), 2);
    QTest::keyClick(&list, Qt::Key_Up); // chosen while closed
    QCOMPARE(closed.size(), 3);
    QCOMPARE(seen, (QStringList{u"C"_s, u"C"_s, u"B"_s}));
    list.setCurrentIndex(2);
    QCoreApplication::processEvents();
    QCOMPARE(closed.size(), 3);
}

void FieldExchangeTest::oneLineListShowsItsChoice()
{
    COneLineList list;
    list.addItems({u"AK"_s, u"AL"_s, u"IL"_s});
    list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    list.clearFocus();
    QTest::mouseClick(list.viewport(), Qt::LeftButton); // takes the focus and chooses nothing
    QTest::mouseDClick(list.viewport(), Qt::LeftButton);
    QVERIFY(list.hasFocus());
    QCOMPARE(list.SelectedText(), QString());
    QTest::keyClicks(&list, u"i"_s);
    QCOMPARE(list.SelectedText(), u"IL"_s);
    QVERIFY(list.viewport()->rect().contains(list.visualItemRect(list.currentItem()).center()));
    QTest::keyClick(&list, Qt::Key_Up);
    QCOMPARE(list.SelectedText(), u"AL"_s);
    list.verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QCOMPARE(list.SelectedText(), u"IL"_s);
    QTest::keyClick(&list, Qt::Key_Delete);
    QCOMPARE(list.SelectedText(), QString());
}

void FieldExchangeTest::beginningsAreFound()
{
    QComboBox list;
    list.addItems({u"Wellness"_s, u"wells"_s, u"PE 101"_s, u"PE 10"_s, u"well"_s});
    QVERIFY(SelectBeginning(list, u"WELLS"_s));
    QCOMPARE(list.currentIndex(), 1);
    QVERIFY(SelectBeginning(list, u"pe 10"_s)); // not the one that only begins so
    QCOMPARE(list.currentIndex(), 3);
    QVERIFY(SelectBeginning(list, u"wel"_s));
    QCOMPARE(list.currentIndex(), 0);
    QVERIFY(!SelectBeginning(list, u"PE 1012"_s));
    QCOMPARE(list.currentIndex(), -1);
    QVERIFY(!SelectBeginning(list, u""_s));
}

void FieldExchangeTest::theWheelChangesNothingInPassing()
{
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const first = new QLineEdit;
    auto* const list = new CDropDown;
    auto* const spin = new CSpinField;
    auto* const date = new CDateField;
    auto* const state = new COneLineList;
    for (QWidget* const widget : std::initializer_list<QWidget*>{first, list, spin, date, state}) {
        layout->addWidget(widget);
    }
    list->addItems({u"A"_s, u"B"_s});
    state->addItems({u"AK"_s, u"AL"_s});
    state->Select(0);
    spin->SetValue(5);
    date->SetDate(QDate(2026, 11, 24));
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto const turn = [](QWidget& widget) {
        auto const centre = QPointF(widget.rect().center());
        QWheelEvent event(
            centre, widget.mapToGlobal(centre), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&widget, &event);
    };
    first->setFocus();
    for (QWidget* const widget :
        std::initializer_list<QWidget*>{list, spin, date, state->viewport()}) {
        turn(*widget);
    }
    QCOMPARE(list->currentText(), u"A"_s);
    QCOMPARE(spin->text(), u"5"_s);
    QCOMPARE(date->Date(), QDate(2026, 11, 24));
    QCOMPARE(state->SelectedText(), u"AK"_s);
    spin->setFocus();
    turn(*spin);
    QCOMPARE(spin->text(), u"4"_s);
    date->setFocus();
    turn(*date);
    QCOMPARE(date->Date(), QDate(2026, 10, 24));
}

void FieldExchangeTest::filesAreAskedForInOnePlace()
{
    CFileQuestion const question{u"Restore"_s, u"/no/such"_s, u"Data Files (*.dat)"_s, false};
    {
        CFileRecorder recorder;
        recorder.AnswerNext({u"/a.dat"_s});
        QCOMPARE(AskForFile(nullptr, question), u"/a.dat"_s);
        QCOMPARE(AskForFile(nullptr, question), QString());
        QCOMPARE(recorder.Questions().constFirst().m_strTitle, u"Restore"_s);
    }
    CDialogUser const user({[](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"Restore"_s);
        QVERIFY(qobject_cast<QFileDialog*>(&dialog) != nullptr);
        dialog.reject();
    }});
    QCOMPARE(AskForFile(nullptr, question), QString());
    QCOMPARE(user.Faults(), QStringList());
}

static CTestEntryOf<FieldExchangeTest> const g_entry;
#include "FieldExchangeTest.moc"
