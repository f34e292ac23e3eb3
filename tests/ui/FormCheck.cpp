#include "tests/ui/FormCheck.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPlainTextEdit>
#include <QSet>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace
{

using CWidgets = QList<QWidget*>;

template <typename... Kinds>
bool IsAny(QWidget const* widget)
{
    return (... || (qobject_cast<Kinds const*>(widget) != nullptr));
}

bool IsPartOfAnother(QWidget const* widget)
{
    return IsAny<QAbstractSpinBox, QComboBox, QLineEdit>(widget->parentWidget())
        || IsAny<QHeaderView>(widget) || widget->objectName().startsWith(u"qt_"_s);
}

QString NameOf(QWidget const* widget)
{
    return widget->objectName().isEmpty() ? QLatin1StringView(widget->metaObject()->className())
                                          : widget->objectName();
}

/// The texts of a widget that can hold a mnemonic.
QStringList MnemonicTexts(QWidget const* widget)
{
    auto const* const label = qobject_cast<QLabel const*>(widget);
    if (IsAny<QAbstractButton>(widget) || (label != nullptr && label->buddy() != nullptr)) {
        return {widget->property("text").toString()};
    }
    QStringList texts = {widget->property("title").toString()}; // of a group
    auto const* const tabs = qobject_cast<QTabBar const*>(widget);
    for (int i = 0; tabs != nullptr && i < tabs->count(); ++i) {
        texts += tabs->tabText(i);
    }
    return texts;
}

void CheckMnemonics(CWidgets const& widgets, QStringList& faults)
{
    QMap<QKeySequence, QString> owners;
    for (auto const* const widget : widgets) {
        auto const* const label = qobject_cast<QLabel const*>(widget);
        if (label != nullptr && label->buddy() != nullptr
            && label->buddy()->focusPolicy() == Qt::NoFocus
            && !QKeySequence::mnemonic(label->text()).isEmpty()) {
            faults += u"'%1' leads nowhere"_s.arg(label->text());
        }
        auto const texts = MnemonicTexts(widget);
        for (auto const& text : texts) {
            auto const key = QKeySequence::mnemonic(text);
            if (!key.isEmpty() && owners.contains(key)) {
                faults += u"%1 stands in '%2' and in '%3'"_s.arg(key.toString(), owners[key], text);
            }
            owners.insert(key, text);
        }
    }
}

bool IsField(QWidget const* widget)
{
    return IsAny<QLineEdit, QAbstractSpinBox, QComboBox, QPlainTextEdit, QAbstractItemView>(widget);
}

void CheckTexts(CWidgets const& widgets, QStringList& faults)
{
    QSet<QWidget const*> named;
    for (auto const* const widget : widgets) {
        auto const* const label = qobject_cast<QLabel const*>(widget);
        if (label != nullptr && !label->text().isEmpty()) {
            named += label->buddy();
        }
    }
    for (auto const* const widget : widgets) {
        bool const isButton = IsAny<QAbstractButton>(widget);
        bool const isSilent = widget->accessibleName().isEmpty();
        if (isSilent && IsField(widget) && !named.contains(widget)) {
            faults += NameOf(widget) + u" has no label"_s;
        }
        if (isSilent && isButton && widget->property("text").toString().isEmpty()) {
            faults += NameOf(widget) + u" has no text"_s;
        }
        auto const* const label = qobject_cast<QLabel const*>(widget);
        bool const isOneLine
            = isButton || IsAny<QGroupBox>(widget) || (label != nullptr && !label->wordWrap());
        if (isOneLine && widget->size().expandedTo(widget->minimumSizeHint()) != widget->size()) {
            faults += NameOf(widget) + u" is cut"_s;
        }
    }
}

QRect PlaceOf(QWidget const* widget)
{
    return {widget->mapToGlobal(QPoint()), widget->size()};
}

/// The two widgets, or the parents of them that stand side by side in one window or group.
void Raise(QWidget const*& a, QWidget const*& b)
{
    while (!a->parentWidget()->isAncestorOf(b)) {
        a = a->parentWidget();
    }
    while (b->parentWidget() != a->parentWidget()) {
        b = b->parentWidget();
    }
}

/// A step goes down, or to the right, also to the top of a column further right.
bool IsJump(QWidget const* from, QWidget const* to)
{
    Raise(from, to);
    auto const a = PlaceOf(from);
    auto const b = PlaceOf(to);
    bool const up = b.bottom() <= a.top();
    bool const down = b.top() >= a.bottom();
    return from != to && ((up && b.left() < a.right()) || (!up && !down && b.right() <= a.left()));
}

void CheckTabOrder(QWidget const& window, CWidgets const& widgets, QStringList& faults)
{
    QWidget const* last = nullptr;
    for (auto* widget = window.nextInFocusChain(); widget != &window;
         widget = widget->nextInFocusChain()) {
        if (!widgets.contains(widget) || (widget->focusPolicy() & Qt::TabFocus) == 0) {
            continue;
        }
        if (last != nullptr && !last->isAncestorOf(widget) && IsJump(last, widget)) {
            faults += u"Tab jumps from %1 to %2"_s.arg(NameOf(last), NameOf(widget));
        }
        last = widget;
    }
}

} // namespace

QStringList FaultsOf(QWidget const& form)
{
    QStringList faults;
    auto const* const window = form.window();
    if (window->windowTitle().isEmpty()) {
        faults += u"the window has no title"_s;
    }
    auto widgets = form.findChildren<QWidget*>();
    widgets.removeIf([&](QWidget const* widget) {
        return !widget->isVisibleTo(&form) || widget->window() != window;
    });
    CheckMnemonics(widgets, faults);
    widgets.removeIf(IsPartOfAnother);
    CheckTexts(widgets, faults);
    CheckTabOrder(*window, widgets, faults);
    return faults;
}
