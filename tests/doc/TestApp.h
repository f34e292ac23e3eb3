#pragma once

#include "doc/AppCommands.h"
#include "doc/DocViews.h"

#include <QString>
#include <QStringList>

#include <set>

/// An application that only notes what it is asked for.
class CTestApp : public CAppCommands
{
public:
    QStringList m_lstCalls;
    std::set<CAppOption> m_options; ///< those that are on

    void ShowAbout() override { m_lstCalls += QStringLiteral("ShowAbout"); }
    void SetUpPrinter() override { m_lstCalls += QStringLiteral("SetUpPrinter"); }
    void Exit() override { m_lstCalls += QStringLiteral("Exit"); }
    bool IsOptionOn(CAppOption option) const override { return m_options.contains(option); }
    void ToggleOption(CAppOption) override { m_lstCalls += QStringLiteral("ToggleOption"); }
    bool StartReportServer() override
    {
        m_lstCalls += QStringLiteral("StartReportServer");
        return true;
    }
    void StopReportServer() override { m_lstCalls += QStringLiteral("StopReportServer"); }
};

/// Views that only note what they are told.
class CTestViews : public CDocViews
{
public:
    QStringList m_lstResults;
    QStringList m_lstTreeCalls; ///< "Refresh 12 -9 0"

    QWidget* Window() override { return nullptr; }
    void ShowResult(QString const& text) override { m_lstResults += text; }

    void ResetTree() override { Note(QStringLiteral("Reset")); }
    bool AddMemberNode(std::int32_t id) override { return Note(QStringLiteral("Add"), id); }
    bool RemoveMemberNode(std::int32_t id) override { return Note(QStringLiteral("Remove"), id); }
    bool RefreshMemberNode(std::int32_t id, CTreeNode kind, std::int32_t previousID) override
    {
        return Note(QStringLiteral("Refresh"), id, int(kind), previousID);
    }

private:
    template <typename... Numbers>
    bool Note(QString const& call, Numbers... numbers)
    {
        m_lstTreeCalls += (call + ... + (QChar(u' ') + QString::number(numbers)));
        return true;
    }
};
