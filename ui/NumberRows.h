#pragma once

#include <QString>

#include <span>
#include <vector>

class CSpinField;
class QGridLayout;
class QLabel;
class QLineEdit;
class QWidget;

/// One of the rows of a form that repeat: a label and a field for a number.
struct CNumberRow
{
    QLabel* m_pLabel = nullptr;
    QLineEdit* m_pEdit = nullptr; ///< right-aligned; with spin buttons it stands in m_pSpin
    CSpinField* m_pSpin = nullptr; ///< null without spin buttons
    int m_nGridRow = 0; ///< place of the label in the grid
    int m_nGridColumn = 0;
};

/// How the rows of a form repeat. Row n, from 1 on, has widgets named as "station3Label",
/// "station3Edit" and "station3Spin".
struct CNumberRowsPlan
{
    QString m_strName; ///< "station"
    int m_nCount; ///< of rows, in all columns
    int m_nColumns = 1; ///< filled one after the other, from top to bottom
    int m_nTop = 0; ///< row of the grid in which they begin, below headings
    int m_nCells = 2; ///< of the grid that a row takes; those beyond two are the form's own
    bool m_bSpin = false; ///< with spin buttons
    QWidget* m_pAfter = nullptr; ///< from which Tab goes to the first row
    std::span<int const> m_lstEditIDs = {}; ///< control numbers, one a row, or none
    std::span<int const> m_lstSpinIDs = {};
};

/// Builds the rows into a grid of a form, which owns them, in tab order.
std::vector<CNumberRow> BuildNumberRows(QGridLayout& grid, CNumberRowsPlan const& plan);

/// Labels the rows from the first one on; those beyond the names hide. The names are plain text.
void NameRows(std::vector<CNumberRow> const& rows, std::vector<QString> const& names);
