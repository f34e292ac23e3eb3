#pragma once

#include <optional>

class QGridLayout;
class QLineEdit;

/// What is usual for a value that a form takes. Others are taken without a question.
struct CUsual
{
    double m_dLeast;
    double m_dGreatest;
    double m_dChange = 0.0; ///< percent, up or down, since the record before; 0 for any
};

/// Puts a note beside a number field, into the next column of its row in the grid: the value in the
/// record before, "last 181.50", and as long as the one in the field is unusual a quiet hint. A
/// value of 0 means that nothing was measured; it gets no hint, nor does an edit that cannot be
/// typed into, or one of which nothing is said to be usual. The note describes the field for screen
/// readers too.
void AddFieldNote(QGridLayout& grid, QLineEdit& edit, int decimals,
    std::optional<CUsual> const& usual, std::optional<double> last);
