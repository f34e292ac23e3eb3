#pragma once

#include "tests/ui/DialogUser.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTabWidget>
#include <QTreeView>

/// The page of a sheet that is shown; of other forms all of it.
inline QWidget const& Page(QWidget const& form)
{
    auto const* const tabs = form.findChild<QTabWidget*>(QStringLiteral("tabs"));
    return tabs != nullptr ? *tabs->currentWidget() : form;
}

/// Steps of the user on the page that is shown: types into a field ("wristEdit=7"), chooses the
/// entry of a list ("classList=2", "categoryList=Staff"), checks an optional date
/// ("fromField=1/2/26") or unchecks it ("fromField="), goes to another page ("@1"), presses a
/// button ("okYesRadio") or one of the form's own ("OK", "Cancel").
inline void Do(QWidget const& form, QString const& steps)
{
    for (auto const& step : steps.split(u' ', Qt::SkipEmptyParts)) {
        if (step.startsWith(u'@')) {
            Child<QTabWidget>(form, "tabs").setCurrentIndex(step.mid(1).toInt());
            continue;
        }
        if (step == u"OK" || step == u"Cancel") {
            Click(form, step == u"OK" ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
            continue;
        }
        auto const name = step.section(u'=', 0, 0).toLatin1();
        auto const text = step.section(u'=', 1);
        auto& field = Child<QWidget>(Page(form), name);
        QVERIFY2(field.isVisible(), name);
        if (auto* const button = qobject_cast<QAbstractButton*>(&field)) {
            button->click();
        } else if (auto* const box = qobject_cast<QComboBox*>(&field)) {
            int const entry = box->findText(text);
            Choose(*box, entry >= 0 ? entry : text.toInt());
        } else if (auto* const list = qobject_cast<QAbstractItemView*>(&field)) {
            list->setCurrentIndex(list->model()->index(text.toInt(), 0));
        } else {
            if (auto* const check = field.findChild<QCheckBox*>()) { // of an optional date
                check->setChecked(!text.isEmpty());
            }
            auto* const inner = field.findChild<QLineEdit*>(); // of a field with arrows
            Type(inner != nullptr ? *inner : field, text);
        }
    }
}

inline CDialogUser::Step Steps(QString const& steps)
{
    return [steps](QDialog& form) { Do(form, steps); };
}

/// Sees a list's title, its first heading and how many rows it has, and closes it.
inline CDialogUser::Step SeeList(QString& seen)
{
    return [&seen](QDialog& list) {
        auto const& model = *Child<QTreeView>(list, "recordList").model();
        seen = list.windowTitle() + u'|' + model.headerData(0, Qt::Horizontal).toString() + u'|'
            + QString::number(model.rowCount());
        Child<QPushButton>(list, "okButton").click();
    };
}

/// What labels and fields show: "M|35" for "sexText ageText".
inline QString Texts(QWidget const& in, QString const& names)
{
    QStringList texts;
    for (auto const& name : names.split(u' ')) {
        texts += Child<QWidget>(in, name.toLatin1()).property("text").toString();
    }
    return texts.join(u'|');
}

/// After each of the steps they show that.
inline void Shows(
    QWidget const& form, QString const& names, QList<std::pair<QString, QString>> const& cases)
{
    for (auto const& [steps, texts] : cases) {
        Do(form, steps);
        QCOMPARE(Texts(Page(form), names), texts);
    }
}
