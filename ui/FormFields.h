#pragma once

#include "store/EFOleDateTime.h"
#include "ui/FieldExchange.h"

#include <QString>

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class CDateField;
class COptionalDateField;
class CTimeField;

/// What a field of a form and the value behind it have in common.
class CFormField
{
public:
    CFormField() = default;
    virtual ~CFormField() = default;
    CFormField(CFormField const&) = delete;
    CFormField& operator=(CFormField const&) = delete;

    virtual void Show() = 0;
    virtual bool Take() = 0;
    virtual void Commit() = 0;
};

/// A field for a value of type T.
template <typename T>
class CFieldOf final : public CFormField
{
public:
    using CShow = std::function<void(T const&)>;
    /// Gets the value that was shown, and changes it to what stands in the field; false, with the
    /// user told, when that is refused.
    using CTake = std::function<bool(T&)>;

    CFieldOf(T& value, CShow show, CTake take)
        : m_value(value)
        , m_taken(value)
        , m_fnShow(std::move(show))
        , m_fnTake(std::move(take))
    {
    }

    void Show() override
    {
        m_taken = m_value;
        m_fnShow(m_value);
    }
    bool Take() override
    {
        auto taken = m_value;
        if (!m_fnTake(taken)) {
            return false;
        }
        m_taken = std::move(taken);
        return true;
    }
    void Commit() override { m_value = m_taken; }

    bool IsOf(T const& value) const { return &m_value == &value; }
    T const& Taken() const { return m_taken; }

private:
    T& m_value;
    T m_taken;
    CShow const m_fnShow;
    CTake const m_fnTake;
};

/// A whole number of any width that a record has.
template <typename T>
concept WholeNumber = std::integral<T> && !std::same_as<T, bool> && sizeof(T) <= 4;

/// The fields of a form, stated once each in the order of the form: widget, the member that it
/// shows, limits, format. Limits that a widget can keep by itself (length of a text, range of spin
/// buttons, digits) are set here too. The members must outlive the table, and the widgets its use.
///
///     m_fields.Text(*m_ui->cityEdit, m_strCity, 16);
///     m_fields.Number(*m_ui->restHREdit, m_nRestHR, {30, 150});
///
/// Show, Take and Commit then serve ShowFields and TakeFields of the form: Take refuses as
/// ui/FieldExchange.h says and leaves the members alone; Taken then gives what stands in the field
/// of a member, for checks of the form's own, before Commit puts all into the members.
class CFormFields
{
public:
    CFormFields() = default;
    ~CFormFields();
    CFormFields(CFormFields const&) = delete;
    CFormFields& operator=(CFormFields const&) = delete;

    void Show();
    /// All fields in their order; false at the first that is refused.
    bool Take();
    void Commit();

    /// What the field of that member was last shown or took, whether or not it was committed.
    template <typename T>
    T const& Taken(T const& value) const
    {
        for (auto const& field : m_lstFields) {
            auto const* const row = dynamic_cast<CFieldOf<T> const*>(field.get());
            if (row != nullptr && row->IsOf(value)) {
                return row->Taken();
            }
        }
        Q_ASSERT_X(false, "CFormFields", "a member without a field");
        return value;
    }

    // Each adds one field. A value that its field cannot show stays as it is unless the user
    // changes the field.

    /// The field takes no more than that many letters.
    void Text(QLineEdit& edit, std::string& value, int letters);
    void Text(QPlainTextEdit& edit, std::string& value, int letters);
    /// A text chosen from a list that has been filled; empty for none.
    void Choice(COneLineList& list, std::string& value);

    template <WholeNumber T>
    void Number(QLineEdit& edit, T& value, CRange<std::int32_t> range)
    {
        TakeDigitsOnly(edit);
        Whole(edit, value, range);
    }
    /// The spin buttons have the same range, and a tip tells it.
    template <WholeNumber T>
    void Number(CSpinField& spin, T& value, CRange<std::int32_t> range)
    {
        SetSpinRange(spin, range);
        Whole(spin, value, range);
    }
    /// Shown with that many decimals; more are kept until the user changes the field.
    /// Right-aligned.
    void Number(QLineEdit& edit, double& value, CRange<double> range, int decimals);

    // Results of a calculation: shown, right-aligned, in a field that can be read and copied, never
    // taken.
    void Result(QLineEdit& edit, double& value, int decimals);
    void Result(QLineEdit& edit, std::int32_t& value);

    void Date(CDateField& field, CEFOleDateTime& value);
    /// The time of day; the day stays.
    void Time(CTimeField& field, CEFOleDateTime& value);
    void Date(COptionalDateField& field, std::optional<CEFOleDateTime>& value);

    /// The first button for true, the second one for false.
    void Pair(QRadioButton& whenTrue, QRadioButton& whenFalse, bool& value);
    /// The same without a button checked as long as there is no value.
    void Pair(QRadioButton& whenTrue, QRadioButton& whenFalse, std::optional<bool>& value);
    /// One button for each value; none is checked for a value without a button.
    template <WholeNumber T>
    void Buttons(std::vector<std::pair<QRadioButton*, T>> buttons, T& value)
    {
        Add<T>(
            value,
            [buttons](T shown) {
                for (auto const& [button, meaning] : buttons) {
                    CheckOnly(*button, meaning == shown);
                }
            },
            [buttons](T& taken) {
                for (auto const& [button, meaning] : buttons) {
                    taken = IsChecked(*button) ? meaning : taken;
                }
                return true;
            });
    }

    /// A list of the values of an enumeration from 0 to the last one, filled here with their texts.
    /// Nothing is selected for another value.
    template <typename T, typename Enum, typename Text>
    void List(QComboBox& list, T& value, Enum last, Text (*text)(Enum))
    {
        FillList(list, static_cast<int>(last) + 1,
            [text](int entry) { return std::string(text(static_cast<Enum>(entry))); });
        Add<T>(
            value, [&list](T shown) { SelectEntry(list, static_cast<int>(shown)); },
            [&list](T& taken) {
                auto const entry = SelectedEntry(list);
                taken = entry >= 0 ? static_cast<T>(entry) : taken;
                return true;
            });
    }

    /// A field of a kind of its own.
    template <typename T>
    void Add(T& value, typename CFieldOf<T>::CShow show, typename CFieldOf<T>::CTake take)
    {
        m_lstFields.push_back(
            std::make_unique<CFieldOf<T>>(value, std::move(show), std::move(take)));
    }

private:
    template <WholeNumber T, typename Widget>
    void Whole(Widget& widget, T& value, CRange<std::int32_t> range)
    {
        Q_ASSERT(std::in_range<T>(range.least) && std::in_range<T>(range.greatest));
        Add<T>(
            value, [&widget](T shown) { ShowWhole(widget, std::int64_t(shown)); },
            [&widget, range](T& taken) {
                std::int32_t number = 0;
                if (!TakeNumber(widget, range, number)) {
                    return false;
                }
                taken = static_cast<T>(number);
                return true;
            });
    }

    static void ShowWhole(QLineEdit& edit, std::int64_t number);
    static void ShowWhole(CSpinField& spin, std::int64_t number);
    static void SetSpinRange(CSpinField& spin, CRange<std::int32_t> range);
    static void CheckOnly(QRadioButton& button, bool checked);
    static bool IsChecked(QRadioButton const& button);
    static void FillList(QComboBox& list, int count, std::function<std::string(int)> const& text);
    static void SelectEntry(QComboBox& list, int entry);
    static int SelectedEntry(QComboBox const& list);

    std::vector<std::unique_ptr<CFormField>> m_lstFields;
};
