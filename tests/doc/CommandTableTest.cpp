#include "doc/CommandTable.h"

#include "tests/QtTests.h"

#include <QKeySequence>
#include <QMap>
#include <QSet>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class CommandTableTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rowsAreComplete();
    void numbersAreUnique();
    void mnemonicsAreUniqueInEachMenu();
    void hasTheseKeysAndNoOthers();
    void menusStandInOrder();
    void tipsArePlainText();
    void expiredMembersIsOnlyReserved();
};

namespace
{

/// The titles from the menu bar down to a command, as its path is written in a manual.
QString PathOf(CMenuID id)
{
    auto const table = MenuTable();
    auto const menu = std::ranges::find(table, id, &CMenu::m_id);
    auto const title = QString(menu->m_strTitle).remove(u'&');
    return menu->m_parent ? PathOf(*menu->m_parent) + u" > "_s + title : title;
}

CCommand Command(int number)
{
    auto const table = CommandTable();
    return *std::ranges::find(table, number, &CCommand::m_nNumber);
}

} // namespace

void CommandTableTest::rowsAreComplete()
{
    for (auto const& command : CommandTable()) {
        auto const number = QByteArray::number(command.m_nNumber);
        QVERIFY2(!command.m_strPrompt.isEmpty(), number);
        QVERIFY2(!TipOf(command).isEmpty(), number);
        QVERIFY2(command.m_menu.has_value() == (command.m_fnRun != nullptr), number);
        QVERIFY2(command.m_menu.has_value() == !command.m_strText.isEmpty(), number);
    }
}

void CommandTableTest::numbersAreUnique()
{
    QSet<int> numbers;
    for (auto const& command : CommandTable()) {
        QVERIFY2(!numbers.contains(command.m_nNumber), QByteArray::number(command.m_nNumber));
        numbers += command.m_nNumber;
    }
    QCOMPARE(numbers.size(), 49);
}

void CommandTableTest::mnemonicsAreUniqueInEachMenu()
{
    QMap<QString, QSet<QString>> used;
    auto const check = [&used](QString const& menu, QString const& text) {
        // One text carries two mnemonics; both count.
        for (qsizetype at = text.indexOf(u'&'); at >= 0; at = text.indexOf(u'&', at + 1)) {
            auto const letter = text.mid(at + 1, 1).toUpper();
            QVERIFY2(!used[menu].contains(letter), qPrintable(menu + u": "_s + text));
            used[menu] += letter;
        }
        QVERIFY2(text.contains(u'&'), qPrintable(menu + u": "_s + text));
    };
    for (auto const& menu : MenuTable()) {
        check(menu.m_parent ? PathOf(*menu.m_parent) : QString(), menu.m_strTitle);
    }
    for (auto const& command : CommandTable()) {
        if (command.m_menu) {
            check(PathOf(*command.m_menu), command.m_strText);
        }
    }
}

void CommandTableTest::hasTheseKeysAndNoOthers()
{
    QMap<QString, int> keys;
    for (auto const& command : CommandTable()) {
        if (!command.m_strKey.isEmpty()) {
            keys[command.m_strKey] = command.m_nNumber;
            QCOMPARE(QKeySequence(command.m_strKey).count(), 1);
        }
    }
    QMap<QString, int> const expected{{u"Ctrl+M"_s, 32863}, {u"Ctrl+Alt+M"_s, 32784},
        {u"Ctrl+W"_s, 32806}, {u"Ctrl+Alt+W"_s, 32808}, {u"Ctrl+E"_s, 32810},
        {u"Ctrl+Alt+E"_s, 32811}, {u"Ctrl+B"_s, 32866}, {u"Ctrl+Alt+B"_s, 32868}};
    QCOMPARE(keys, expected);
}

void CommandTableTest::menusStandInOrder()
{
    QStringList bar;
    QString lastMenu;
    for (auto const& command : CommandTable()) {
        if (command.m_menu) {
            lastMenu = PathOf(*command.m_menu);
            auto const title = lastMenu.section(u" > "_s, 0, 0);
            if (!bar.contains(title)) {
                bar += title;
            }
            QCOMPARE(bar.constLast(), title); // no menu is returned to
        }
    }
    QCOMPARE(bar,
        (QStringList{u"File"_s, u"Options"_s, u"Members"_s, u"Workouts"_s, u"Evaluations"_s,
            u"Body Compositions"_s, u"Help"_s}));
    QCOMPARE(PathOf(*Command(32894).m_menu), u"Workouts > Reports"_s);
    QCOMPARE(PathOf(*Command(32878).m_menu), u"File > Archive"_s);
}

void CommandTableTest::tipsArePlainText()
{
    QCOMPARE(TipOf(Command(32820)), u"Category/Course/Section Roster"_s);
    QCOMPARE(TipOf(Command(32894)), u"Category \"Unknown\" Workouts"_s);
    QCOMPARE(TipOf(Command(57665)), u"Exit"_s);
}

void CommandTableTest::expiredMembersIsOnlyReserved()
{
    auto const command = Command(32823);
    QVERIFY(!command.m_menu);
    QCOMPARE(command.m_strPrompt, u"Generate list of members by expiration date"_s);
    QCOMPARE(TipOf(command), u"Expired Members"_s);
}

CORVANA_TEST(CommandTableTest);
#include "CommandTableTest.moc"
