#pragma once

#include <QLabel>

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

/// Stands beside a number field: the value in the record before, "last 181.50", and as long as the
/// one in the field is unusual a quiet hint. A value of 0 means that nothing was measured; it gets
/// no hint and is no value before. There is no hint either in an edit that cannot be typed into, or
/// one of which nothing is said to be usual. The note describes the field for screen readers too.
class CFieldNote : public QLabel
{
public:
    CFieldNote(QLineEdit& edit, int decimals);

    void Set(std::optional<CUsual> const& usual, std::optional<double> last);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void ShowNote();

    QLineEdit& m_edit;
    QWidget& m_field; ///< the edit, or the spin buttons that it belongs to
    int const m_nDecimals;
    std::optional<CUsual> m_usual;
    double m_dLast = 0.0;
};

/// Puts a note beside a number field, into the next free column of its row in the grid. It can be
/// set again, such as for another unit.
CFieldNote& AddFieldNote(QGridLayout& grid, QLineEdit& edit, int decimals,
    std::optional<CUsual> const& usual, std::optional<double> last);
