#include "ui/Convert.h"

#include "tests/QtTests.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ConvertTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void keepsText();
    void keepsDates_data();
    void keepsDates();
    void keepsNoDateApart();
};

void ConvertTest::keepsText()
{
    std::string const text("Zo\u00EB \u4E2D\0\U0001F3CB", 13);
    QCOMPARE(FromQt(ToQt(text)), text);
    QCOMPARE(ToQt(std::string_view("a\xFFz")), QString(u"a\uFFFDz"_s));
}

void ConvertTest::keepsDates_data()
{
    QTest::addColumn<QDateTime>("value");
    auto const row = [](char const* name, QDate const& date, QTime const& time) {
        QTest::newRow(name) << QDateTime(date, time, Qt::UTC);
    };
    row("last second of a day", {2026, 11, 16}, {23, 59, 59});
    // An hour that clocks skip where summer time begins.
    row("no such hour in some zones", {2026, 3, 8}, {2, 30, 0});
    row("before 1900", {1899, 12, 29}, {6, 0, 0});
    row("leap day", {2024, 2, 29}, {0, 0, 0});
}

void ConvertTest::keepsDates()
{
    qputenv("TZ", "America/New_York");
    QFETCH(QDateTime const, value);
    auto const stored = FromQt(value);
    QVERIFY(stored.ChkStatus());
    QCOMPARE(ToQt(stored), value);
    QCOMPARE(FromQt(QDateTime(value.date(), value.time(), Qt::UTC)), stored);
}

void ConvertTest::keepsNoDateApart()
{
    QVERIFY(!ToQt(CEFOleDateTime::Invalid()).isValid());
    QVERIFY(!FromQt(QDateTime()).ChkStatus());
    QCOMPARE(ToQt(CEFOleDateTime()).date(), QDate(1899, 12, 30));
    QVERIFY(FromQt(QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC)).IsZero());
}

CORVANA_TEST(ConvertTest);
#include "ConvertTest.moc"
