#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "tests/QtTests.h"
#include "tests/members/PageUser.h"

#include <QCheckBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The texts of the boxes that a mask checks.
template <typename Page>
QStringList Checked(std::uint32_t mask)
{
    CPageUser<Page> user;
    user.m_page.SetMask(mask);
    user.Show();
    QStringList texts;
    auto const boxes = user.m_page.template findChildren<QCheckBox*>();
    for (auto const* const box : boxes) {
        if (box->isChecked()) {
            texts += box->text().remove(u'&');
        }
    }
    return texts;
}

/// Shows each bit alone in one box, and takes each box alone as one bit, the same one.
template <typename Page>
void CheckBits(QStringList const& texts)
{
    std::uint32_t const all = (1U << texts.size()) - 1;
    for (qsizetype bit = 0; bit < texts.size(); ++bit) {
        QCOMPARE(Checked<Page>(1U << bit), QStringList{texts[bit]});
    }
    CPageUser<Page> user;
    QCOMPARE(user.m_page.Mask(), 0U);
    user.m_page.SetMask(0xFFFFFFFF);
    QCOMPARE(user.m_page.Mask(), all); // as long as it is not opened, too
    QCOMPARE(user.m_page.MaskIn(0x80000000), 0x80000000 | all); // a bit without a box is kept
    user.Show();
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.Mask(), all);
    auto const boxes = user.m_page.template findChildren<QCheckBox*>();
    QCOMPARE(boxes.size(), texts.size());
    for (qsizetype bit = 0; bit < texts.size(); ++bit) {
        auto* const box = *std::ranges::find_if(
            boxes, [&](auto const* one) { return one->text().remove(u'&') == texts[bit]; });
        box->click();
        QCOMPARE(user.Ok(), QString());
        QCOMPARE(user.m_page.Mask(), all & ~(1U << bit));
        box->click();
    }
}

} // namespace

class MaskPgTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void goalsAreTheirBits();
    void conditionsAreTheirBits();
};

// Both in the order of the bits, from the lowest on.

void MaskPgTest::goalsAreTheirBits()
{
    CheckBits<CMemberGoalsPg>({u"Increase Strength"_s, u"Improve Flexibility"_s, u"Gain Weight"_s,
        u"Firm Up/Lose Inches"_s, u"Lose Weight"_s, u"Improve Cardiovascular Fitness"_s,
        u"Reduce Stress/Feel More Relaxed"_s, u"Feel Better/Have More Energy"_s});
}

void MaskPgTest::conditionsAreTheirBits()
{
    CheckBits<CMemberMedHistPg>(
        {u"Disabilities/Limitations"_s, u"Cur. Shoulder Prob."_s, u"Shoulder Surgery"_s,
            u"Shoulder Injury"_s, u"Current Knee Prob."_s, u"Knee Surgery"_s, u"Knee Injury"_s,
            u"Current Back Prob."_s, u"Back Surgery"_s, u"Back Injury"_s, u"Back Problems"_s,
            u"Blood Pressure/Heart Medication"_s, u"Stroke"_s, u"Diagnosed Heart Problem"_s,
            u"Diabetes Type II"_s, u"Diabetes Type I"_s, u"High Blood Pressure"_s,
            u"History of Family Heart Problems"_s, u"Little Exercise in Past 6 Months"_s,
            u"20 or More lbs Overweight"_s, u"Smoke or Chew Tobacco"_s});
}

CORVANA_TEST(MaskPgTest);
#include "MaskPgTest.moc"
