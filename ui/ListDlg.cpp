#include "ui/ListDlg.h"

#include "ui_ListDlg.h"

#include "platform/qt/Settings.h"
#include "ui/Convert.h"
#include "ui/ListMarks.h"
#include "ui/Messages.h"
#include "ui/ProgressDlg.h"
#include "ui/WaitCursor.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kLetterWidth = 6; ///< on average, of the font that the columns' widths are for
constexpr int kFirstRows = 30; ///< for which there is room at first
constexpr int kMeasuredRows = 100; ///< by which columns are made wider
constexpr char const* kSortEntry = "sort"; // the column's number from 1 on, negative for down

std::string WidthEntry(int column)
{
    return "width_" + std::to_string(column);
}

} // namespace

/// What the user sees of the list and has selected in it, by the keys of the rows. Brings that back
/// when the list was filled anew: whatever is selected afterwards is what was selected before.
class CListDlg::CPlace
{
public:
    CPlace(QTreeView& list, CListModel const& model)
        : m_list(list)
        , m_model(model)
        , m_nTopRow(list.indexAt(QPoint()).row())
        , m_nCurrentRow(list.currentIndex().row())
        , m_nTop(KeyOf(m_nTopRow))
        , m_nCurrent(KeyOf(m_nCurrentRow))
        , m_nSelected(KeyOf(list.selectionModel()->selectedRows().value(0).row()))
        , m_nAcross(list.horizontalScrollBar()->value())
    {
    }

    /// The rows are what they were, but for some.
    void Restore() const
    {
        Select(m_model.index(RowOf(m_nCurrent, m_nCurrentRow), 0));
        m_list.scrollTo(
            m_model.index(RowOf(m_nTop, m_nTopRow), 0), QAbstractItemView::PositionAtTop);
        m_list.scrollTo(m_list.currentIndex());
        m_list.horizontalScrollBar()->setValue(m_nAcross);
    }
    /// The rows are others, or in another order.
    void RestoreSelection() const
    {
        Select(m_model.index(0, 0));
        m_list.scrollTo(m_list.currentIndex());
        m_list.horizontalScrollBar()->setValue(m_nAcross);
    }

private:
    /// Selects what was selected, or else goes to a row without selecting it.
    void Select(QModelIndex const& otherwise) const
    {
        int const selected = m_model.RowOf(m_nSelected);
        m_list.selectionModel()->setCurrentIndex(
            selected >= 0 ? m_model.index(selected, 0) : otherwise,
            selected >= 0 ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                          : QItemSelectionModel::NoUpdate);
    }
    /// Of the key, or else the row that has come to the same place.
    int RowOf(std::int64_t key, int row) const
    {
        int const found = m_model.RowOf(key);
        return std::clamp(found >= 0 ? found : row, 0, std::max(m_model.rowCount() - 1, 0));
    }
    std::int64_t KeyOf(int row) const { return row >= 0 ? m_model.KeyOf(row) : 0; }

    QTreeView& m_list;
    CListModel const& m_model;
    int const m_nTopRow;
    int const m_nCurrentRow;
    std::int64_t const m_nTop;
    std::int64_t const m_nCurrent;
    std::int64_t const m_nSelected;
    int const m_nAcross;
};

CListDlg::CListDlg(CDAOEFSet& found, std::unique_ptr<CDAOEFSet> row, CListTexts texts,
    QString centerName, QWidget* parent)
    : CDialog(parent)
    , m_strTitle(texts.m_strCaption)
    , m_texts(std::move(texts))
    , m_strCenterName(std::move(centerName))
    , m_rows(found, std::move(row))
    , m_ui(std::make_unique<Ui::ListDlg>())
{
    for (auto const& item : m_texts.m_lstPrintItems) {
        m_nColumns |= item.first;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): known after the loop
    m_nPrintItems = m_nColumns;
    m_ui->setupUi(this);
    m_ui->recordList->setAccessibleName(m_texts.m_strCaption);
    m_ui->recordList->header()->setContextMenuPolicy(Qt::CustomContextMenu);
    m_ui->noteLabel->hide();
    m_ui->findEdit->installEventFilter(this);
    auto& ok = AddButton(tr("OK"), "okButton", [this] { accept(); });
    ok.setDefault(true);
    AddKeys();
}

CListDlg::~CListDlg()
{
    // The program may end while the list is shown: hidden, a view still asks for rows.
    m_ui->recordList->setModel(nullptr);
}

// ---- what a kind of list adds

void CListDlg::SetPictures(
    std::function<int()> pictureOfRow, QString const& first, QString const& second)
{
    auto const marks = MakeListMarks(palette(), fontMetrics().ascent());
    m_pictures = {std::move(pictureOfRow), marks, {first, second}};
    for (int i = 0; i < 2; ++i) {
        auto* const picture = new QLabel;
        picture->setPixmap(marks[std::size_t(i)].pixmap(fontMetrics().ascent()));
        m_ui->legendLayout->addWidget(picture, i, 0);
        m_ui->legendLayout->addWidget(new QLabel(m_pictures.m_texts[std::size_t(i)]), i, 1);
    }
}

void CListDlg::SetNote(QString const& note)
{
    m_ui->noteLabel->setText(note);
    m_ui->noteLabel->show();
}

QPushButton& CListDlg::AddButton(QString const& text, char const* name, std::function<void()> use)
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(QLatin1StringView(name));
    m_ui->buttonsLayout->addWidget(button);
    connect(button, &QPushButton::clicked, this, [use = std::move(use)] { use(); });
    m_lstButtons.push_back(button);
    return *button;
}

QPushButton& CListDlg::AddChangeButton(
    QString const& text, char const* name, std::function<bool()> use)
{
    return AddButton(text, name, [this, use = std::move(use)] {
        if (use()) {
            Refill();
        }
    });
}

QPushButton& CListDlg::AddRowButton(QString const& text, char const* name, QString const& purpose,
    QString const& record, std::function<bool()> use)
{
    auto const message = tr("To %1, you must first click on the %2,\nthen click \"%3.\"")
                             .arg(purpose, record, QString(text).remove(u'&'));
    return AddButton(text, name, [this, message, use = std::move(use)] { UseRow(message, use); });
}

QPushButton& CListDlg::AddPrintButton()
{
    return AddButton(tr("&Print"), "printButton", [this] { Print(); });
}

void CListDlg::UseOnDoubleClick(QPushButton& button)
{
    connect(m_ui->recordList, &QTreeView::doubleClicked, &button, &QPushButton::click);
}

void CListDlg::UseOnDeleteKey(QPushButton& button)
{
    auto* const key = new QShortcut(QKeySequence::Delete, m_ui->recordList);
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, &button, &QPushButton::click);
}

// ---- opening and filling

void CListDlg::FillLists()
{
    bool const isFirst = m_pModel == nullptr;
    if (isFirst) {
        MakeModel();
        SetUpView();
    }
    Fill();
    if (isFirst) {
        SetWidths();
        FitColumns();
    }
    m_ui->recordList->selectionModel()->setCurrentIndex(
        m_pModel->index(0, 0), QItemSelectionModel::NoUpdate);
}

void CListDlg::ShowFields()
{
    setWindowTitle(m_strTitle);
    m_ui->recordList->setFocus();
}

void CListDlg::MakeModel()
{
    std::vector<CListColumn> shown;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if ((m_columns[i].m_nBit & m_nColumns) != 0 && !m_columns[i].m_strHeading.isEmpty()) {
            shown.push_back(m_columns[i]);
            m_shown.push_back(static_cast<int>(i));
        }
    }
    m_pModel = new CListModel(m_rows, std::move(shown), m_pictures, this);
    connect(m_pModel, &CListModel::narrowed, this, &CListDlg::ShowNarrowed);
}

void CListDlg::SetUpView()
{
    auto& list = *m_ui->recordList;
    list.setModel(m_pModel);
    auto& header = *list.header();
    header.setSectionsClickable(false);
    header.setSectionsMovable(false);
    header.setStretchLastSection(false);
    header.setResizeContentsPrecision(kMeasuredRows);
    connect(&list, &QWidget::customContextMenuRequested, this, [this, &list](QPoint const& where) {
        ShowMenu(list.viewport()->mapToGlobal(where), list.indexAt(where).column());
    });
    connect(
        &header, &QWidget::customContextMenuRequested, this, [this, &header](QPoint const& where) {
            ShowMenu(header.mapToGlobal(where), header.logicalIndexAt(where));
        });
    auto* const menuKey = new QShortcut(QKeySequence(u"Shift+F10"_s), &list);
    menuKey->setContext(Qt::WidgetShortcut);
    connect(menuKey, &QShortcut::activated, this, [this, &list] {
        auto const current = list.visualRect(list.currentIndex());
        ShowMenu(list.viewport()->mapToGlobal(current.bottomLeft()), -1);
    });
    connect(m_ui->findEdit, &QLineEdit::textChanged, this, [this](QString const& text) {
        CPlace const place(*m_ui->recordList, *m_pModel);
        m_pModel->Narrow(text);
        place.RestoreSelection();
    });
    RestoreSort();
}

/// Returns the number of rows that there are to be listed.
int CListDlg::Fill()
{
    CWaitCursor const wait;
    Forget();
    bool const isEmpty = m_bSingleColumnEmpty && m_pModel->columnCount() == 1;
    int const count = isEmpty ? 0 : m_rows.Found().CountSet();
    CProgressDlg progress(isVisible() ? this : parentWidget(), m_texts.m_strLoading, count);
    m_pModel->Fill(count, [&](int rows) { progress.Step(rows); });
    ShowTotal();
    return count;
}

/// Finds the rows anew, and keeps what the user sees and has selected. Closes the list when none
/// are left.
void CListDlg::Refill()
{
    auto& found = m_rows.Found();
    CPlace const place(*m_ui->recordList, *m_pModel);
    bool const isFound = found.Op(CDAOEFSet::opRequery);
    auto const reason = found.LastStatus();
    if (Fill() > 0) {
        place.Restore();
    } else if (isFound) {
        Tell(this, m_texts.m_strNoneLeft);
        accept();
    } else {
        Tell(this, m_texts.m_strNotRead, CMessageIcon::none, ToQt(reason.Text()));
    }
}

/// Rows have come in between: what is selected stays in sight, or else the first row current.
void CListDlg::ShowNarrowed()
{
    auto& list = *m_ui->recordList;
    if (SelectedRow() >= 0) {
        list.scrollTo(list.currentIndex());
    } else {
        list.selectionModel()->setCurrentIndex(
            m_pModel->index(0, 0), QItemSelectionModel::NoUpdate);
    }
    ShowTotal();
}

void CListDlg::ShowTotal()
{
    auto text = m_texts.m_strTotal + u' ' + QString::number(m_pModel->Found());
    if (m_pModel->IsNarrowed()) {
        text += m_pModel->IsNarrowing() ? tr(" (%1 shown, searching...)").arg(m_pModel->rowCount())
                                        : tr(" (%1 shown)").arg(m_pModel->rowCount());
    }
    if (int const column = m_pModel->SortColumn(); column >= 0) {
        auto const sorted
            = m_pModel->IsSortedDown() ? tr(", sorted down by %1") : tr(", sorted by %1");
        text += sorted.arg(m_pModel->Columns()[static_cast<std::size_t>(column)].m_strHeading);
    }
    m_ui->totalLabel->setText(text);
}

void CListDlg::showEvent(QShowEvent* event)
{
    CDialog::showEvent(event);
    if (auto const last = m_ui->buttonsLayout->count() - 1;
        m_ui->buttonsLayout->itemAt(last)->widget() != nullptr) {
        m_ui->buttonsLayout->addStretch();
    }
}

void CListDlg::done(int result)
{
    SaveWidths();
    CDialog::done(result);
}

// ---- rows

int CListDlg::SelectedRow() const
{
    return m_ui->recordList->selectionModel()->selectedRows().value(0).row();
}

void CListDlg::UseRow(QString const& message, std::function<bool()> const& use)
{
    int const row = SelectedRow();
    if (row < 0) {
        Tell(this, message);
        return;
    }
    // A row that another program has deleted is left alone, and goes from the list.
    if (!m_rows.Found().MoveSet(m_pModel->PlaceOf(row)) || use()) {
        Refill();
    }
}

bool CListDlg::ConfirmHiddenRows()
{
    auto const text = tr("Only %1 of the %2 rows of this list are shown,\n"
                         "but this operation includes all of them.\n"
                         "Do you want to continue?");
    return !m_pModel->IsNarrowed()
        || Ask(this, text.arg(m_pModel->rowCount()).arg(m_pModel->Found()), CQuestion::destroying);
}

// ---- widths and order

void CListDlg::RestoreSort()
{
    int const wanted = GetProfileInt(m_texts.m_pSettings, kSortEntry, 0);
    auto const shown = std::ranges::find(m_shown, std::abs(wanted) - 1);
    if (shown != m_shown.end()) {
        m_pModel->SortFromNowOn(static_cast<int>(shown - m_shown.begin()), wanted < 0);
    }
    ShowSorted();
}

int CListDlg::LetterWidth() const
{
    return std::max(kLetterWidth, m_ui->recordList->fontMetrics().averageCharWidth());
}

/// As wide as the user has made it; at first as it is meant to be, or somewhat wider for what
/// stands in it.
int CListDlg::WidthOf(int column) const
{
    auto const& list = *m_ui->recordList;
    int const index = m_shown[static_cast<std::size_t>(column)];
    if (int const own = GetProfileInt(m_texts.m_pSettings, WidthEntry(index).c_str(), 0); own > 0) {
        return std::min(own, list.screen()->size().width()) * LetterWidth() / kLetterWidth;
    }
    int const usual = std::max(
        m_columns[static_cast<std::size_t>(index)].m_nWidth * LetterWidth() / kLetterWidth,
        list.header()->sectionSizeHint(column));
    int const needed = static_cast<QAbstractItemView const&>(list).sizeHintForColumn(column);
    return std::clamp(needed, usual, usual * 3 / 2);
}

void CListDlg::SetWidths()
{
    auto& header = *m_ui->recordList->header();
    m_lstWidths.clear();
    for (int column = 0; column < m_pModel->columnCount(); ++column) {
        header.resizeSection(column, WidthOf(column));
        m_lstWidths.push_back(header.sectionSize(column));
    }
}

/// At first all columns are in sight, as far as there is room for them.
void CListDlg::FitColumns()
{
    auto const& list = *m_ui->recordList;
    auto const room = list.screen()->availableSize() * 9 / 10;
    auto const around = sizeHint() - list.sizeHint();
    auto const columns = QSize(list.header()->length() + 2 * list.frameWidth()
            + list.style()->pixelMetric(QStyle::PM_ScrollBarExtent),
        kFirstRows * list.fontMetrics().height());
    resize((columns.expandedTo(list.sizeHint()) + around).boundedTo(room));
}

/// Only those that the user has changed.
void CListDlg::SaveWidths()
{
    auto const& header = *m_ui->recordList->header();
    for (std::size_t column = 0; column < m_lstWidths.size(); ++column) {
        int const width = header.sectionSize(static_cast<int>(column));
        if (width != m_lstWidths[column]) {
            WriteProfileInt(m_texts.m_pSettings, WidthEntry(m_shown[column]).c_str(),
                std::max(width * kLetterWidth / LetterWidth(), 1));
            m_lstWidths[column] = width;
        }
    }
}

void CListDlg::ResetColumns()
{
    for (auto const column : m_shown) {
        WriteProfileInt(m_texts.m_pSettings, WidthEntry(column).c_str(), 0);
    }
    SortBy(-1, false);
    SetWidths();
}

void CListDlg::SortBy(int column, bool down)
{
    CWaitCursor const wait;
    CPlace const place(*m_ui->recordList, *m_pModel);
    if (!m_pModel->Sort(column, down)) {
        TellNotRead();
        return;
    }
    place.RestoreSelection();
    int const index = column >= 0 ? m_shown[static_cast<std::size_t>(column)] + 1 : 0;
    WriteProfileInt(m_texts.m_pSettings, kSortEntry, down ? -index : index);
    ShowSorted();
    ShowTotal();
}

/// Up at first, down the next time.
void CListDlg::ToggleSort(int column)
{
    if (column < m_pModel->columnCount()) {
        SortBy(column, m_pModel->SortColumn() == column && !m_pModel->IsSortedDown());
    }
}

void CListDlg::ShowSorted()
{
    auto& header = *m_ui->recordList->header();
    header.setSortIndicatorShown(m_pModel->SortColumn() >= 0);
    header.setSortIndicator(m_pModel->SortColumn(),
        m_pModel->IsSortedDown() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

bool CListDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_ui->findEdit && event->type() == QEvent::KeyPress) {
        auto const key = static_cast<QKeyEvent*>(event)->key();
        auto const isEscape = key == Qt::Key_Escape && !m_ui->findEdit->text().isEmpty();
        if (isEscape) { // without a text it closes the list, as everywhere
            m_ui->findEdit->clear();
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down) {
            auto& list = *m_ui->recordList;
            list.setFocus();
            if (SelectedRow() < 0 && m_pModel->rowCount() > 0) {
                list.setCurrentIndex(m_pModel->index(0, 0));
            }
            return true;
        }
    }
    return CDialog::eventFilter(watched, event);
}
