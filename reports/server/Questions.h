#pragma once

#include <QString>

class QWidget;

// The message boxes of the report server. Texts are plain, never markup.

void TellUser(QWidget* parent, QString const& text, QString const& detail = {});
/// Of something that cannot be undone: Yes and No, and No is the default.
bool AskToDestroy(QWidget* parent, QString const& text);

enum class CQuitChoice
{
    finish, ///< the report in hand first
    giveBack,
    stay
};
CQuitChoice AskHowToQuit(QWidget* parent);
