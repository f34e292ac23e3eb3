#pragma once

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
};
