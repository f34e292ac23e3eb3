#include "ui/FieldNote.h"

#include <QAbstractSpinBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
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

} // namespace

void AddFieldNote(QGridLayout& grid, QLineEdit& edit, int decimals,
    std::optional<CUsual> const& usual, std::optional<double> last)
{
    auto* const spin = qobject_cast<QAbstractSpinBox*>(edit.parentWidget());
    auto* const field = spin != nullptr ? static_cast<QWidget*>(spin) : &edit;
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(grid.indexOf(field), &row, &column, &rows, &columns);
    auto* const note = new QLabel(field->parentWidget());
    note->setObjectName(edit.objectName() + u"Note"_s);
    note->setTextFormat(Qt::PlainText);
    grid.addWidget(note, row, column + columns);

    auto const before = last ? Tr("last %1").arg(QString::number(*last, 'f', decimals)) : QString();
    if (usual) { // a hint that comes must not make the form jump
        auto const longest = before + u", "_s + Tr("unusually high");
        note->setMinimumWidth(note->fontMetrics().horizontalAdvance(longest));
    }
    auto const update = [note, field, &edit, before, usual, last] {
        auto const hint = !usual || edit.isReadOnly()
            ? QString()
            : HintFor(edit.text().toDouble(), *usual, last.value_or(0.0));
        note->setText(before + (before.isEmpty() || hint.isEmpty() ? QString() : u", "_s) + hint);
        field->setAccessibleDescription(note->text());
    };
    QObject::connect(&edit, &QLineEdit::textChanged, note, update);
    update();
}
