#pragma once

#include "doc/CorvanaDoc.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/MessageRecorder.h"
#include "tests/ui/UserSteps.h"

#include <type_traits>

/// A document over a fresh centre, and who sits in front of it.
class CTestDesk
{
public:
    CTestCentre const m_centre;
    CMessageRecorder m_messages;
    CTestApp m_app;
    CTestViews m_views;
    CCorvanaDoc m_doc{m_app};

    CTestDesk() { m_doc.SetViews(&m_views); }

    /// The operation's result, after checking that each of its dialogs came and went.
    template <typename Operation>
    static bool Use(QList<CDialogUser::Step> const& steps, Operation const& operation)
    {
        CDialogUser const user(steps);
        bool const result = operation();
        [&] { QCOMPARE(user.Faults().join(QLatin1Char(59)), QString()); }();
        return result;
    }

    /// The messages that an operation ends with, one of the document or any other.
    template <typename Operation>
    QString Told(QList<CDialogUser::Step> const& steps, Operation const& operation)
    {
        auto const before = m_messages.Texts().size();
        Use(steps, [&] {
            if constexpr (std::is_member_function_pointer_v<Operation>) {
                (m_doc.*operation)();
            } else {
                operation();
            }
            return true;
        });
        return m_messages.Texts().sliced(before).join(u'|');
    }

    /// The same of a button of a form.
    QString Press(
        QDialog const& form, QString const& button, QList<CDialogUser::Step> const& steps = {})
    {
        return Told(steps, [&] { Do(form, button); });
    }

    /// OK: empty when the form has closed, else the new messages and the field in focus.
    QString Ok(QDialog const& form) const
    {
        auto const before = m_messages.Texts().size();
        ClickOk(form);
        auto const texts = m_messages.Texts().sliced(before);
        return form.isVisible()
            ? texts.join(u';') + QStringLiteral(" @") + form.focusWidget()->objectName()
            : QString();
    }

    /// After each of the steps OK gives its refusal: "message @field".
    void Refuses(QDialog const& form, QList<std::pair<QString, QString>> const& cases) const
    {
        for (auto const& [steps, refusal] : cases) {
            Do(form, steps);
            QCOMPARE(Ok(form), refusal);
        }
    }
};
