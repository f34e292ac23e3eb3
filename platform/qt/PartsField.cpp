#include "platform/qt/PartsField.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace
{

constexpr int kLastPart = 2;
constexpr int kPartWidth = 3; // two digits and what follows them; the last part may be longer

bool IsDigit(QChar letter)
{
    return letter >= u'0' && letter <= u'9';
}

/// A button that closes the window without taking anything, or tells about it.
bool IsWayOut(QWidget* widget)
{
    auto* const button = qobject_cast<QAbstractButton*>(widget);
    for (auto const* parent = widget->parentWidget(); button != nullptr && parent != nullptr;
         parent = parent->parentWidget()) {
        if (auto const* const box = qobject_cast<QDialogButtonBox const*>(parent)) {
            auto const role = box->buttonRole(button);
            return role == QDialogButtonBox::RejectRole || role == QDialogButtonBox::HelpRole;
        }
    }
    return false;
}

/// The user went on, rather than that the focus was moved for him.
bool IsGoneByUser(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
        || reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
}

/// The field keeps the focus within its window.
bool IsOnlyInterrupted(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason
        || reason == Qt::MenuBarFocusReason;
}

} // namespace

CPartsField::CPartsField(QString sample, QWidget* parent)
    : QLineEdit(parent)
    , m_strSample(std::move(sample))
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

bool CPartsField::IsGood() const
{
    return text() == m_strShown || !Standard(text()).isEmpty()
        || (m_bMayBeEmpty && text().trimmed().isEmpty());
}

void CPartsField::Show(QString const& standard)
{
    m_strShown = standard;
    setText(standard);
}

void CPartsField::Enter(QString const& standard)
{
    selectAll();
    insert(standard);
}

QSize CPartsField::sizeHint() const
{
    ensurePolished();
    QStyleOptionFrame option;
    initStyleOption(&option);
    auto width = fontMetrics().horizontalAdvance(m_strSample + u'0') + 4; // and the cursor
    if (!actions().isEmpty()) {
        width += 3 * style()->pixelMetric(QStyle::PM_SmallIconSize, &option, this) / 2;
    }
    auto const height = QLineEdit::sizeHint().height();
    auto const frame = style()->sizeFromContents(QStyle::CT_LineEdit, &option, {width, 0}, this);
    return {frame.width(), height};
}

void CPartsField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::OtherFocusReason) {
        selectAll(); // as after Tab: what is typed on a page that was just opened replaces the
                     // value
    }
}

void CPartsField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    auto* const to = QApplication::focusWidget();
    if (IsOnlyInterrupted(event->reason())) {
        return;
    }
    if (!IsGood()) {
        if (IsGoneByUser(event->reason()) && to != nullptr && to->window() == window()
            && to != m_pWayOut && !IsWayOut(to)) {
            Q_EMIT LeftWrong();
        }
    } else if (auto const standard = Standard(text()); standard != text()) {
        setText(standard);
    }
}

void CPartsField::keyPressEvent(QKeyEvent* event)
{
    bool const plain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
    auto const key = event->key();
    bool const isPage = key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    if (plain && (isPage || key == Qt::Key_Up || key == Qt::Key_Down)) {
        Step(key == Qt::Key_Up || key == Qt::Key_PageUp ? 1 : -1, isPage);
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void CPartsField::wheelEvent(QWheelEvent* event)
{
    event->setAccepted(hasFocus()); // it scrolls the page unless the user chose the field
    if (hasFocus()) {
        m_nWheel += event->angleDelta().y();
        auto const steps = m_nWheel / QWheelEvent::DefaultDeltasPerStep;
        m_nWheel %= QWheelEvent::DefaultDeltasPerStep;
        if (steps != 0) {
            Step(steps, false);
        }
    }
}

int CPartsField::PartOf(QString const&, int group) const
{
    return group;
}

int CPartsField::GroupAtCursor() const
{
    auto const typed = text().trimmed();
    auto const position = hasSelectedText() ? selectionStart() : cursorPosition();
    auto const before = text().left(position).trimmed();
    if (std::all_of(typed.cbegin(), typed.cend(), IsDigit)) {
        return std::clamp(static_cast<int>(before.size() - 1) / 2, 0, kLastPart);
    }
    auto const groupsEnded = [](QString const& in) {
        int count = 0;
        for (qsizetype i = 1; i < in.size(); ++i) {
            count += IsDigit(in[i - 1]) && !IsDigit(in[i]) ? 1 : 0;
        }
        return count;
    };
    return std::min({groupsEnded(text().left(position)), groupsEnded(typed + u' ') - 1, kLastPart});
}

void CPartsField::Step(int steps, bool isPage)
{
    bool const isEmpty = text().trimmed().isEmpty();
    auto const standard = isEmpty ? Now() : Standard(text());
    if (isReadOnly() || standard.isEmpty()) {
        return; // what is no value stays for the user to correct
    }
    int const part = isEmpty ? 0 : PartOf(text(), GroupAtCursor());
    if (isEmpty) {
        Enter(standard);
    } else {
        Enter(isPage ? Paged(standard, steps) : Stepped(standard, part, steps));
    }
    auto const from = part * kPartWidth;
    setSelection(from, part == kLastPart ? static_cast<int>(text().size()) - from : 2);
}
