#include "platform/qt/LockKeys.h"

#include "tests/QtTests.h"

#include <QTest>

#include <cstdint>

class LockKeysTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void followTheLastKeyOffScreen();
};

void LockKeysTest::followTheLastKeyOffScreen()
{
    std::uint32_t const capsBit = 0x02;
    std::uint32_t const numBit = 0x10;
    std::uint32_t const others = 0xed;
    auto const none = CurrentLockKeys(others);
    QVERIFY(!none.caps && !none.num);
    auto const caps = CurrentLockKeys(others | capsBit);
    QVERIFY(caps.caps && !caps.num);
    auto const num = CurrentLockKeys(others | numBit);
    QVERIFY(!num.caps && num.num);
}

CORVANA_TEST(LockKeysTest);
#include "LockKeysTest.moc"
