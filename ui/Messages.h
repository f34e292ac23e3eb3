#pragma once

#include <QString>

class QWidget;

/// The icon beside a message. Screen readers do not see it, so the text must carry the meaning.
enum class CMessageIcon
{
    none,
    exclamation
};

/// The pair of buttons under a question. The first one is the default and means yes; the second
/// one, Esc and closing the box mean no.
enum class CQuestion
{
    yesNo,
    okCancel,
    retryCancel,
    destroying, ///< Yes and No; Yes deletes or overwrites records, so that No is the default
    destroyingOkCancel ///< the same with OK and Cancel
};

/// One message as the user gets to see it.
struct CMessage
{
    QString m_strText;
    QString m_strDetail; ///< smaller text below, may be empty; a long one is shown on request
    CMessageIcon m_icon = CMessageIcon::none;
    bool m_bQuestion = false; ///< false: there is one button, OK
    CQuestion m_question = CQuestion::yesNo; ///< only of a question
};

/// Shows messages. There is one at a time; the usual one opens message boxes.
class CMessageShower
{
public:
    CMessageShower() = default;
    virtual ~CMessageShower() = default;
    CMessageShower(CMessageShower const&) = delete;
    CMessageShower& operator=(CMessageShower const&) = delete;

    /// Shows the message over parent (may be null) and returns whether a question was answered
    /// with its first button.
    virtual bool Show(QWidget* parent, CMessage const& message) = 0;
};

/// Puts another one in charge, null for the usual one, and returns the one before. Not owned.
CMessageShower* SetMessageShower(CMessageShower* shower);

// No other code opens a message box. All of these put the wait cursor away while they show, and
// show over the active window when parent is null. Texts are plain, never markup.

/// Tells the user something and waits for OK.
void Tell(QWidget* parent, QString const& text, CMessageIcon icon = CMessageIcon::none,
    QString const& detail = {});

/// Asks the user something. Returns true for the first button: Yes, OK or Retry.
bool Ask(QWidget* parent, QString const& text, CQuestion question = CQuestion::yesNo,
    CMessageIcon icon = CMessageIcon::none, QString const& detail = {});

/// Refuses what stands in a field: shows the text, unless it is empty, then puts the focus into
/// the field and selects what is in it. Always returns false.
bool Refuse(QWidget* field, QString const& text);
