#pragma once

#include "platform/qt/DateField.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/SpinField.h"
#include "platform/qt/TimeField.h"
#include "tests/ui/DialogUser.h"
#include "ui/FormFields.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

#include <cstdint>
#include <optional>
#include <string>

/// What a form with a field of every kind edits.
struct CFieldValues
{
    CEFOleDateTime m_dtDay = CEFOleDateTime(2026, 11, 24, 18, 5, 9);
    CEFOleDateTime m_dtTime = m_dtDay;
    std::optional<CEFOleDateTime> m_dtFrom;
    std::string m_strName = "Ann";
    std::string m_strNote = "a\nb";
    std::string m_strState = "IL";
    std::int16_t m_nStation = 40;
    std::uint8_t m_nBonus = 3;
    double m_dWeight = 61.234;
    bool m_bMale = false;
    std::optional<bool> m_bKnown;
    int m_nSites = 4;
    std::uint8_t m_nLevel = 2;

    bool operator==(CFieldValues const&) const = default;
};

/// Such a form, shown, with the focus in its first field.
class CFieldForm : public QWidget, public CFieldValues
{
public:
    CFieldForm()
    {
        m_nameLabel.setBuddy(&m_name);
        m_state.addItems({QStringLiteral("AK"), QStringLiteral("AL"), QStringLiteral("IL")});
        m_fields.Date(m_day, m_dtDay);
        m_fields.Time(m_time, m_dtTime);
        m_fields.Date(m_from, m_dtFrom);
        m_fields.Text(m_name, m_strName, 5);
        m_fields.Text(m_note, m_strNote, 5);
        m_fields.Choice(m_state, m_strState);
        m_fields.Number(m_station, m_nStation, {0, 999});
        m_fields.Number(m_bonus, m_nBonus, {0, 99});
        m_fields.Number(m_weight, m_dWeight, {20.0, 300.0}, 1);
        m_fields.Pair(m_male, m_female, m_bMale);
        m_fields.Pair(m_yes, m_no, m_bKnown);
        m_fields.Buttons<int>({{&m_three, 3}, {&m_four, 4}}, m_nSites);
        m_fields.List(
            m_level, m_nLevel, 2, +[](int level) { return std::to_string(level); });
        m_fields.Show();
        Show();
    }

    void Show()
    {
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
        m_name.setFocus();
        m_day.setFocus();
    }
    CFieldValues const& Values() const { return *this; }

    CDateField m_day{this};
    CTimeField m_time{this};
    COptionalDateField m_from{this};
    QCheckBox& m_hasFrom = Child<QCheckBox>(m_from, "check");
    QLabel m_nameLabel{QStringLiteral("&Name"), this};
    QLineEdit m_name{this}, m_station{this}, m_weight{this};
    QPlainTextEdit m_note{this};
    COneLineList m_state{this};
    CSpinField m_bonus{this};
    QWidget m_sexes{this}, m_answers{this}, m_siteBox{this};
    QRadioButton m_male{&m_sexes}, m_female{&m_sexes}, m_yes{&m_answers}, m_no{&m_answers};
    QRadioButton m_three{&m_siteBox}, m_four{&m_siteBox};
    CDropDown m_level{this};
    QDialogButtonBox m_buttons{QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this};
    CFormFields m_fields;
};
