#include "ui/FieldNote.h"

#include <QAbstractSpinBox>
#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <QLineEdit>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

QString Tr(char const* text)
{
    return QCoreApplication::translate("FieldNote", text);
}

/// Empty for what is usual.
QString HintFor(double value, CUsual const& usual, double last)
{
    if (value == 0.0) {
        return {};
    }
    if (value < usual.m_dLeast) {
        return Tr("unusually low");
    }
    if (value > usual.m_dGreatest) {
        return Tr("unusually high");
    }
    if (usual.m_dChange > 0.0 && last != 0.0) {
        auto const change = 100 * (value - last) / last;
        if (std::abs(change) >= usual.m_dChange) {
            return (change > 0 ? Tr("%1 % more") : Tr("%1 % less"))
                .arg(std::lround(std::abs(change)));
        }
    }
    return {};
}

QWidget& FieldOf(QLineEdit& edit)
{
    auto* const spin = qobject_cast<QAbstractSpinBox*>(edit.parentWidget());
    return spin != nullptr ? *spin : static_cast<QWidget&>(edit);
}

} // namespace

CFieldNote::CFieldNote(QLineEdit& edit, int decimals)
    : QLabel(FieldOf(edit).parentWidget())
    , m_edit(edit)
    , m_field(FieldOf(edit))
    , m_nDecimals(decimals)
{
    setObjectName(edit.objectName() + u"Note"_s);
    setTextFormat(Qt::PlainText);
    connect(&edit, &QLineEdit::textChanged, this, &CFieldNote::ShowNote);
    edit.installEventFilter(this);
}

void CFieldNote::Set(std::optional<CUsual> const& usual, std::optional<double> last)
{
    m_usual = usual;
    m_dLast = last.value_or(0.0);
    ShowNote();
}

bool CFieldNote::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::ReadOnlyChange) {
        ShowNote();
    }
    return QLabel::eventFilter(object, event);
}

void CFieldNote::ShowNote()
{
    auto const before = m_dLast != 0.0
        ? Tr("last %1").arg(QString::number(m_dLast, 'f', m_nDecimals))
        : QString();
    if (m_usual) { // a hint that comes must not make the form jump
        auto const longest = before + u", "_s + Tr("unusually high");
        setMinimumWidth(std::max(minimumWidth(), fontMetrics().horizontalAdvance(longest)));
    }
    auto const hint = !m_usual || m_edit.isReadOnly()
        ? QString()
        : HintFor(m_edit.text().toDouble(), *m_usual, m_dLast);
    setText(before + (before.isEmpty() || hint.isEmpty() ? QString() : u", "_s) + hint);
    m_field.setAccessibleDescription(text());
}

CFieldNote& AddFieldNote(QGridLayout& grid, QLineEdit& edit, int decimals,
    std::optional<CUsual> const& usual, std::optional<double> last)
{
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(grid.indexOf(&FieldOf(edit)), &row, &column, &rows, &columns);
    for (column += columns; grid.itemAtPosition(row, column) != nullptr;) {
        ++column;
    }
    auto* const note = new CFieldNote(edit, decimals);
    grid.addWidget(note, row, column);
    note->Set(usual, last);
    return *note;
}
