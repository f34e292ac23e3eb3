#pragma once

#include "ui/PrintOut.h"

#include <QStringList>

#include <functional>

class CDAOMem;

/// A letter to members: the date, a member's name and address and a salutation stand above its
/// body.
struct CMergeLetter
{
    int m_nBlankLines = 0; ///< above the date
    QStringList m_lstBody;
};

/// Whom it goes to.
enum class CLetterExtent
{
    first, ///< of the members found who are still there
    all
};

/// Prints a letter to each of the members found, in the order of the search; to none whom another
/// program has deleted since. What does not fit on a page goes on the next one. step is called with
/// each member's turn.
CPrinted PrintMergeLetters(QPagedPaintDevice& device, CDAOMem& found, CMergeLetter const& letter,
    CLetterExtent extent, int mostPages, std::function<void()> const& step);
