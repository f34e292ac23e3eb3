#include "ui/Convert.h"

#include "tests/QtTests.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ConvertTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void keepsText();
    void keepsDates();
    void keepsNoDateApart();
};

void ConvertTest::keepsText()
{
    std::string const text("Zo\u00EB \u4E2D\0\U0001F3CB", 13);
    QCOMPARE(FromQt(ToQt(text)), text);
    QCOMPARE(ToQt(std::string_view("a\xFFz")), QString(u"a\uFFFDz"_s));
}

void ConvertTest::keepsDates()
{
    qputenv("TZ", "America/New_York");
    for (auto const& [day, time] : {
             std::pair(QDate(2026, 11, 16), QTime(23, 59, 59)), // the last second of a day
             {QDate(2026, 3, 8), QTime(2, 30)}, // an hour that clocks skip in this zone
             {QDate(1899, 12, 29), QTime(6, 0)},
             {QDate(2024, 2, 29), QTime(0, 0)},
         }) {
        QDateTime const value(day, time, Qt::UTC);
        auto const stored = FromQt(value);
        QVERIFY(stored.ChkStatus());
        QCOMPARE(ToQt(stored), value);
    }
}

void ConvertTest::keepsNoDateApart()
{
    QVERIFY(!ToQt(CEFOleDateTime::Invalid()).isValid());
    QVERIFY(!FromQt(QDateTime()).ChkStatus());
    QCOMPARE(ToQt(CEFOleDateTime()).date(), QDate(1899, 12, 30));
    QVERIFY(FromQt(QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC)).IsZero());
}

static CTestEntryOf<ConvertTest> const g_entry;
#include "ConvertTest.moc"
