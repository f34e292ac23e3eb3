// What leaves a list: printed pages, PDF files, copied text, files for spreadsheets.
#include "ui/ListDlg.h"

#include "ui/Convert.h"
#include "ui/ListPrinter.h"
#include "ui/Messages.h"
#include "ui/PrintOut.h"
#include "ui/SaveFile.h"
#include "ui/WaitCursor.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QIODevice>

#include <algorithm>
#include <span>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// A cell of a file for spreadsheets. They take a text for a formula, and run it, when it begins
/// like one; a number may.
QString CsvCell(QString text)
{
    bool isNumber = false;
    text.toDouble(&isNumber);
    if (!text.isEmpty() && u"=+-@\t\r"_s.contains(text.front()) && !isNumber) {
        text.prepend(u'\'');
    }
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

QByteArray CsvLine(QStringList cells)
{
    std::ranges::transform(cells, cells.begin(), CsvCell);
    return (cells.join(u',') + u"\r\n"_s).toUtf8();
}

/// Cells in a line of text, each behind the next tab.
QString CopiedLine(QStringList cells)
{
    for (auto& cell : cells) {
        for (auto& letter : cell) {
            letter = letter == u'\t' || letter == u'\n' || letter == u'\r' ? u' ' : letter;
        }
    }
    return cells.join(u'\t') + u'\n';
}

} // namespace

// ---- texts of rows

QStringList CListDlg::Headings() const
{
    QStringList headings;
    for (auto const& column : m_pModel->Columns()) {
        headings += column.m_strHeading;
    }
    return headings;
}

/// Calls write with the texts of the rows at some places, as the list shows them, until it returns
/// false. Rows that are gone are left out. False when not all could be read or written.
bool CListDlg::WriteRows(
    std::vector<std::int32_t> const& places, std::function<bool(QStringList const&)> const& write)
{
    bool isWritten = true;
    bool const isRead = m_rows.Read(places, [&](std::size_t, CListRows::Row row) {
        if (row == CListRows::Row::read) {
            QStringList texts;
            for (auto const& column : m_pModel->Columns()) {
                texts += ToQt(column.m_fnText());
            }
            isWritten = write(texts);
        }
        return isWritten;
    });
    return isRead && isWritten;
}

void CListDlg::TellNotRead()
{
    Tell(this, m_texts.m_strNotRead, CMessageIcon::none, ToQt(m_rows.Found().LastStatus().Text()));
}

// ---- copying and saving

void CListDlg::CopyRow()
{
    if (int const row = SelectedRow(); row >= 0) {
        Copy({m_pModel->PlaceOf(row)}, {});
    }
}

void CListDlg::CopyAll()
{
    Copy(m_pModel->PlacesShown(), CopiedLine(Headings()));
}

void CListDlg::Copy(std::vector<std::int32_t> const& places, QString text)
{
    CWaitCursor const wait;
    bool const isRead = WriteRows(places, [&](QStringList const& cells) {
        text += CopiedLine(cells);
        return true;
    });
    if (isRead) {
        QGuiApplication::clipboard()->setText(text);
    } else {
        TellNotRead();
    }
}

void CListDlg::SaveAsCsv()
{
    CFileQuestion const question
        = {tr("Save As"), FileNameOf(m_strTitle) + u".csv"_s, tr("Tables (*.csv)"), true};
    SaveFile(this, question, u".csv"_s, [this](QIODevice& file) {
        auto const put = [&](QByteArray const& line) { return file.write(line) == line.size(); };
        // With a mark that tells spreadsheets that it is UTF-8.
        if (!put(QByteArray("\xEF\xBB\xBF") + CsvLine(Headings()))) {
            return false;
        }
        return WriteRows(
            m_pModel->PlacesShown(), [&](QStringList const& cells) { return put(CsvLine(cells)); });
    });
}

// ---- printing

bool CListDlg::AskPrintItems(bool withPrinter)
{
    QStringList remarks;
    if (m_pModel->rowCount() < m_pModel->Found()) {
        remarks
            += tr("All %1 rows are printed, not only the %2 shown.")
                   .arg(QString::number(m_pModel->Found()), QString::number(m_pModel->rowCount()));
    }
    if (withPrinter) {
        remarks += PrinterNote();
    }
    CPrintOptionsDlg options(
        m_texts.m_strPrintNote, m_texts.m_lstPrintItems, remarks.join(u'\n'), this);
    options.m_nItems = m_nColumns;
    if (options.exec() != QDialog::Accepted) {
        return false;
    }
    m_nPrintItems = options.m_nItems;
    return true;
}

/// Those that are chosen, in the order of the list.
std::vector<CListColumn const*> CListDlg::PrintColumns() const
{
    std::vector<CListColumn const*> columns;
    for (auto const& column : m_columns) {
        if ((column.m_nBit & m_nPrintItems) != 0) {
            columns.push_back(&column);
        }
    }
    return columns;
}

CListPrinter CListDlg::Printer() const
{
    std::vector<CListPrinter::CColumn> columns;
    for (auto const* const column : PrintColumns()) {
        columns.push_back({column->m_strPrinted, column->m_nPrinted});
    }
    auto const today = ToQt(CEFOleDateTime::GetCurrentTime().DateStrShortYear());
    return {tr("%1, %2, %3").arg(m_strTitle, m_strCenterName, today), std::move(columns),
        m_texts.m_nRowsPerPage};
}

/// Prints all rows of the selection, in the order shown.
CPrinted CListDlg::PrintOn(QPagedPaintDevice& device, int mostPages)
{
    auto printer = Printer();
    auto const columns = PrintColumns();
    auto const places = m_pModel->PlacesFound();
    std::vector<QStringList> block;
    std::size_t next = 0; // of the block
    std::size_t from = 0; // of the places
    bool isRead = true;
    auto const read = [&] {
        auto const count = std::min(CDatabase::kBlockRows, places.size() - from);
        block.clear();
        next = 0;
        isRead = m_rows.Read(std::span(places).subspan(from, count),
                     [&](std::size_t, CListRows::Row row) {
                         if (row == CListRows::Row::read) {
                             auto& texts = block.emplace_back();
                             for (auto const* const column : columns) {
                                 texts += ToQt(column->PrintedText());
                             }
                         }
                         return true;
                     })
            && isRead;
        from += count;
    };
    auto const outcome = printer.Print(
        device,
        [&](QStringList& texts) {
            while (next == block.size() && from < places.size()) {
                read();
            }
            if (next == block.size()) {
                return false;
            }
            texts = std::move(block[next++]);
            return true;
        },
        mostPages);
    return {outcome, printer.Pages(), printer.IsCut(), isRead};
}

CPrintOut CListDlg::PrintOut()
{
    return {m_strTitle, m_texts.m_orientation,
        [this](QPagedPaintDevice& device, int mostPages) { return PrintOn(device, mostPages); },
        [this] { TellNotRead(); }};
}

void CListDlg::Print()
{
    if (AskPrintItems(true)) {
        ::Print(this, PrintOut());
    }
}

void CListDlg::Preview()
{
    if (AskPrintItems(false)) {
        ::Preview(this, PrintOut());
    }
}

void CListDlg::SaveAsPdf()
{
    if (AskPrintItems(false)) {
        ::SaveAsPdf(this, PrintOut());
    }
}
