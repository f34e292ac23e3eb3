#pragma once

#include "doc/TreeNode.h"

#include <cstdint>

class QString;
class QWidget;

/// What the document tells the views of the main window.
class CDocViews
{
public:
    CDocViews() = default;
    virtual ~CDocViews() = default;
    CDocViews(CDocViews const&) = delete;
    CDocViews& operator=(CDocViews const&) = delete;

    /// The window that dialogs of the document belong to.
    virtual QWidget* Window() = 0;

    /// Shows the result of an operation where it does not interrupt the user.
    virtual void ShowResult(QString const& text) = 0;

    // The member tree. Whoever changes records calls these afterwards, with the document's set of
    // small member records closed.

    /// Starts the tree anew; it loads the members when its root is opened the next time.
    virtual void ResetTree() = 0;
    /// Shows a member that was added. False when there is no such member.
    virtual bool AddMemberNode(std::int32_t memberID) = 0;
    /// False when the tree does not show the member.
    virtual bool RemoveMemberNode(std::int32_t memberID) = 0;
    /// Closes the member's branch of that kind, or with kMembersNode all three, so that it loads
    /// anew when it is opened; with kMembersNode also shows the present name. When the ID has been
    /// changed, memberID is the new one and previousID the one before, else 0. False when the tree
    /// does not show the member.
    virtual bool RefreshMemberNode(std::int32_t memberID, CTreeNode kind, std::int32_t previousID)
        = 0;
};
