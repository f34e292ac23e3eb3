#pragma once

#include <QListWidget>
#include <QMouseEvent>

/// A list that is one line high and shows its selected entry, or nothing when none is selected.
/// The arrow keys, the scroll bar, the wheel and the first letters of an entry choose; Delete and
/// Backspace take the choice back. A click only gives the focus: where nothing is shown, nobody
/// sees what is under the pointer.
class COneLineList : public QListWidget
{
    Q_OBJECT
public:
    explicit COneLineList(QWidget* parent = nullptr);

    /// The text of the selected entry, empty when none is selected.
    QString SelectedText() const;
    /// -1 selects none.
    void Select(int row);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { event->accept(); }
    void mouseMoveEvent(QMouseEvent* event) override { event->accept(); }
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};
