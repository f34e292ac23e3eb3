#include "doc/CommandTable.h"

#include "tests/QtTests.h"

#include <QMap>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

class CommandTableTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rowsAreComplete();
    void mnemonicsAreUniqueInEachMenu();
};

void CommandTableTest::rowsAreComplete()
{
    QMap<int, QString> tips;
    for (auto const& command : CommandTable()) {
        auto const number = QByteArray::number(command.m_nNumber);
        QVERIFY2(!tips.contains(command.m_nNumber), number);
        tips[command.m_nNumber] = TipOf(command);
        QVERIFY2(!command.m_strPrompt.isEmpty() && !TipOf(command).isEmpty(), number);
        QVERIFY2(command.m_menu.has_value() == (command.m_fnRun != nullptr), number);
        QVERIFY2(command.m_menu.has_value() == !command.m_strText.isEmpty(), number);
    }
    QCOMPARE(tips[32820], u"Category/Course/Section Roster"_s); // no mnemonics, no dots
}

void CommandTableTest::mnemonicsAreUniqueInEachMenu()
{
    QMap<int, QSet<QString>> used;
    auto const check = [&used](std::optional<CMenuID> menu, QString const& text) {
        // One text carries two mnemonics; both count.
        QVERIFY2(text.contains(u'&'), qPrintable(text));
        for (qsizetype at = text.indexOf(u'&'); at >= 0; at = text.indexOf(u'&', at + 1)) {
            auto const letter = text.mid(at + 1, 1).toUpper();
            auto& letters = used[menu ? int(*menu) : -1];
            QVERIFY2(!letters.contains(letter), qPrintable(text));
            letters += letter;
        }
    };
    for (auto const& menu : MenuTable()) {
        check(menu.m_parent, menu.m_strTitle);
    }
    for (auto const& command : CommandTable()) {
        if (command.m_menu) {
            check(command.m_menu, command.m_strText);
        }
    }
}

static CTestEntryOf<CommandTableTest> const g_entry;
#include "CommandTableTest.moc"
