#include "platform/qt/OneLineList.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QWheelEvent>

namespace
{

/// Draws only the selected entry, so that none that just happens to be in sight is taken for the
/// choice.
class CSelectedOnly : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(QStyleOptionViewItem const& option, QModelIndex const& index) const override
    {
        auto const* const view = static_cast<QAbstractItemView const*>(parent());
        auto const size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), std::max(1, view->viewport()->height())}; // one entry is one page
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, QModelIndex const& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!option->state.testFlag(QStyle::State_Selected)) {
            option->text.clear();
        }
    }
};

} // namespace

COneLineList::COneLineList(QWidget* parent)
    : QListWidget(parent)
{
    setItemDelegate(new CSelectedOnly(this));
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerItem);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this,
        [this] { setCurrentRow(verticalScrollBar()->sliderPosition()); });
}

QString COneLineList::SelectedText() const
{
    auto const selected = selectedItems();
    return selected.isEmpty() ? QString() : selected.constFirst()->text();
}

void COneLineList::Select(int row)
{
    setCurrentRow(row);
    if (row < 0) {
        clearSelection();
    }
}

QSize COneLineList::sizeHint() const
{
    ensurePolished();
    int width = 0;
    for (int row = 0; row < count(); ++row) {
        width = std::max(width, fontMetrics().horizontalAdvance(item(row)->text()));
    }
    auto const frame = 2 * frameWidth();
    auto const bar = verticalScrollBar()->sizeHint().width();
    return {width + 2 * fontMetrics().horizontalAdvance(u'M') + bar + frame,
        fontMetrics().height() + 8 + frame};
}

void COneLineList::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        Select(-1);
    } else {
        QListWidget::keyPressEvent(event);
    }
}

void COneLineList::wheelEvent(QWheelEvent* event)
{
    auto const steps = event->angleDelta().y();
    if (hasFocus() && steps != 0 && count() > 0) {
        setCurrentRow(std::clamp(currentRow() + (steps > 0 ? -1 : 1), 0, count() - 1));
    }
    event->setAccepted(hasFocus());
}

void COneLineList::resizeEvent(QResizeEvent* event)
{
    QListWidget::resizeEvent(event);
    scheduleDelayedItemsLayout(); // the height of an entry is that of the list
}
