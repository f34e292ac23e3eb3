#pragma once

#include "ui/TextLimit.h"

#include <cstdint>
#include <string>

class COneLineList;
class CSpinField;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;
class QString;
class QWidget;

// The exchange between fields and what they edit; dates and times have one of their own. The Take
// functions without a bool never object. Those that are given what a field was filled with return
// exactly that as long as the user has not touched the field: what another program stored and the
// field cannot show, such as a text that is too long for it, is not written back changed.

// Texts

/// The field takes no keys but digits.
void TakeDigitsOnly(QLineEdit& field);
/// The field takes no keys, or takes them again. Its text can be read and copied either way; it
/// looks like the form around it as long as it takes none.
void SetReadOnly(QLineEdit& field, bool readOnly);
void ShowText(QLineEdit& field, std::string const& value);
void ShowText(QPlainTextEdit& field, std::string const& value);
std::string TakeText(QLineEdit const& field, std::string const& shown);
std::string TakeText(QPlainTextEdit const& field, std::string const& shown);

// Numbers. A text that is no number, or one out of range, is refused with the standard message:
// false, and the field has the focus with its text selected.

template <typename T>
struct CRange
{
    T least;
    T greatest;
};

bool TakeNumber(QLineEdit& field, CRange<std::int32_t> range, std::int32_t& value);
bool TakeNumber(CSpinField& field, CRange<std::int32_t> range, std::int32_t& value);
/// With "." as the decimal point, whatever the locale.
bool TakeNumber(QLineEdit& field, CRange<double> range, double& value);

// Choices

/// Checks the first button of the pair for true, the second one for false.
void ShowPair(QRadioButton& whenTrue, QRadioButton& whenFalse, bool value);
/// Selects the entry that is the text, else the first one that begins with it, ignoring case; none
/// when there is none or the text is empty. Returns whether one was found.
bool SelectBeginning(QComboBox& list, QString const& text);
bool SelectBeginning(COneLineList& list, QString const& text);
