#include "ui/FormFields.h"

#include "platform/qt/DateField.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/SpinField.h"
#include "platform/qt/TimeField.h"
#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/ControlID.h"
#include "ui/NumberRows.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

enum class CLevel : std::uint8_t
{
    low,
    high
};

char const* LevelText(CLevel level)
{
    return level == CLevel::low ? "Low" : "High";
}

/// A form with a field of every kind, and the values behind them.
class CForm : public QWidget
{
public:
    std::string m_strName = "Ann";
    std::string m_strNote = "a\nb";
    std::string m_strState = "IL";
    std::int16_t m_nStation = 40;
    std::uint8_t m_nBonus = 3;
    double m_dWeight = 61.234;
    CEFOleDateTime m_dtDay = CEFOleDateTime(2026, 11, 16, 18, 5, 9);
    CEFOleDateTime m_dtTime = CEFOleDateTime(2026, 11, 16, 18, 5, 9);
    std::optional<CEFOleDateTime> m_dtFrom;
    bool m_bMale = false;
    std::optional<bool> m_bKnown;
    int m_nSites = 4;
    std::uint8_t m_nLevel = 1;

    CFormFields m_fields;

    CForm()
    {
        auto* const layout = new QVBoxLayout(this);
        for (auto* const child : {&m_male, &m_female, &m_yes, &m_no}) {
            (child == &m_male || child == &m_female ? m_sexes : m_answers)
                .layout()
                ->addWidget(child);
        }
        for (auto* const child : {&m_three, &m_four}) {
            m_siteBox.layout()->addWidget(child);
        }
        m_state.addItems({u"AK"_s, u"IL"_s});
        for (auto* const child :
            std::initializer_list<QWidget*>{&m_name, &m_note, &m_state, &m_station, &m_bonus,
                &m_weight, &m_day, &m_time, &m_from, &m_sexes, &m_answers, &m_siteBox, &m_level}) {
            layout->addWidget(child);
        }
        m_fields.Text(m_name, m_strName, 5);
        m_fields.Text(m_note, m_strNote, 5);
        m_fields.Choice(m_state, m_strState);
        m_fields.Number(m_station, m_nStation, {0, 999});
        m_fields.Number(m_bonus, m_nBonus, {0, 99});
        m_fields.Number(m_weight, m_dWeight, {20.0, 300.0}, 1);
        m_fields.Date(m_day, m_dtDay);
        m_fields.Time(m_time, m_dtTime);
        m_fields.Date(m_from, m_dtFrom);
        m_fields.Pair(m_male, m_female, m_bMale);
        m_fields.Pair(m_yes, m_no, m_bKnown);
        m_fields.Buttons<int>({{&m_three, 3}, {&m_four, 4}}, m_nSites);
        m_fields.List(m_level, m_nLevel, CLevel::high, LevelText);
    }

    /// The values in one line.
    QString Values() const
    {
        auto const from = m_dtFrom ? m_dtFrom->DateStrLongYear() : "-";
        return QString::fromStdString(m_strName + "|" + m_strNote + "|" + m_strState + "|")
            + u"%1|%2|%3|"_s.arg(m_nStation).arg(m_nBonus).arg(m_dWeight)
            + QString::fromStdString(
                m_dtDay.DateTimeStrLongYear() + "|" + m_dtTime.DateTimeStrLongYear() + "|" + from)
            + u"|%1|%2|%3|%4"_s.arg(m_bMale)
                  .arg(m_bKnown ? int(*m_bKnown) : -1)
                  .arg(m_nSites)
                  .arg(m_nLevel);
    }

    struct CBox : QWidget
    {
        CBox() { new QVBoxLayout(this); }
    };
    CBox m_sexes, m_answers, m_siteBox; // before what stands in them
    QLineEdit m_name;
    QPlainTextEdit m_note;
    COneLineList m_state;
    QLineEdit m_station;
    CSpinField m_bonus;
    QLineEdit m_weight;
    CDateField m_day;
    CTimeField m_time;
    COptionalDateField m_from;
    QRadioButton m_male, m_female, m_yes, m_no, m_three, m_four;
    CDropDown m_level;
};

} // namespace

class FormFieldsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyKindIsShownTakenAndCommitted();
    void whatAFieldCannotShowStays();
    void refusalsChangeNothing();
    void rowsRepeat();
};

void FormFieldsTest::everyKindIsShownTakenAndCommitted()
{
    CForm form;
    form.m_fields.Show();
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto const shown = form.Values();
    QCOMPARE(form.m_weight.text(), u"61.2"_s);
    QCOMPARE(form.m_time.text(), u"18:05:09"_s);
    QVERIFY(form.m_female.isChecked() && form.m_four.isChecked());
    QVERIFY(!form.m_yes.isChecked() && !form.m_no.isChecked());
    QVERIFY(form.m_fields.Take());
    form.m_fields.Commit();
    QCOMPARE(form.Values(), shown);

    Type(form.m_name, u"Berta and more"_s);
    Type(form.m_note, u"c"_s);
    QTest::keyClick(&form.m_state, Qt::Key_Up);
    Type(form.m_station, u"999"_s);
    Type(form.m_bonus, u"0"_s);
    Type(form.m_weight, u"70.5"_s);
    Type(form.m_day, u"1/2/27"_s);
    Type(form.m_time, u"6:07p"_s);
    Child<QCheckBox>(form.m_from, "check").click();
    Type(Child<CDateField>(form.m_from, "field"), u"3-4-2025"_s);
    form.m_male.click();
    form.m_no.click();
    form.m_three.click();
    QTest::keyClick(&form.m_level, Qt::Key_Up);
    QVERIFY(form.m_fields.Take());
    QCOMPARE(form.Values(), shown);
    QCOMPARE(form.m_fields.Taken(form.m_nStation), std::int16_t(999));
    form.m_fields.Commit();
    QCOMPARE(form.Values(),
        u"Berta|c|AK|999|0|70.5|01/02/2027 00:00:00|11/16/2026 18:07:00|03/04/2025|1|0|3|0"_s);

    form.m_bKnown.reset(); // shown again, as after a calculation
    form.m_dWeight = 80.0;
    form.m_fields.Show();
    QCOMPARE(form.m_weight.text(), u"80.0"_s);
    QVERIFY(!form.m_yes.isChecked() && !form.m_no.isChecked());
}

void FormFieldsTest::whatAFieldCannotShowStays()
{
    CForm form;
    form.m_strName = "longer than five, with \xff";
    form.m_strNote = std::string("a\nb\0 and more", 14);
    form.m_nSites = 6;
    form.m_nLevel = 9;
    form.m_dtDay = CEFOleDateTime::Invalid();
    auto const stored = form.Values();
    form.m_fields.Show();
    QVERIFY(!form.m_three.isChecked() && !form.m_four.isChecked());
    QCOMPARE(form.m_level.currentIndex(), -1);
    QVERIFY(form.m_fields.Take());
    form.m_fields.Commit();
    QCOMPARE(form.Values(), stored);
}

void FormFieldsTest::refusalsChangeNothing()
{
    CMessageRecorder const messages;
    CForm form;
    auto const stored = form.Values();
    form.m_fields.Show();
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    Type(form.m_name, u"Berta"_s);
    for (auto const& [field, text, good, message] :
        std::initializer_list<std::tuple<QWidget*, QString, QString, QString>>{
            {&form.m_time, u"25"_s, u"18:05"_s, u"Enter a time, such as 18:05:09."_s},
            {&form.m_day, u"13/1/2026"_s, u"1/13/2026"_s, u"Enter a date, such as 11/24/2026."_s},
            {&form.m_weight, u"19.9"_s, u"20"_s, u"Enter a number between 20 and 300."_s},
            {&form.m_bonus, u"100"_s, u"99"_s, u"Enter an integer between 0 and 99."_s},
            {&form.m_station, u""_s, u"1"_s, u"Enter an integer."_s}}) {
        Type(*field, text); // the one before in the form is refused first
        QVERIFY(!form.m_fields.Take());
        QCOMPARE(messages.Texts().constLast(), message);
        QVERIFY(field->hasFocus());
    }
    QCOMPARE(form.Values(), stored);
}

void FormFieldsTest::rowsRepeat()
{
    QWidget form;
    form.setWindowTitle(u"Stations"_s);
    auto* const grid = new QGridLayout(&form);
    std::vector const ids = {1017, 1018, 1019, 1020};
    auto const rows = BuildNumberRows(*grid,
        {.m_strName = u"station"_s,
            .m_nCount = 4,
            .m_nColumns = 2,
            .m_bSpin = true,
            .m_lstEditIDs = ids});
    NameRows(rows, {u"Leg Press"_s, u"Push & Pull"_s, u"Rowing"_s});
    CFormFields fields;
    std::array<std::int16_t, 4> values = {1, 2, 3, 4};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        fields.Number(*rows[i].m_pSpin, values[i], {0, 999});
    }
    fields.Show();
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QCOMPARE(FaultsOf(form), QStringList());
    QCOMPARE(Child<QLabel>(form, "station2Label").text(), u"Push && Pull"_s);
    QVERIFY(!Child<CSpinField>(form, "station4Spin").isVisible());
    QVERIFY(!Child<QLabel>(form, "station4Label").isVisible());
    QCOMPARE(ControlID(&Child<QLineEdit>(form, "station3Edit")), 1019);
    QVERIFY(rows[2].m_pSpin->x() > rows[1].m_pSpin->x());
    Child<CSpinField>(form, "station2Spin").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(Child<CSpinField>(form, "station3Spin").hasFocus());
    Type(*rows[2].m_pSpin, u"77"_s);
    QVERIFY(fields.Take());
    fields.Commit();
    QCOMPARE(values, (std::array<std::int16_t, 4>{1, 2, 77, 4}));
}

static CTestEntryOf<FormFieldsTest> const g_entry;
#include "FormFieldsTest.moc"
