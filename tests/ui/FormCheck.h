#pragma once

#include <QStringList>

class QWidget;

/// What is wrong with a shown form for someone who uses the keyboard alone, a screen reader or a
/// large font: a field without a label of its own, a button without text, a mnemonic that stands
/// twice or leads nowhere, a tab order that goes against the reading order, a window without title,
/// a text that is cut. Empty when nothing is.
QStringList FaultsOf(QWidget const& form);
