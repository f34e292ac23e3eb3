#include "doc/QuickStatsDlg.h"

#include "ui_QuickStatsDlg.h"

#include "doc/CheckInModel.h"
#include "store/sets/DAOChkIn.h"
#include "store/sets/SetCloser.h"
#include "ui/ControlID.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kDialogID = 154;
constexpr int kListID = 1537;
constexpr int kTimerID = 57607;
constexpr int kOkID = 1;
constexpr int kCancelID = 2;
constexpr int kRefreshMs = 15000;
constexpr std::array<int, CCheckInModel::colCount> kColumnWidths = {105, 125, 50, 70, 70};
constexpr int kLetterWidth = 6; ///< on average, of the font that these widths are for

/// Stops the timer while it lives, and starts it anew.
class CTimerPause
{
public:
    explicit CTimerPause(QTimer& timer)
        : m_timer(timer)
    {
        m_timer.stop();
    }
    ~CTimerPause() { m_timer.start(); }
    CTimerPause(CTimerPause const&) = delete;
    CTimerPause& operator=(CTimerPause const&) = delete;

private:
    QTimer& m_timer;
};

} // namespace

/// What the user sees of the list and has selected in it. Brings that back when rows have come and
/// gone: the view by itself would go where the cursor goes, and select another row for one that is
/// gone, which nobody chose.
class CQuickStatsDlg::CListPlace
{
public:
    CListPlace(QTreeView& list, CCheckInModel const& model)
        : m_list(list)
        , m_model(model)
        , m_selectedKey(KeyOf(list.selectionModel()->selectedRows().value(0)))
        , m_currentKey(KeyOf(list.currentIndex()))
        , m_bAtEnd(list.verticalScrollBar()->value() == list.verticalScrollBar()->maximum())
        , m_nAcross(list.horizontalScrollBar()->value())
    {
        auto const top = list.indexAt(QPoint());
        auto const bottom = list.viewport()->height();
        for (auto row = top; row.isValid() && list.visualRect(row).top() < bottom;
             row = list.indexBelow(row)) {
            m_inSight.emplace_back(row);
        }
        list.setAutoScroll(false);
    }
    ~CListPlace() { m_list.setAutoScroll(true); }
    CListPlace(CListPlace const&) = delete;
    CListPlace& operator=(CListPlace const&) = delete;

    void Restore()
    {
        RestoreSelection();
        if (m_bAtEnd) {
            m_list.scrollToBottom();
        } else {
            RestoreTop();
        }
        m_list.horizontalScrollBar()->setValue(m_nAcross);
    }

private:
    std::optional<std::int64_t> KeyOf(QModelIndex const& row) const
    {
        return row.isValid() ? std::optional(m_model.KeyOf(row.row())) : std::nullopt;
    }
    QModelIndex RowOf(std::optional<std::int64_t> key) const
    {
        return m_model.index(key ? m_model.RowOf(*key) : -1, 0);
    }

    void RestoreSelection()
    {
        auto& selection = *m_list.selectionModel();
        auto const row = RowOf(m_selectedKey);
        if (!row.isValid()) {
            selection.clearSelection();
        } else if (!selection.isRowSelected(row.row())) {
            selection.select(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        }
        if (auto const current = RowOf(m_currentKey);
            current.isValid() && current.row() != m_list.currentIndex().row()) {
            selection.setCurrentIndex(current, QItemSelectionModel::NoUpdate);
        }
    }

    /// The first row that is still there of those in sight stays where it is.
    void RestoreTop()
    {
        auto const stays = std::ranges::find_if(m_inSight, &QPersistentModelIndex::isValid);
        if (stays != m_inSight.end()) {
            auto const above = static_cast<int>(stays - m_inSight.begin());
            m_list.scrollTo(m_model.index(std::max(0, stays->row() - above), 0),
                QAbstractItemView::PositionAtTop);
        }
    }

    QTreeView& m_list;
    CCheckInModel const& m_model;
    std::optional<std::int64_t> m_selectedKey;
    std::optional<std::int64_t> m_currentKey;
    bool m_bAtEnd;
    int m_nAcross;
    std::vector<QPersistentModelIndex> m_inSight;
};

CQuickStatsDlg::CQuickStatsDlg(CDAOChkIn& set, QWidget* parent)
    : CDialog(parent)
    , m_set(set)
    , m_ui(std::make_unique<Ui::QuickStatsDlg>())
    , m_pModel(new CCheckInModel(this))
{
    m_ui->setupUi(this);
    auto* const deleteButton
        = m_ui->buttonBox->addButton(tr("&Delete"), QDialogButtonBox::RejectRole);
    deleteButton->setObjectName(u"deleteButton"_s);
    auto* const okButton = m_ui->buttonBox->button(QDialogButtonBox::Ok);
    okButton->setDefault(true);
    for (auto const& [widget, id] : std::initializer_list<std::pair<QWidget*, int>>{
             {this, kDialogID}, {m_ui->membersValue, 1253}, {m_ui->currentMembersValue, 1250},
             {m_ui->pastMembersValue, 1251}, {m_ui->workoutsValue, 1255},
             {m_ui->todaysWorkoutsValue, 1252}, {m_ui->evaluationsValue, 1256},
             {m_ui->bodyCompsValue, 1257}, {m_ui->checkInList, kListID}, {deleteButton, kCancelID},
             {okButton, kOkID}}) {
        SetControlID(widget, id);
    }
    SetUpList();
    // At first there is room for long names, and for who comes in the rush hour.
    resize(sizeHint() + QSize(8, 4) * fontMetrics().averageCharWidth());
    m_timer.setObjectName(u"refreshTimer"_s);
    SetControlID(&m_timer, kTimerID);
    m_timer.setInterval(kRefreshMs);
    connect(&m_timer, &QTimer::timeout, this, &CQuickStatsDlg::Refresh);
}

CQuickStatsDlg::~CQuickStatsDlg() = default;

void CQuickStatsDlg::SetUpList()
{
    auto& list = *m_ui->checkInList;
    list.setModel(m_pModel);
    auto& header = *list.header();
    header.setSectionsClickable(false);
    header.setSectionsMovable(false);
    header.setStretchLastSection(false);
    int const letter = std::max(kLetterWidth, list.fontMetrics().averageCharWidth());
    int sum = 2 * list.frameWidth() + list.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    for (int column = 0; column < CCheckInModel::colCount; ++column) {
        int const width
            = std::max(kColumnWidths[static_cast<std::size_t>(column)] * letter / kLetterWidth,
                header.sectionSizeHint(column));
        header.resizeSection(column, width);
        sum += width;
    }
    // Names take what room there is, and no less than is theirs.
    header.setSectionResizeMode(CCheckInModel::colName, QHeaderView::Stretch);
    list.setMinimumWidth(sum);
    auto* const deleteKey = new QShortcut(QKeySequence::Delete, &list);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, &CQuickStatsDlg::DeleteCheckIn);
}

void CQuickStatsDlg::FillLists()
{
    Refresh();
    auto const last = m_pModel->index(m_pModel->rowCount() - 1, 0);
    m_ui->checkInList->selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
}

void CQuickStatsDlg::ShowFields()
{
    for (auto const& [label, count] : std::initializer_list<std::pair<QLabel*, QString>>{
             {m_ui->membersValue, m_strMembers}, {m_ui->currentMembersValue, m_strCurrentMembers},
             {m_ui->pastMembersValue, m_strPastMembers}, {m_ui->workoutsValue, m_strWorkouts},
             {m_ui->todaysWorkoutsValue, m_strTodaysWorkouts},
             {m_ui->evaluationsValue, m_strEvaluations}, {m_ui->bodyCompsValue, m_strBodyComps}}) {
        label->setMinimumWidth(label->sizeHint().width()); // of the digits in the form
        label->setText(count);
    }
    m_ui->notCountedLabel->setText(m_strNotCounted);
    m_ui->notCountedLabel->setVisible(!m_strNotCounted.isEmpty());
}

void CQuickStatsDlg::showEvent(QShowEvent* event)
{
    CDialog::showEvent(event);
    m_ui->checkInList->scrollToBottom();
}

void CQuickStatsDlg::done(int result)
{
    m_timer.stop();
    CDialog::done(result);
}

void CQuickStatsDlg::reject()
{
    DeleteCheckIn();
}

// ---- the list

void CQuickStatsDlg::Refresh()
{
    CWaitCursor const wait;
    CTimerPause const pause(m_timer);
    CListPlace place(*m_ui->checkInList, *m_pModel);
    auto const status = m_pModel->Refresh(m_set);
    auto const now = ToQt(CEFOleDateTime::GetCurrentTime().Format("%H:%M:%S"));
    auto const failure = tr("Not refreshed at %1: %2").arg(now, ToQt(status.Text()));
    if (status) {
        m_strRefreshed = tr("Last refreshed: %1").arg(now);
        m_ui->stateLabel->setText(m_strRefreshed);
    } else {
        m_ui->stateLabel->setText((failure + u'\n' + m_strRefreshed).trimmed());
    }
    // A longer text leaves the list less room; now, not later.
    m_ui->checkInsLayout->activate();
    layout()->activate();
    place.Restore();
}

void CQuickStatsDlg::DeleteCheckIn()
{
    CWaitCursor const wait;
    CTimerPause const pause(m_timer);
    auto const selected = m_ui->checkInList->selectionModel()->selectedRows();
    if (selected.isEmpty()) {
        Tell(this,
            tr("To delete a check-in, you must first click on the check-in,\n"
               "then click \"Delete.\""));
        return;
    }
    auto const memberID = selected.front().data(CCheckInModel::kMemberIDRole).toInt();
    if (memberID != 0 && DeleteFirstOf(memberID)) {
        Refresh();
    }
}

/// Deletes the first check-in of a member as they are stored now, after asking. True when it was
/// deleted, also by somebody else: the list is to be filled again then.
bool CQuickStatsDlg::DeleteFirstOf(std::int32_t memberID)
{
    CSetCloser const close(m_set);
    int const count = m_set.FindChkIns();
    int row = 0;
    while (row < count && m_set.LastStatus() && m_set.m_lMemberID != memberID) {
        m_set.Op(CDAOEFSet::opMoveNext);
        ++row;
    }
    if (!m_set.LastStatus()) {
        return FailToDelete();
    }
    if (row == count) {
        return true;
    }
    auto const question = tr("Are you sure you want to delete the check-in\n"
                             "for Member ID: %1 dated %2?");
    if (!Ask(this, question.arg(memberID).arg(ToQt(m_set.m_dtCheckIn.DateTimeStrLongYear())),
            CQuestion::destroying)) {
        return false;
    }
    return m_set.DelCurrent() || m_set.LastStatus() || FailToDelete();
}

bool CQuickStatsDlg::FailToDelete()
{
    Tell(this, tr("Error: the check-in was not deleted."), CMessageIcon::none,
        ToQt(m_set.LastStatus().Text()));
    return false;
}
