#pragma once

#include "platform/qt/Dialog.h"
#include "ui/ListModel.h"
#include "ui/PrintOptionsDlg.h"

#include <QPageLayout>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

class CListPrinter;
class QAction;
class QKeySequence;
class QMenu;
class QPagedPaintDevice;
class QPushButton;
struct CPrinted;
struct CPrintOut;

namespace Ui
{
class ListDlg;
}

/// What a kind of list says, and how it is printed.
struct CListTexts
{
    char const* m_pSettings; ///< where the user's settings of the list are: a plain ASCII word
    QString m_strCaption; ///< unless the caller has a better one
    QString m_strLoading; ///< of the window that asks to wait
    QString m_strTotal; ///< before the number of rows
    QString m_strNoneLeft;
    QString m_strNotRead; ///< when the rows cannot be read any more
    QString m_strPrintNote;
    CPrintOptionsDlg::CItems m_lstPrintItems;
    QPageLayout::Orientation m_orientation = QPageLayout::Landscape;
    int m_nRowsPerPage = 62;
};

/// The base of the lists in which found records are shown and worked on. A kind of list adds its
/// columns, its pictures and its buttons in its constructor.
///
/// The set stays its caller's and is open as long as the list is shown; commands find it on the row
/// that the user has selected. The rows themselves are read beside it.
class CListDlg : public CDialog
{
    Q_OBJECT
public:
    ~CListDlg() override;

    QString m_strTitle; ///< caption of the window and title of what is printed
    std::uint32_t m_nColumns = 0; ///< shown, a bit each; all unless the caller sets others
    std::uint32_t m_nPrintItems = 0; ///< printed last

    void done(int result) override;

protected:
    /// The set stands on found rows; rows are shown through another one over its table.
    CListDlg(CDAOEFSet& found, std::unique_ptr<CDAOEFSet> row, CListTexts texts, QString centerName,
        QWidget* parent);

    void AddColumn(CListColumn column) { m_columns.push_back(std::move(column)); }
    void SetPictures(
        std::function<int()> pictureOfRow, QString const& first, QString const& second);
    void SetNote(QString const& note);
    /// A list of a single column shows no rows.
    void LeaveSingleColumnEmpty() { m_bSingleColumnEmpty = true; }
    /// Adds a button below those before it.
    QPushButton& AddButton(QString const& text, char const* name, std::function<void()> use);
    /// The same with a use that returns whether it changed records, so that the list is to be
    /// filled again.
    QPushButton& AddChangeButton(QString const& text, char const* name, std::function<bool()> use);
    /// Adds a button for the selected row, on which the set stands when use is called. use returns
    /// whether it changed records, so that the list is to be filled again. Without a selected row
    /// the user is told to click on one: "To edit a member, you must first click on the member...".
    QPushButton& AddRowButton(QString const& text, char const* name, QString const& purpose,
        QString const& record, std::function<bool()> use);
    QPushButton& AddPrintButton();
    void UseOnDoubleClick(QPushButton& button);
    void UseOnDeleteKey(QPushButton& button);
    /// Adds an entry to the list's menu, with a key of its own if it is given one.
    QAction& AddKey(
        QString const& text, char const* name, QKeySequence const& key, std::function<void()> use);
    /// The set whose fields hold the row that a column's or a picture's function is about.
    CDAOEFSet const& Row() const { return m_rows.Fields(); }
    /// For what is done to all rows: when some are not shown, the user is asked whether those are
    /// meant too. False when he says no.
    bool ConfirmHiddenRows();

    /// The rows are about to be read anew: what was noted of other tables does not count any more.
    virtual void Forget() { }

    void FillLists() override;
    void ShowFields() override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class CPlace;

    void MakeModel();
    void SetUpView();
    int Fill();
    void Refill();
    void ShowNarrowed();
    void ShowTotal();
    int SelectedRow() const;
    void UseRow(QString const& message, std::function<bool()> const& use);

    void RestoreSort();
    int LetterWidth() const;
    int WidthOf(int column) const;
    void SetWidths();
    void FitColumns();
    void SaveWidths();
    void ResetColumns();
    void SortBy(int column, bool down);
    void ToggleSort(int column);
    void ShowSorted();

    void AddKeys();
    void ShowMenu(QPoint const& where, int column);
    void AddSortActions(QMenu& menu, int column);

    QStringList Headings() const;
    bool WriteRows(std::vector<std::int32_t> const& places,
        std::function<bool(QStringList const&)> const& write);
    void TellNotRead();
    void CopyRow();
    void CopyAll();
    void Copy(std::vector<std::int32_t> const& places, QString text);
    void SaveAsCsv();

    bool AskPrintItems(bool withPrinter);
    std::vector<CListColumn const*> PrintColumns() const;
    CListPrinter Printer() const;
    CPrinted PrintOn(QPagedPaintDevice& device, int mostPages);
    CPrintOut PrintOut();
    void Print();
    void Preview();
    void SaveAsPdf();

    CListTexts const m_texts;
    QString const m_strCenterName;
    CListRows m_rows;
    std::unique_ptr<Ui::ListDlg> const m_ui;
    std::vector<CListColumn> m_columns; ///< all, also those that are only printed
    std::vector<int> m_shown; ///< of them, the ones in the view
    std::vector<int> m_lstWidths; ///< of the view's columns, as they were set up
    CListPictures m_pictures;
    bool m_bSingleColumnEmpty = false;
    CListModel* m_pModel = nullptr; ///< from the first time on that the list is shown
    std::vector<QPushButton*> m_lstButtons;
    std::vector<QAction*> m_lstKeys;
};
