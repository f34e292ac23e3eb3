#pragma once

#include "platform/qt/PropertySheet.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/MessageRecorder.h"

#include <QRadioButton>

/// A page of the member editor in a sheet of its own over a fresh centre, and who uses it.
template <typename Page>
class CPageUser
{
public:
    template <typename... Args>
    explicit CPageUser(Args&... args)
        : m_page(*new Page(args...))
    {
        m_sheet.AddPage(&m_page, QStringLiteral("Page"));
    }

    CPropertySheet m_sheet{QStringLiteral("Member")};
    CMessageRecorder m_messages;
    Page& m_page;

    void Show()
    {
        m_sheet.show();
        QVERIFY(QTest::qWaitForWindowActive(&m_sheet));
    }
    template <typename T>
    T& Field(char const* name) const
    {
        return Child<T>(m_sheet, name);
    }
    void Enter(char const* field, QString const& text) { Type(Field<QWidget>(field), text); }
    void Check(char const* radio) { Field<QRadioButton>(radio).click(); }

    /// OK: empty when it was accepted, else the text of the message and the field in focus.
    QString Ok()
    {
        auto const before = m_messages.Texts().size();
        m_sheet.setResult(QDialog::Rejected);
        ClickOk(m_sheet);
        if (m_sheet.result() == QDialog::Accepted) {
            return {};
        }
        auto const texts = m_messages.Texts().sliced(before);
        auto const* const focus = m_sheet.focusWidget();
        return texts.join(u';') + QStringLiteral(" @") + (focus ? focus->objectName() : QString());
    }
};
