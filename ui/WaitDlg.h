#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QBoxLayout;
class QPushButton;

/// Whether the user can end an operation before all of it is done.
enum class CStoppable
{
    no,
    yes
};

/// The window that asks the user to wait, for as long as it lives:
///
///     CWaitDlg wait(tr("Printing, please wait..."));
///
/// It is on the screen, painted, when its constructor returns. While it is shown the user can do
/// nothing else, and what he clicks or types is thrown away rather than kept for later. Only a
/// window of an operation that can be stopped has a button Stop that can be pressed, also with Esc.
/// The wait cursor is the operation's own matter.
class CWaitDlg : public QDialog
{
    Q_OBJECT
public:
    /// Shows the sentence over owner's window; without one over the dialog in front, else over the
    /// main window, else in the middle of the screen.
    explicit CWaitDlg(QString const& sentence, QWidget* owner = nullptr);
    ~CWaitDlg() override;

    /// The user wants the operation to end: it does so at the next place where nothing is half
    /// done. Asked after each step; what was pressed comes in with the next Pump().
    bool IsStopped() const { return m_bStopped; }

    void reject() override; // Esc: only the operation ends the wait

protected:
    /// For windows with more in them: they add it to Content() and then call Present().
    CWaitDlg(QString const& sentence, QWidget* owner, int textID, QSize dialogUnits);
    QBoxLayout* Content() const { return m_pContent; }
    void AddStopButton();
    void Present();
    /// Handles what the window system has sent, and so throws the user's input away.
    void Pump();
    /// Whether the last Pump() is at least 1/60 s ago.
    bool IsPumpDue() const;

    void closeEvent(QCloseEvent* event) override;

private:
    void Stop();

    QBoxLayout* m_pContent = nullptr;
    QPushButton* m_pStopButton = nullptr; ///< null when the operation cannot be stopped
    bool m_bStopped = false;
    QElapsedTimer m_lastPump;
};
