#include "doc/CommandTable.h"

#include "tests/QtTests.h"

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
    void mnemonicsAreUniqueInEachMenu();
    void tipsArePlainText();
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

QString TipOfCommand(int number)
{
    auto const table = CommandTable();
    return TipOf(*std::ranges::find(table, number, &CCommand::m_nNumber));
}

} // namespace

void CommandTableTest::rowsAreComplete()
{
    QSet<int> numbers;
    for (auto const& command : CommandTable()) {
        auto const number = QByteArray::number(command.m_nNumber);
        QVERIFY2(!numbers.contains(command.m_nNumber), number);
        numbers += command.m_nNumber;
        QVERIFY2(!command.m_strPrompt.isEmpty(), number);
        QVERIFY2(!TipOf(command).isEmpty(), number);
        QVERIFY2(command.m_menu.has_value() == (command.m_fnRun != nullptr), number);
        QVERIFY2(command.m_menu.has_value() == !command.m_strText.isEmpty(), number);
    }
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

void CommandTableTest::tipsArePlainText()
{
    QCOMPARE(TipOfCommand(32820), u"Category/Course/Section Roster"_s);
    QCOMPARE(TipOfCommand(32894), u"Category \"Unknown\" Workouts"_s);
    QCOMPARE(TipOfCommand(57665), u"Exit"_s);
}

static CTestEntryOf<CommandTableTest> const g_entry;
#include "CommandTableTest.moc"
