#include "ui/FieldExchange.h"

#include "platform/qt/OneLineList.h"
#include "platform/qt/SpinField.h"
#include "ui/Convert.h"
#include "ui/Messages.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QTextDocument>

#include <algorithm>
#include <charconv>

using namespace Qt::StringLiterals;

namespace
{

QString Tr(char const* text)
{
    return QCoreApplication::translate("FieldExchange", text);
}

/// The whole text as a number, blanks around it aside; false when it is none or too large for one.
template <typename T>
bool Parse(QString const& text, T& value)
{
    auto const bytes = text.trimmed().toStdString();
    auto const* const end = bytes.data() + bytes.size();
    auto const [stop, error] = std::from_chars(bytes.data(), end, value);
    return error == std::errc() && stop == end;
}

bool IsWhole(QString const& text)
{
    static QRegularExpression const whole(u"^\\s*-?[0-9]+\\s*$"_s);
    return whole.match(text).hasMatch();
}

bool TakeWhole(QWidget& field, QString const& text, CRange<std::int32_t> range, std::int32_t& value)
{
    if (!IsWhole(text)) {
        return Refuse(&field, Tr("Enter an integer."));
    }
    std::int32_t number = 0;
    if (!Parse(text, number) || number < range.least || number > range.greatest) {
        return Refuse(
            &field, Tr("Enter an integer between %1 and %2.").arg(range.least).arg(range.greatest));
    }
    value = number;
    return true;
}

/// What is pasted into a line may hold the ends of lines and tabs that came with it, which show as
/// blanks: at the ends they go, within they become what they look like.
QString Line(QString text)
{
    auto const isBlank = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (std::ranges::any_of(text, isBlank)) {
        std::ranges::replace_if(text, isBlank, u' ');
        return text.trimmed();
    }
    return text;
}

/// The place of the text among the count that textAt gives, else of the first that begins with it;
/// -1 for none.
template <typename TextAt>
int FindBeginning(int count, QString const& text, TextAt const& textAt)
{
    int first = -1;
    for (int i = 0; i < count && !text.isEmpty(); ++i) {
        if (textAt(i).compare(text, Qt::CaseInsensitive) == 0) {
            return i;
        }
        if (first < 0 && textAt(i).startsWith(text, Qt::CaseInsensitive)) {
            first = i;
        }
    }
    return first;
}

} // namespace

void TakeDigitsOnly(QLineEdit& field)
{
    static QRegularExpression const digits(u"[0-9]*"_s);
    field.setValidator(new QRegularExpressionValidator(digits, &field));
}

void SetReadOnly(QLineEdit& field, bool readOnly)
{
    field.setReadOnly(readOnly);
    QPalette own;
    if (readOnly) {
        own.setBrush(QPalette::Base, field.palette().brush(QPalette::Window));
    }
    field.setPalette(own);
}

void ShowText(QLineEdit& field, std::string const& value)
{
    field.setText(ToQt(value));
    field.setCursorPosition(0); // a long text shows its beginning
}

void ShowText(QPlainTextEdit& field, std::string const& value)
{
    field.setPlainText(ToQt(value));
    field.document()->setModified(false);
}

std::string TakeText(QLineEdit const& field, std::string const& shown)
{
    return field.isModified() ? FromQt(Line(field.text())) : shown;
}

std::string TakeText(QPlainTextEdit const& field, std::string const& shown)
{
    return field.document()->isModified() ? FromQt(field.toPlainText()) : shown;
}

bool TakeNumber(QLineEdit& field, CRange<std::int32_t> range, std::int32_t& value)
{
    return TakeWhole(field, field.text(), range, value);
}

bool TakeNumber(CSpinField& field, CRange<std::int32_t> range, std::int32_t& value)
{
    return TakeWhole(field, field.text(), range, value);
}

bool TakeNumber(QLineEdit& field, CRange<double> range, double& value)
{
    static QRegularExpression const real(u"^\\s*-?([0-9]+\\.?[0-9]*|\\.[0-9]+)\\s*$"_s);
    if (!real.match(field.text()).hasMatch()) {
        return Refuse(&field, Tr("Enter a number."));
    }
    double number = 0.0;
    if (!Parse(field.text(), number) || number < range.least || number > range.greatest) {
        return Refuse(
            &field, Tr("Enter a number between %1 and %2.").arg(range.least).arg(range.greatest));
    }
    value = number;
    return true;
}

void ShowPair(QRadioButton& whenTrue, QRadioButton& whenFalse, bool value)
{
    (value ? whenTrue : whenFalse).setChecked(true);
}

bool SelectBeginning(QComboBox& list, QString const& text)
{
    list.setCurrentIndex(
        FindBeginning(list.count(), text, [&](int i) { return list.itemText(i); }));
    return list.currentIndex() >= 0;
}

bool SelectBeginning(COneLineList& list, QString const& text)
{
    int const row = FindBeginning(list.count(), text, [&](int i) { return list.item(i)->text(); });
    list.Select(row);
    return row >= 0;
}
