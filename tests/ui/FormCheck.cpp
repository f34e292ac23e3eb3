#include "tests/ui/FormCheck.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
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

QString NameOf(QWidget const& widget)
{
    return widget.objectName().isEmpty() ? QLatin1StringView(widget.metaObject()->className())
                                         : widget.objectName();
}

bool IsPartOfAnother(QWidget const& widget)
{
    auto const* const parent = widget.parentWidget();
    return qobject_cast<QAbstractSpinBox const*>(parent) != nullptr
        || qobject_cast<QComboBox const*>(parent) != nullptr
        || qobject_cast<QLineEdit const*>(parent) != nullptr
        || widget.objectName().startsWith(u"qt_"_s);
}

bool IsField(QWidget const& widget)
{
    return (qobject_cast<QLineEdit const*>(&widget) != nullptr
               || qobject_cast<QAbstractSpinBox const*>(&widget) != nullptr
               || qobject_cast<QComboBox const*>(&widget) != nullptr
               || qobject_cast<QPlainTextEdit const*>(&widget) != nullptr
               || qobject_cast<QAbstractItemView const*>(&widget) != nullptr)
        && !IsPartOfAnother(widget);
}

QList<QWidget*> VisibleOf(QWidget const& form)
{
    QList<QWidget*> visible;
    auto const all = form.findChildren<QWidget*>();
    std::ranges::copy_if(all, std::back_inserter(visible), [&](QWidget const* widget) {
        return widget->isVisibleTo(&form) && widget->window() == form.window();
    });
    return visible;
}

QSet<QWidget*> LabelledOf(QList<QWidget*> const& widgets)
{
    QSet<QWidget*> labelled;
    for (auto const* const widget : widgets) {
        if (auto const* const label = qobject_cast<QLabel const*>(widget);
            label != nullptr && !label->text().isEmpty()) {
            labelled += label->buddy();
        }
    }
    return labelled;
}

/// The text of a widget that can hold a mnemonic.
QStringList MnemonicTexts(QWidget const& widget)
{
    if (auto const* const label = qobject_cast<QLabel const*>(&widget)) {
        return label->buddy() != nullptr ? QStringList{label->text()} : QStringList();
    }
    if (auto const* const button = qobject_cast<QAbstractButton const*>(&widget)) {
        return {button->text()};
    }
    if (auto const* const group = qobject_cast<QGroupBox const*>(&widget)) {
        return {group->title()};
    }
    QStringList texts;
    if (auto const* const tabs = qobject_cast<QTabBar const*>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            texts += tabs->tabText(i);
        }
    }
    return texts;
}

void CheckNames(QList<QWidget*> const& widgets, QStringList& faults)
{
    auto const labelled = LabelledOf(widgets);
    for (auto* const widget : widgets) {
        if (IsField(*widget) && !labelled.contains(widget) && widget->accessibleName().isEmpty()) {
            faults += NameOf(*widget) + u" has no label"_s;
        }
        auto const* const button = qobject_cast<QAbstractButton const*>(widget);
        if (button != nullptr && !IsPartOfAnother(*widget) && button->text().isEmpty()
            && button->accessibleName().isEmpty()) {
            faults += NameOf(*widget) + u" has no text"_s;
        }
    }
}

void CheckMnemonics(QList<QWidget*> const& widgets, QStringList& faults)
{
    QMap<QKeySequence, QString> owners;
    for (auto const* const widget : widgets) {
        auto const texts = MnemonicTexts(*widget);
        for (auto const& text : texts) {
            auto const key = QKeySequence::mnemonic(text);
            if (!key.isEmpty() && owners.contains(key)) {
                faults += u"%1 stands in '%2' and in '%3'"_s.arg(key.toString(), owners[key], text);
            }
            owners.insert(key, text);
        }
    }
}

QRect PlaceOf(QWidget const& widget)
{
    return {widget.mapToGlobal(QPoint()), widget.size()};
}

/// The two widgets, or the parents of them that stand side by side in one window or group.
void Raise(QWidget const*& a, QWidget const*& b)
{
    while (!a->parentWidget()->isAncestorOf(b)) {
        a = a->parentWidget();
    }
    auto const* const common = a->parentWidget();
    while (b->parentWidget() != common) {
        b = b->parentWidget();
    }
}

/// A step goes down, or to the right, also to the top of a column further right.
bool IsJump(QWidget const* from, QWidget const* to)
{
    Raise(from, to);
    auto const a = PlaceOf(*from);
    auto const b = PlaceOf(*to);
    bool const up = b.bottom() <= a.top();
    bool const down = b.top() >= a.bottom();
    return from != to && ((up && b.left() < a.right()) || (!up && !down && b.right() <= a.left()));
}

void CheckTabOrder(QWidget const& form, QStringList& faults)
{
    QWidget const* last = nullptr;
    auto const* const window = form.window();
    for (auto* widget = window->nextInFocusChain(); widget != window;
         widget = widget->nextInFocusChain()) {
        if (!form.isAncestorOf(widget) || !widget->isVisibleTo(&form) || IsPartOfAnother(*widget)
            || (widget->focusPolicy() & Qt::TabFocus) == 0) {
            continue;
        }
        if (last != nullptr && !last->isAncestorOf(widget) && IsJump(last, widget)) {
            faults += u"Tab jumps from %1 to %2"_s.arg(NameOf(*last), NameOf(*widget));
        }
        last = widget;
    }
}

void CheckSizes(QList<QWidget*> const& widgets, QStringList& faults)
{
    for (auto const* const widget : widgets) {
        auto const* const label = qobject_cast<QLabel const*>(widget);
        bool const isText = (label != nullptr && !label->wordWrap())
            || qobject_cast<QAbstractButton const*>(widget) != nullptr
            || qobject_cast<QGroupBox const*>(widget) != nullptr;
        auto const wanted = widget->minimumSizeHint();
        if (isText && !IsPartOfAnother(*widget)
            && (widget->width() < wanted.width() || widget->height() < wanted.height())) {
            faults += NameOf(*widget) + u" is cut"_s;
        }
    }
}

} // namespace

QStringList FaultsOf(QWidget const& form)
{
    QStringList faults;
    auto const widgets = VisibleOf(form);
    if (form.window()->windowTitle().isEmpty()) {
        faults += u"the window has no title"_s;
    }
    CheckNames(widgets, faults);
    CheckMnemonics(widgets, faults);
    CheckTabOrder(form, faults);
    CheckSizes(widgets, faults);
    return faults;
}
