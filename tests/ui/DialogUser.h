#pragma once

#include "ui/WaitDlg.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>

#include <functional>

/// The child of that kind and object name; the test ends when there is none.
template <typename T>
T& Child(QWidget const& in, char const* name)
{
    auto* const child = in.findChild<T*>(QLatin1StringView(name));
    if (child == nullptr) {
        qFatal("%s has no child %s", qPrintable(in.objectName()), name);
    }
    return *child;
}

inline void Click(QWidget const& dialog, QDialogButtonBox::StandardButton which)
{
    dialog.findChild<QDialogButtonBox*>()->button(which)->click();
}

inline void ClickOk(QWidget const& dialog)
{
    Click(dialog, QDialogButtonBox::Ok);
}

inline void ClickCancel(QWidget const& dialog)
{
    Click(dialog, QDialogButtonBox::Cancel);
}

/// Replaces what stands in a field by typing; the field keeps the focus.
inline void Type(QWidget& field, QString const& text)
{
    field.setFocus();
    QMetaObject::invokeMethod(&field, "selectAll");
    QTest::keyClick(&field, Qt::Key_Delete);
    for (auto const letter : text) { // keyClicks knows no letters beyond ASCII
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_unknown, letter, Qt::NoModifier);
    }
}

/// Opens a list, goes to an entry and closes the list by that key.
inline void Choose(QComboBox& list, int index, Qt::Key key = Qt::Key_Return)
{
    list.showPopup();
    list.view()->setCurrentIndex(list.model()->index(index, 0));
    QTest::keyClick(list.view(), key);
    QCoreApplication::processEvents(); // the list tells that it closed once its choice stands
}

/// Uses the modal dialogs that open while it lives: each takes the next step, once. Wait windows
/// take none. A dialog that its step leaves open, or that opens when there is no step left, is a
/// fault, and is cancelled.
class CDialogUser : public QObject
{
public:
    using Step = std::function<void(QDialog&)>;

    explicit CDialogUser(QList<Step> steps)
        : m_lstSteps(std::move(steps))
    {
        startTimer(5);
    }

    /// Empty when every dialog came and went as planned.
    QStringList Faults() const
    {
        auto faults = m_lstFaults;
        if (!m_lstSteps.isEmpty()) {
            faults += QStringLiteral("%1 dialogs did not open").arg(m_lstSteps.size());
        }
        return faults;
    }

protected:
    void timerEvent(QTimerEvent*) override
    {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog == m_pLast || !dialog->isVisible()
            || qobject_cast<CWaitDlg*>(dialog) != nullptr) {
            return;
        }
        auto* const before = std::exchange(m_pLast, dialog);
        if (!m_lstSteps.isEmpty()) {
            m_lstSteps.takeFirst()(*dialog);
        }
        m_pLast = before;
        if (dialog->isVisible()) {
            m_lstFaults += dialog->windowTitle() + QStringLiteral(" stayed open");
            dialog->done(QDialog::Rejected);
        }
    }

private:
    QList<Step> m_lstSteps;
    QStringList m_lstFaults;
    QDialog* m_pLast = nullptr;
};
