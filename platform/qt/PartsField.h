#pragma once

#include <QLineEdit>

/// A line for a value of three parts with two or more digits each, such as a day or a time of day.
/// It takes whatever spelling of the value is typed or pasted, never changes it under the user's
/// hands, and shows the standard spelling, as 11/24/2026, once it is left. The arrow keys and the
/// wheel change the part at the cursor.
class CPartsField : public QLineEdit
{
    Q_OBJECT
public:
    /// Whether there is a value, or nothing where that is allowed. What was put in is always good,
    /// nothing as well, until the user changes it.
    bool IsGood() const;
    /// Whether the user may empty the field; at first he may not.
    void SetMayBeEmpty(bool mayBeEmpty) { m_bMayBeEmpty = mayBeEmpty; }
    /// A widget of the window that can be gone to whatever is in the field, as the buttons can that
    /// close a window without taking anything; such as the check box that makes a value void.
    void SetWayOut(QWidget const* widget) { m_pWayOut = widget; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// The user went to another field of the window, and what is in this one is not good. Does not
    /// come when the window or the field is closed, hidden or no longer the active one.
    void LeftWrong();

protected:
    /// The standard spelling of any value, which the field is wide enough for.
    CPartsField(QString sample, QWidget* parent);

    /// Shows a value that the program puts in, empty for none.
    void Show(QString const& standard);
    /// Puts a value in for the user, who can undo it.
    void Enter(QString const& standard);

    /// The standard spelling of the value that a text spells, empty for none.
    virtual QString Standard(QString const& text) const = 0;
    /// What the arrow keys begin with in an empty field, in the standard spelling.
    virtual QString Now() const = 0;
    /// The part, in the order of the standard spelling, that a group of digits spells.
    virtual int PartOf(QString const& text, int group) const;
    /// The value with a part, counted from 0, that many steps up; stops at the ends of the part.
    virtual QString Stepped(QString const& text, int part, int steps) const = 0;
    /// The same for the keys Page Up and Page Down.
    virtual QString Paged(QString const& text, int steps) const = 0;

    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    int GroupAtCursor() const;
    void Step(int steps, bool isPage);

    QString const m_strSample;
    QString m_strShown; ///< as it was put in
    bool m_bMayBeEmpty = false;
    QWidget const* m_pWayOut = nullptr; ///< only compared, so that it may be gone
    int m_nWheel = 0; ///< turned, in eighths of a degree, since the last step
};
