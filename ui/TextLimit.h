#pragma once

class QLineEdit;
class QPlainTextEdit;

// The longest text that a field takes. Of what is pasted the beginning is taken, as far as it fits,
// whole letters only. A text that was put in too long stays as it is; it can be shortened, nothing
// can be added. All of that can be undone.

/// The field takes no more than that many letters, as a person counts them: an accent belongs to
/// its letter, however the two are spelled. Not for a field that takes digits only.
void LimitText(QLineEdit& field, int letters);
/// The field takes no more than that many characters, as the store counts them in a message.
void LimitText(QPlainTextEdit& field, int characters);
