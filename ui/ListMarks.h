#pragma once

#include <QIcon>

#include <array>

class QPalette;

/// The two pictures of rows, told apart by their shape: a filled square, and a hollow one with a
/// stroke across. In the colours of texts, also of a selected row.
std::array<QIcon, 2> MakeListMarks(QPalette const& palette, int size);
