#include "workouts/MainViewTree.h"

#include "doc/CorvanaDoc.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/ProgressDlg.h"
#include "ui/WaitCursor.h"
#include "workouts/MemberTreeModel.h"
#include "workouts/NodeTarget.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStatusTipEvent>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Leaves some room between rows, which are to be hit with the mouse.
class CRowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(QStyleOptionViewItem const& option, QModelIndex const& index) const override
    {
        auto const size = QStyledItemDelegate::sizeHint(option, index);
        return size.grownBy({0, size.height() / 8, 0, size.height() / 8});
    }
};

/// The text of a member's node.
QString NameOf(CDAOSmMem const& member)
{
    std::string name;
    if (!member.m_LastName.empty()) {
        name += member.m_LastName + ", ";
    }
    if (!member.m_FirstName.empty()) {
        name += member.m_FirstName + ' ';
    }
    return ToQt(name + member.m_MiddleInit);
}

/// Calls what takes each row of the selection just found, under a progress window. False when not
/// all of it can be read.
template <typename Set, typename Take>
bool WalkRows(QWidget* owner, QString const& sentence, Set& set, int count, Take const& take)
{
    if (count == 0) {
        return set.LastStatus().IsOK();
    }
    CProgressDlg progress(owner, sentence, count);
    for (int row = 0; row < count; ++row) {
        if (!set.LastStatus()) {
            return false;
        }
        take();
        set.Op(CDAOEFSet::opMoveNext);
        progress.Step();
    }
    return true;
}

/// The dates of the records just found. Rows that are gone or damaged have no member.
template <typename Set>
bool ReadDates(QWidget* owner, QString const& sentence, Set& set, int count,
    CEFOleDateTime Set::*date, std::vector<QString>& dates)
{
    return WalkRows(owner, sentence, set, count, [&set, date, &dates] {
        if (set.m_lMemberID != 0) {
            dates.push_back(ToQt((set.*date).DateTimeStrLongYear()));
        }
    });
}

} // namespace

CMainViewTree::CMainViewTree(CCorvanaDoc& doc, QWidget* parent)
    : QTreeView(parent)
    , m_doc(doc)
    , m_pModel(new CMemberTreeModel(this))
{
    setObjectName(u"memberTree"_s);
    setAccessibleName(tr("Members"));
    setHeaderHidden(true);
    setUniformRowHeights(true); // else every row is measured
    setExpandsOnDoubleClick(false); // a double click edits
    setEditTriggers(NoEditTriggers);
    setAnimated(false); // opening shows the wait window
    setItemDelegate(new CRowDelegate(this));
    setModel(m_pModel);
    header()->setStretchLastSection(false); // long names scroll instead of being cut
    header()->setResizeContentsPrecision(0); // by what is in sight
    setIndentation(fontMetrics().height());
    connect(this, &QTreeView::expanded, this, &CMainViewTree::LoadNode);
    connect(this, &QTreeView::collapsed, this, &CMainViewTree::TakeCurrentOut);
    connect(this, &QTreeView::doubleClicked, this, &CMainViewTree::EditNode);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &CMainViewTree::HideTip);
}

// ---- what the document tells

void CMainViewTree::ResetTree()
{
    HideTip();
    m_pModel->Reset();
    m_bMembersLoaded = false;
    m_nTextWidth = 0;
}

bool CMainViewTree::AddMemberNode(std::int32_t memberID)
{
    auto& set = m_doc.m_setSmMem;
    CSetCloser const close(set);
    if (set.FindMember(CDAOSmMem::idMember, memberID) == 0) {
        return false;
    }
    m_pModel->AddMembers({{memberID, NameOf(set)}});
    return true;
}

bool CMainViewTree::RemoveMemberNode(std::int32_t memberID)
{
    return m_pModel->RemoveMember(memberID);
}

bool CMainViewTree::RefreshMemberNode(
    std::int32_t memberID, CTreeNode kind, std::int32_t previousID)
{
    auto const shownID = previousID != 0 ? previousID : memberID;
    if (!m_pModel->HasMember(shownID)) {
        return false;
    }
    HideTip();
    for (auto const branchKind : {kWorkoutsNode, kEvaluationsNode, kBodyCompsNode}) {
        if (kind == branchKind || kind == kMembersNode) {
            auto const branch = m_pModel->Branch(shownID, branchKind);
            m_pModel->Unload(branch); // first, or the rows behind it move twice
            collapse(branch);
        }
    }
    if (kind == kMembersNode) {
        auto& set = m_doc.m_setSmMem;
        CSetCloser const close(set);
        auto const before = m_pModel->Member(shownID).data().toString();
        bool const found = set.FindMember(CDAOSmMem::idMember, memberID) != 0;
        auto const name = found ? NameOf(set) : before;
        m_pModel->ChangeMember(shownID, {memberID, name});
        if (name != before) {
            FitColumn(); // the new one may be wider
        }
    }
    return true;
}

// ---- loading

/// What was just opened gets its children if it has none yet.
void CMainViewTree::LoadNode(QModelIndex const& node)
{
    auto const code = node.data(CMemberTreeModel::kCodeRole).toInt();
    bool const isMembers = code == kMembersNode && !m_bMembersLoaded;
    bool const isBranch = m_pModel->hasChildren(node) && code < 0 && code != kMembersNode
        && !m_pModel->IsLoaded(node);
    if (isMembers || isBranch) {
        // Assistive programs can open a node while the window asks to wait.
        bool loaded = false;
        if (!m_bLoading) {
            QScopedValueRollback const loading(m_bLoading, true);
            CWaitCursor const wait;
            loaded = isMembers ? LoadMembers() : LoadBranch(node);
        }
        if (!loaded) {
            collapse(node); // opening it again tries again
        }
    }
}

bool CMainViewTree::LoadMembers()
{
    auto& set = m_doc.m_setSmMem;
    CSetCloser const close(set);
    std::vector<CMemberTreeModel::CName> names;
    int const count = set.FindAllMembersByName(true);
    names.reserve(static_cast<std::size_t>(count));
    bool const read
        = WalkRows(this, tr("Loading members, please wait..."), set, count, [&set, &names] {
              if (set.m_MemberID > 0) { // else the row is gone or damaged
                  names.push_back({set.m_MemberID, NameOf(set)});
              }
          });
    if (!read) {
        return Fail(tr("Error: the members could not be loaded."), ToQt(set.LastStatus().Text()));
    }
    m_bMembersLoaded = !names.empty();
    if (m_bMembersLoaded) {
        m_pModel->AddMembers(names);
    } else {
        m_pModel->ShowNoMembers();
    }
    return true;
}

bool CMainViewTree::LoadBranch(QModelIndex const& branch)
{
    auto const memberID = m_pModel->MemberIDOf(branch);
    std::vector<QString> dates;
    // Beside the record sets of the document: one of those may be open for a list.
    CDAOWk workouts;
    CDAOSmEval evaluations;
    CDAOBodyComp bodyComps;
    auto const load = [&](QString const& sentence, auto& set, int count, auto date) {
        return ReadDates(this, sentence, set, count, date, dates)
            || Fail(tr("Error: the records could not be loaded."), ToQt(set.LastStatus().Text()));
    };
    bool loaded = false;
    switch (branch.data(CMemberTreeModel::kCodeRole).toInt()) {
    case kWorkoutsNode:
        loaded = load(tr("Loading workouts, please wait..."), workouts, workouts.FindWks(memberID),
            &CDAOWk::m_dtCheckIn);
        break;
    case kEvaluationsNode:
        loaded = load(tr("Loading evaluations, please wait..."), evaluations,
            evaluations.FindEvals(CDAOSmEval::idMember, memberID), &CDAOSmEval::m_dtEvalDate);
        break;
    default:
        loaded = load(tr("Loading body compositions, please wait..."), bodyComps,
            bodyComps.FindBodyComps(memberID), &CDAOBodyComp::m_dtBodyCompDate);
        break;
    }
    if (loaded) {
        m_pModel->SetRecords(branch, std::move(dates));
    }
    return loaded;
}

bool CMainViewTree::Fail(QString const& text, QString const& detail)
{
    Tell(this, text, CMessageIcon::none, detail);
    return false;
}

// ---- acting on nodes

/// What an action on a node is about; nothing for the root, for branches and "None Found".
std::optional<CNodeTarget> CMainViewTree::TargetOf(QModelIndex const& node) const
{
    if (!m_bMembersLoaded || !node.isValid()) {
        return std::nullopt;
    }
    auto const memberID = m_pModel->MemberIDOf(node);
    auto const code = node.data(CMemberTreeModel::kCodeRole).toInt();
    if (code > 0) {
        return CNodeTarget{kMembersNode, memberID, {}};
    }
    if (code != kItemNode) {
        return std::nullopt;
    }
    auto const above = node.parent().data(CMemberTreeModel::kCodeRole).toInt();
    return above > 0 ? CNodeTarget{kMembersNode, memberID, {}}
                     : CNodeTarget{CTreeNode(above), memberID, node.data().toString()};
}

QModelIndex CMainViewTree::SelectedNode() const
{
    return selectedIndexes().value(0);
}

void CMainViewTree::EditNode(QModelIndex const& node)
{
    auto const target = TargetOf(node);
    if (target && node.data(CMemberTreeModel::kCodeRole).toInt() == kItemNode) {
        Q_EMIT EditAsked(*target);
    }
}

void CMainViewTree::DeleteNode(QModelIndex const& node)
{
    if (auto const target = TargetOf(node)) {
        Q_EMIT DeleteAsked(*target);
    }
}

void CMainViewTree::ShowTip(QModelIndex const& node)
{
    HideTip();
    auto const target = TargetOf(node);
    if (!target) {
        return;
    }
    setCurrentIndex(node);
    scrollTo(node);
    auto const text = TipOf(*target);
    if (text.isEmpty()) {
        return;
    }
    auto const place = visualRect(node);
    QToolTip::showText(viewport()->mapToGlobal(place.topLeft()), text, viewport(), place);
    m_bTipShown = true;
    TellTip(text);
}

void CMainViewTree::HideTip()
{
    if (m_bTipShown) {
        m_bTipShown = false;
        QToolTip::hideText();
        TellTip({});
    }
}

/// The status bar shows the tip as long as its node is the current one, and it is read out.
void CMainViewTree::TellTip(QString const& text)
{
    setAccessibleDescription(text);
    QStatusTipEvent event(text);
    QCoreApplication::sendEvent(this, &event);
}

// ---- events

void CMainViewTree::keyPressEvent(QKeyEvent* event)
{
    auto const key = event->key();
    bool const opens = key == Qt::Key_Plus || key == Qt::Key_Asterisk;
    bool const isText = opens || key == Qt::Key_Minus || key == Qt::Key_Space;
    if (isText && IsTyping()) { // a part of the name
        keyboardSearch(event->text());
    } else if (opens) { // the toolkit's asterisk would load every record of the centre
        expand(currentIndex());
    } else if (key == Qt::Key_Minus) {
        collapse(currentIndex());
    } else if (key == Qt::Key_Delete) {
        DeleteNode(SelectedNode());
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        EditNode(SelectedNode());
    } else {
        QTreeView::keyPressEvent(event);
    }
}

bool CMainViewTree::IsTyping() const
{
    return m_sinceTyped.isValid()
        && !m_sinceTyped.hasExpired(QApplication::keyboardInputInterval());
}

void CMainViewTree::keyboardSearch(QString const& typed)
{
    m_sinceTyped.start();
    QTreeView::keyboardSearch(typed);
}

void CMainViewTree::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        QTreeView::mousePressEvent(event);
    } else if (event->button() == Qt::RightButton) { // selects, but opens nothing
        HideTip();
        setCurrentIndex(indexAt(event->position().toPoint()));
    }
}

void CMainViewTree::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        QTreeView::mouseReleaseEvent(event);
    } else if (event->button() == Qt::RightButton) { // the press would take the tip away again
        ShowTip(indexAt(event->position().toPoint()));
    }
}

void CMainViewTree::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        QTreeView::mouseDoubleClickEvent(event);
    } else {
        mousePressEvent(event);
    }
}

void CMainViewTree::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Mouse) {
        ShowTip(SelectedNode());
    }
}

void CMainViewTree::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (std::exchange(m_bLoadWhenShown, false) && m_doc.HasMembers()) {
        QMetaObject::invokeMethod(
            this, [this] { expand(m_pModel->Root()); }, Qt::QueuedConnection);
    }
}

// ---- what is where

/// A node that was closed becomes the current one if that was in it. It is a copy, since the view
/// lays out anew meanwhile.
void CMainViewTree::TakeCurrentOut(QModelIndex closed)
{
    for (auto above = currentIndex().parent(); above.isValid(); above = above.parent()) {
        if (above == closed) {
            setCurrentIndex(closed);
            return;
        }
    }
}

void CMainViewTree::changeEvent(QEvent* event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        m_nTextWidth = 0;
        setIndentation(fontMetrics().height()); // little: names are long and panes are narrow
    }
}

/// As wide as the pane and as all that has been in sight so far.
void CMainViewTree::FitColumn()
{
    m_nTextWidth = std::max(m_nTextWidth, sizeHintForColumn(0));
    setColumnWidth(0, std::max(m_nTextWidth, viewport()->width()));
}

/// What is in sight stays there.
void CMainViewTree::updateGeometries()
{
    QPersistentModelIndex const first = m_firstInSight; // what follows may scroll
    FitColumn();
    QTreeView::updateGeometries();
    auto* const bar = verticalScrollBar();
    auto const place = visualRect(first);
    if (place.isValid()) {
        bar->setValue(bar->value() + place.top() / place.height());
    }
    m_firstInSight = indexAt({});
}

void CMainViewTree::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    FitColumn(); // what comes into sight may be wider
    m_firstInSight = indexAt({});
}

/// Lines between the nodes, which the style may not draw.
void CMainViewTree::drawBranches(
    QPainter* painter, QRect const& rect, QModelIndex const& index) const
{
    painter->save();
    painter->setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    auto const line = [&](int left, int top, int right, int bottom) {
        auto const at = [&](int x) { return isRightToLeft() ? rect.left() + rect.right() - x : x; };
        painter->drawLine(at(left), top, at(right), bottom);
    };
    int const middle = rect.center().y();
    int x = rect.right() - indentation() / 2;
    line(x, middle, rect.right(), middle);
    for (auto node = index; node.parent().isValid(); node = node.parent()) {
        bool const isLast = node.row() + 1 == m_pModel->rowCount(node.parent());
        if (node == index || !isLast) {
            line(x, rect.top(), x, isLast ? middle : rect.bottom());
        }
        x -= indentation();
    }
    painter->restore();
    QTreeView::drawBranches(painter, rect, index);
}
