#include "ui/FormFields.h"

#include "platform/qt/DateField.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/SpinField.h"
#include "platform/qt/TimeField.h"
#include "ui/Convert.h"
#include "ui/DateExchange.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace
{

void ShowResult(QLineEdit& edit)
{
    SetReadOnly(edit, true);
    edit.setAlignment(Qt::AlignRight);
}

/// For both widgets that take texts.
template <typename Edit>
void AddText(CFormFields& fields, Edit& edit, std::string& value, int letters)
{
    LimitText(edit, letters);
    fields.Add<std::string>(
        value, [&edit](std::string const& shown) { ShowText(edit, shown); },
        [&edit](std::string& taken) {
            taken = TakeText(edit, taken);
            return true;
        });
}

} // namespace

CFormFields::~CFormFields() = default;

void CFormFields::Show()
{
    for (auto const& field : m_lstFields) {
        field->Show();
    }
}

bool CFormFields::Take()
{
    return std::ranges::all_of(m_lstFields, [](auto const& field) { return field->Take(); });
}

void CFormFields::Commit()
{
    for (auto const& field : m_lstFields) {
        field->Commit();
    }
}

void CFormFields::Text(QLineEdit& edit, std::string& value, int letters)
{
    AddText(*this, edit, value, letters);
}

void CFormFields::Text(QPlainTextEdit& edit, std::string& value, int letters)
{
    AddText(*this, edit, value, letters);
}

void CFormFields::Choice(COneLineList& list, std::string& value)
{
    Add<std::string>(
        value, [&list](std::string const& shown) { SelectBeginning(list, ToQt(shown)); },
        [&list](std::string& taken) {
            taken = FromQt(list.SelectedText());
            return true;
        });
}

void CFormFields::Number(QLineEdit& edit, double& value, CRange<double> range, int decimals)
{
    edit.setAlignment(Qt::AlignRight);
    Add<double>(
        value,
        [&edit, decimals](double shown) { edit.setText(QString::number(shown, 'f', decimals)); },
        [&edit, range](double& taken) {
            bool const isKept
                = !edit.isModified() && taken >= range.least && taken <= range.greatest;
            return isKept || TakeNumber(edit, range, taken);
        });
}

void CFormFields::Result(QLineEdit& edit, double& value, int decimals)
{
    ShowResult(edit);
    Add<double>(
        value,
        [&edit, decimals](double shown) { edit.setText(QString::number(shown, 'f', decimals)); },
        [](double&) { return true; });
}

void CFormFields::Result(QLineEdit& edit, std::int32_t& value)
{
    ShowResult(edit);
    Add<std::int32_t>(
        value, [&edit](std::int32_t shown) { edit.setText(QString::number(shown)); },
        [](std::int32_t&) { return true; });
}

void CFormFields::Date(CDateField& field, CEFOleDateTime& value)
{
    RefuseWhenLeft(field);
    Add<CEFOleDateTime>(
        value, [&field](CEFOleDateTime const& shown) { ShowDate(field, shown); },
        [&field](CEFOleDateTime& taken) { return TakeDate(field, taken); });
}

void CFormFields::Time(CTimeField& field, CEFOleDateTime& value)
{
    RefuseWhenLeft(field);
    Add<CEFOleDateTime>(
        value, [&field](CEFOleDateTime const& shown) { ShowTime(field, shown); },
        [&field](CEFOleDateTime& taken) { return TakeTime(field, taken); });
}

void CFormFields::Date(COptionalDateField& field, std::optional<CEFOleDateTime>& value)
{
    using CValue = std::optional<CEFOleDateTime>;
    RefuseWhenLeft(field.Field());
    Add<CValue>(
        value, [&field](CValue const& shown) { ShowOptionalDate(field, shown); },
        [&field](CValue& taken) { return TakeOptionalDate(field, taken); });
}

void CFormFields::Pair(QRadioButton& whenTrue, QRadioButton& whenFalse, bool& value)
{
    Add<bool>(
        value, [&](bool shown) { ShowPair(whenTrue, whenFalse, shown); },
        [&](bool& taken) {
            taken = whenTrue.isChecked();
            return true;
        });
}

void CFormFields::Pair(QRadioButton& whenTrue, QRadioButton& whenFalse, std::optional<bool>& value)
{
    using CValue = std::optional<bool>;
    Add<CValue>(
        value,
        [&](CValue shown) {
            CheckOnly(whenTrue, shown == true);
            CheckOnly(whenFalse, shown == false);
        },
        [&](CValue& taken) {
            taken = whenTrue.isChecked() ? CValue(true)
                : whenFalse.isChecked()  ? CValue(false)
                                         : CValue();
            return true;
        });
}

void CFormFields::ShowWhole(QLineEdit& edit, std::int64_t number)
{
    edit.setText(QString::number(number));
}

void CFormFields::ShowWhole(CSpinField& spin, std::int64_t number)
{
    spin.SetValue(static_cast<int>(number));
}

void CFormFields::SetSpinRange(CSpinField& spin, CRange<std::int32_t> range)
{
    spin.SetRange(range.least, range.greatest);
    auto const hint = QCoreApplication::translate("FormFields", "%1 to %2")
                          .arg(range.least)
                          .arg(range.greatest);
    spin.setToolTip(hint);
    spin.setAccessibleDescription(hint);
}

/// A button of a group cannot be unchecked while the group keeps one checked.
void CFormFields::CheckOnly(QRadioButton& button, bool checked)
{
    button.setAutoExclusive(checked);
    button.setChecked(checked);
    button.setAutoExclusive(true);
}

bool CFormFields::IsChecked(QRadioButton const& button)
{
    return button.isChecked();
}

void CFormFields::FillList(QComboBox& list, int count, std::function<std::string(int)> const& text)
{
    list.clear();
    for (int entry = 0; entry < count; ++entry) {
        list.addItem(ToQt(text(entry)));
    }
}

void CFormFields::SelectEntry(QComboBox& list, int entry)
{
    list.setCurrentIndex(entry < list.count() ? entry : -1);
}

int CFormFields::SelectedEntry(QComboBox const& list)
{
    return list.currentIndex();
}
