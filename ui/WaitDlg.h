#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QBoxLayout;

/// The window that asks the user to wait, for as long as it lives:
///
///     CWaitDlg wait(tr("Printing, please wait..."));
///
/// It is on the screen, painted, when its constructor returns. While it is shown the user can do
/// nothing else, and what he clicks or types is thrown away rather than kept for later. The wait
/// cursor is the operation's own matter.
class CWaitDlg : public QDialog
{
    Q_OBJECT
public:
    /// Shows the sentence over owner's window; without one over the dialog in front, else over the
    /// main window, else in the middle of the screen.
    explicit CWaitDlg(QString const& sentence, QWidget* owner = nullptr);
    ~CWaitDlg() override;

    void reject() override; // refuses: only the operation ends the wait

protected:
    /// For windows with more in them: they add it to Content() and then call Present().
    CWaitDlg(QString const& sentence, QWidget* owner, int textID, QSize dialogUnits);
    QBoxLayout* Content() const { return m_pContent; }
    void Present();
    /// Handles what the window system has sent, and so throws the user's input away.
    void Pump();
    /// Whether the last Pump() is at least 1/60 s ago.
    bool IsPumpDue() const;

    void closeEvent(QCloseEvent* event) override;

private:
    QBoxLayout* m_pContent = nullptr;
    QElapsedTimer m_lastPump;
};
