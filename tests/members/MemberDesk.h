#pragma once

#include "tests/doc/TestDesk.h"
#include "ui/Convert.h"

#include <QLineEdit>
#include <QTabWidget>

/// A desk over a fresh centre that has member 7, on an evening in 2026.
class CMemberDesk : public CTestDesk
{
public:
    CMemberDesk()
    {
        CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 9));
        QVERIFY(m_doc.OnNewDocument());
        StoreSeven();
    }

    /// A row in each table.
    static void StoreSeven()
    {
        for (auto const* const row : {"members VALUES (NULL, 7, 1007, 'Ann', 'B', 'Archer', 1)",
                 "profiles VALUES (NULL, 7, '3 Elm', 'Salem', 'OR', '97301', '555-0100',"
                 " 'ann@example.org', 'Bo', '555-0101', 'Dr. Ray', 1, 0, 3000000000, 0,"
                 " 0x80000003, 0x80000001)",
                 "enrollments VALUES (NULL, 7, 3990000000, 4020000000, 3, 1)",
                 "classes VALUES (NULL, 7, 4, 'Staff', 'Wellness', 'Morning', 1, 1, 2, 3)",
                 "messages VALUES (NULL, 7, 'Bring a towel')",
                 "workouts VALUES (NULL, 7, 1, 4, 4000000000, 4000003000, 2, 1, 2, 3, 4, 5, 6, 7,"
                 " 8, 9, 10, 11, 12)"}) {
            RunOnMembers(std::string("INSERT INTO ") + row);
        }
    }

    /// All rows of these tables, one line each, without their keys. Letters are single bytes.
    static QStringList Rows(QStringList const& tables
        = {QStringLiteral("members"), QStringLiteral("profiles"), QStringLiteral("enrollments"),
            QStringLiteral("classes"), QStringLiteral("messages"), QStringLiteral("workouts")})
    {
        QStringList lines;
        CDbStatus status;
        auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
        for (auto const& table : tables) {
            CRowBlock rows;
            status = database->Query(
                "SELECT * FROM " + FromQt(table) + " ORDER BY id", std::vector<DbValue>(), rows);
            [&] { QVERIFY2(status, qPrintable(table)); }();
            for (std::size_t row = 0; row < rows.Rows(); ++row) {
                QStringList cells;
                for (std::size_t i = 1; i < rows.Columns(); ++i) {
                    auto const& cell = rows.Row(row).Cell(i);
                    cells += cell.type == CCell::text
                        ? QString::fromLatin1(rows.Row(row).Text(cell))
                        : cell.type == CCell::real ? QString::number(cell.realValue)
                                                   : QString::number(cell.integerValue);
                }
                lines += table + QStringLiteral(": ") + cells.join(u'|');
            }
        }
        return lines;
    }

    bool Edit(int memberID, CDialogUser::Step const& step)
    {
        return Use({step}, [&] { return m_doc.EditMember(memberID); });
    }
};

inline QLineEdit& Edit(QDialog const& dialog, char const* name)
{
    return Child<QLineEdit>(dialog, name);
}

inline QTabWidget& Tabs(QWidget const& sheet)
{
    return Child<QTabWidget>(sheet, "tabs");
}

inline QWidget& ShowPage(QWidget const& sheet, int page)
{
    Tabs(sheet).setCurrentIndex(page);
    return *Tabs(sheet).currentWidget();
}
