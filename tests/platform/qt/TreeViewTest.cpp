#include "platform/qt/TreeView.h"

#include "tests/QtTests.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>

#include <memory>
#include <random>

using namespace Qt::StringLiterals;

namespace
{

/// A node with children of these names.
QStandardItem* Branch(QString const& name, QStringList const& children = {})
{
    auto* const item = new QStandardItem(name);
    for (auto const& child : children) {
        item->appendRow(new QStandardItem(child));
    }
    return item;
}

QString Names(QModelIndexList const& nodes)
{
    QStringList names;
    for (auto const& node : nodes) {
        names += node.data().toString();
    }
    return names.join(u' ');
}

/// A key as the user presses it, with the letter that it types.
void Press(QWidget& view, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(&view, key, modifiers);
}

/// Notes what is painted.
class CPaintSpy : public QObject
{
public:
    explicit CPaintSpy(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            m_painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    QRegion m_painted;
};

} // namespace

class TreeViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void agreesWithTheToolkitsTree_data();
    void agreesWithTheToolkitsTree();
    void agreesWithTheToolkitsAccess();
    void showsWhatComesAndGoesInPlace();
    void closingTakesTheCurrentNodeAlong();
    void mouseOpensSelectsAndDoubleClicks();
    void paintsWholeRowsAnew();
    void findsTypedTexts();
    void scrollsSidewaysToTheBeginning();
    void mirrorsFromRightToLeft();
    void accessFollowsTheNodes();
    void survivesItsModel();

private:
    QModelIndex Find(QString const& name) const
    {
        return m_model->indexFromItem(
            m_model->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0));
    }
    QModelIndexList Rows() const;
    QModelIndexList ToolkitRows() const;
    void Show(int width = 200, int height = 120);
    QPoint Button(QModelIndex const& node) const;

    std::unique_ptr<QStandardItemModel> m_model;
    std::unique_ptr<CTreeView> m_tree;
    std::unique_ptr<QTreeView> m_toolkit;
};

void TreeViewTest::init()
{
    m_model = std::make_unique<QStandardItemModel>();
    m_model->appendRow(Branch(u"fruit"_s, {u"apple"_s, u"apricot"_s, u"banana"_s}));
    m_model->appendRow(Branch(u"nuts"_s, {u"almond"_s, u"hazel"_s}));
    m_model->appendRow(Branch(u"salt"_s));
    m_tree = std::make_unique<CTreeView>();
    m_tree->setModel(m_model.get());
    m_toolkit = std::make_unique<QTreeView>();
    m_toolkit->setModel(m_model.get());
    m_toolkit->setHeaderHidden(true);
    m_toolkit->setUniformRowHeights(true);
}

void TreeViewTest::cleanup()
{
    m_toolkit.reset();
    m_tree.reset();
    m_model.reset();
}

void TreeViewTest::Show(int width, int height)
{
    m_tree->resize(width, height);
    m_tree->show();
    m_tree->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_tree.get()));
    m_tree->setFocus();
}

QModelIndexList TreeViewTest::Rows() const
{
    QModelIndexList nodes;
    for (int row = 0; row < m_tree->RowCount(); ++row) {
        nodes += m_tree->NodeAt(row);
    }
    return nodes;
}

QModelIndexList TreeViewTest::ToolkitRows() const
{
    QModelIndexList nodes;
    for (auto node = m_model->index(0, 0); node.isValid(); node = m_toolkit->indexBelow(node)) {
        nodes += node;
    }
    return nodes;
}

/// Left of the text.
QPoint TreeViewTest::Button(QModelIndex const& node) const
{
    auto const place = m_tree->visualRect(node);
    return {place.left() - place.height() / 2, place.center().y()};
}

void TreeViewTest::agreesWithTheToolkitsTree_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 8; ++seed) {
        QTest::addRow("walk %u", seed) << seed;
    }
}

/// Random use of two views of one model, of which one is known to be right.
void TreeViewTest::agreesWithTheToolkitsTree()
{
    QFETCH(unsigned const, seed);
    std::mt19937 random(seed);
    auto const pick = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(std::max(count, 1)));
    };
    m_toolkit->resize(300, 120);
    m_toolkit->show();
    Show(300, 120);
    int names = 0;
    std::array const keys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_Left,
        Qt::Key_Right, Qt::Key_Plus, Qt::Key_Minus};
    for (int step = 0; step < 400; ++step) {
        auto const rows = Rows();
        auto const node = rows.value(pick(static_cast<int>(rows.size())));
        auto* const item = m_model->itemFromIndex(node);
        auto* const parent = item == nullptr || item->parent() == nullptr
            ? m_model->invisibleRootItem()
            : item->parent();
        switch (pick(9)) {
        case 0:
        case 1: {
            auto* const made = Branch(u"n%1"_s.arg(++names), {u"c%1"_s.arg(names)});
            auto* const into = item != nullptr && pick(2) == 0 ? item : parent;
            into->insertRow(pick(into->rowCount() + 1), made);
            break;
        }
        case 2:
            if (item != nullptr) {
                parent->removeRows(
                    node.row(), 1 + pick(std::min(2, parent->rowCount() - node.row())));
            }
            break;
        case 3:
        case 4:
            m_tree->Expand(node);
            m_toolkit->expand(node);
            break;
        case 5:
            m_tree->setCurrentIndex(node); // ours would go there itself
            m_toolkit->setCurrentIndex(node);
            m_tree->Collapse(node);
            m_toolkit->collapse(node);
            break;
        case 6:
            parent->sortChildren(0, pick(2) == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
            break;
        case 7:
            if (pick(60) == 0) {
                m_model->clear();
                m_model->appendRow(Branch(u"again"_s, {u"x"_s, u"y"_s}));
            }
            break;
        default:
            if (node.isValid()) {
                m_tree->setCurrentIndex(node);
                m_toolkit->setCurrentIndex(node);
                auto const key = keys[static_cast<std::size_t>(pick(int(keys.size())))];
                Press(*m_tree, key);
                Press(*m_toolkit, key);
                QCOMPARE(m_tree->currentIndex(), m_toolkit->currentIndex());
                QCOMPARE(m_tree->selectionModel()->selectedIndexes(),
                    m_toolkit->selectionModel()->selectedIndexes());
            }
        }
        auto const now = Rows();
        QCOMPARE(Names(now), Names(ToolkitRows()));
        for (int row = 0; row < now.size(); ++row) {
            QCOMPARE(m_tree->RowOf(now[row]), row);
            QCOMPARE(m_tree->IsExpanded(now[row]), m_toolkit->isExpanded(now[row]));
            auto const place = m_tree->visualRect(now[row]);
            QVERIFY(place.top() < 0 || m_tree->indexAt(place.center()) == now[row]);
        }
        QVERIFY(!m_tree->NodeAt(int(now.size())).isValid() && !m_tree->NodeAt(-1).isValid());
    }
}

void TreeViewTest::agreesWithTheToolkitsAccess()
{
    QAccessible::setActive(true);
    m_tree->Expand(Find(u"fruit"_s));
    m_toolkit->expand(Find(u"fruit"_s));
    m_toolkit->resize(300, 400);
    m_toolkit->show();
    Show(300, 400);
    m_tree->setCurrentIndex(Find(u"apricot"_s));
    m_toolkit->setCurrentIndex(Find(u"apricot"_s));
    auto* const ours = QAccessible::queryAccessibleInterface(m_tree.get());
    auto* const theirs = QAccessible::queryAccessibleInterface(m_toolkit.get());
    if (ours == nullptr || theirs == nullptr) {
        QFAIL("A tree cannot be read.");
    }
    QCOMPARE(ours->role(), theirs->role());
    QCOMPARE(ours->childCount(), 6);
    for (int row = 0; row < ours->childCount(); ++row) {
        auto* const our = ours->child(row);
        auto* const their = theirs->child(row + 1); // the first is the header
        QCOMPARE(our->text(QAccessible::Name), their->text(QAccessible::Name));
        QCOMPARE(our->role(), their->role());
        QCOMPARE(our->parent()->object(), m_tree.get());
        QCOMPARE(our->rect().height(), their->rect().height());
        QCOMPARE(our->state().selected, their->state().selected);
        QCOMPARE(our->state().expandable, their->state().expandable);
        QCOMPARE(our->state().expanded, their->state().expanded);
        QCOMPARE(our->state().invisible, their->state().invisible);
        QCOMPARE(ours->indexOfChild(our), row);
        auto const place = our->rect().center();
        QCOMPARE(ours->childAt(place.x(), place.y()), our);
        auto* const ourCell = our->tableCellInterface();
        QCOMPARE(ourCell->rowIndex(), their->tableCellInterface()->rowIndex());
        QCOMPARE(ourCell->table(), ours);
        QCOMPARE(ours->tableInterface()->cellAt(row, 0), our);
    }
    auto* const ourTable = ours->tableInterface();
    auto* const theirTable = theirs->tableInterface();
    m_model->setHorizontalHeaderLabels({u"Food"_s});
    QCOMPARE(ourTable->rowCount(), theirTable->rowCount());
    QCOMPARE(ourTable->columnCount(), theirTable->columnCount());
    QCOMPARE(ourTable->columnDescription(0), theirTable->columnDescription(0));
    QCOMPARE(ourTable->selectedRows(), QList{2});
    QCOMPARE(ourTable->selectedCellCount(), theirTable->selectedCellCount());
    QCOMPARE(ourTable->selectedCells(), QList{ours->child(2)});
    QCOMPARE(ours->focusChild()->text(QAccessible::Name), u"apricot"_s);
    QVERIFY(ours->focusChild()->state().focused);
    QVERIFY(ours->childAt(-1, -1) == nullptr && ours->child(6) == nullptr);
    QVERIFY(ourTable->selectRow(4) && ourTable->isRowSelected(4) && !ourTable->isRowSelected(2));
    QVERIFY(ourTable->unselectRow(4) && ourTable->selectedRows().isEmpty());
}

void TreeViewTest::showsWhatComesAndGoesInPlace()
{
    for (int i = 0; i < 100; ++i) {
        m_model->item(0)->appendRow(new QStandardItem(u"x%1"_s.arg(i)));
    }
    m_tree->Expand(Find(u"fruit"_s));
    Show();
    auto const first = [this] { return m_tree->indexAt({0, 0}).data().toString(); };
    QCOMPARE(first(), u"fruit"_s);
    m_model->item(0)->insertRow(0, new QStandardItem(u"early"_s));
    QCOMPARE(first(), u"fruit"_s); // at the top the top stays in sight

    m_tree->scrollTo(Find(u"x50"_s), QAbstractItemView::PositionAtTop);
    QCOMPARE(first(), u"x50"_s);
    m_model->item(0)->insertRow(0, new QStandardItem(u"earlier"_s));
    QCOMPARE(first(), u"x50"_s);
    m_model->item(0)->removeRows(2, 7);
    QCOMPARE(first(), u"x50"_s);
    m_model->item(0)->removeRow(Find(u"x50"_s).row());
    QCOMPARE(first(), u"x51"_s);
    m_model->item(0)->insertRow(Find(u"x60"_s).row() + 1, new QStandardItem(u"late"_s));
    QCOMPARE(first(), u"x51"_s);
    m_tree->Collapse(Find(u"fruit"_s));
    QCOMPARE(first(), u"fruit"_s);
    QCOMPARE(m_tree->verticalScrollBar()->maximum(), 0);
}

void TreeViewTest::closingTakesTheCurrentNodeAlong()
{
    Show();
    QSignalSpy const opened(m_tree.get(), &CTreeView::Expanded);
    QSignalSpy const closed(m_tree.get(), &CTreeView::Collapsed);
    m_model->item(0)->child(1)->appendRow(new QStandardItem(u"deep"_s));
    m_tree->setCurrentIndex(Find(u"deep"_s)); // opens what it is in
    QCOMPARE(opened.size(), 2);
    m_tree->Collapse(Find(u"fruit"_s));
    QCOMPARE(m_tree->currentIndex(), Find(u"fruit"_s));
    QVERIFY(m_tree->selectionModel()->isSelected(Find(u"fruit"_s)));
    m_tree->Collapse(Find(u"fruit"_s));
    QCOMPARE(closed.size(), 1);
    m_tree->Expand(Find(u"fruit"_s)); // what was open in it is open again
    QVERIFY(m_tree->RowOf(Find(u"deep"_s)) > 0);
    m_tree->Expand({});
    QCOMPARE(opened.size(), 3);
}

void TreeViewTest::mouseOpensSelectsAndDoubleClicks()
{
    Show();
    QSignalSpy const doubleClicked(m_tree.get(), &CTreeView::doubleClicked);
    QSignalSpy const clicked(m_tree.get(), &CTreeView::clicked);
    auto& viewport = *m_tree->viewport();
    auto const fruit = Find(u"fruit"_s);
    m_tree->setCurrentIndex(Find(u"salt"_s));
    QTest::mouseClick(&viewport, Qt::LeftButton, {}, Button(fruit));
    QVERIFY(m_tree->IsExpanded(fruit));
    QCOMPARE(m_tree->currentIndex(), Find(u"salt"_s)); // opening does not select
    QVERIFY(clicked.isEmpty());
    QTest::mouseClick(&viewport, Qt::LeftButton, {}, Button(fruit));
    QVERIFY(!m_tree->IsExpanded(fruit));
    QTest::mouseDClick(&viewport, Qt::LeftButton, {}, Button(fruit)); // the second of two
    QVERIFY(m_tree->IsExpanded(fruit) && doubleClicked.isEmpty());
    QTest::mouseClick(&viewport, Qt::LeftButton, {}, Button(Find(u"apple"_s)));
    QCOMPARE(m_tree->currentIndex(), Find(u"apple"_s)); // it has no button

    auto const apricot = Find(u"apricot"_s);
    QTest::mouseClick(&viewport, Qt::LeftButton, {}, m_tree->visualRect(apricot).center());
    QCOMPARE(m_tree->selectionModel()->selectedIndexes(), QModelIndexList{apricot});
    auto const place = m_tree->visualRect(fruit).center();
    QTest::mouseClick(&viewport, Qt::LeftButton, {}, place);
    QTest::mouseDClick(&viewport, Qt::LeftButton, {}, place);
    QCOMPARE(doubleClicked.size(), 1);
    QVERIFY(m_tree->IsExpanded(fruit));

    QTest::mouseRelease(&viewport, Qt::LeftButton, {}, place);
    QTest::mouseClick(&viewport, Qt::LeftButton, {}, place);
    auto const clicks = clicked.size();
    QTest::mousePress(&viewport, Qt::LeftButton, {}, Button(fruit));
    QPointF const elsewhere = m_tree->visualRect(Find(u"nuts"_s)).center();
    QMouseEvent drag(QEvent::MouseMove, elsewhere, viewport.mapToGlobal(elsewhere), Qt::NoButton,
        Qt::LeftButton, {});
    QCoreApplication::sendEvent(&viewport, &drag);
    QTest::mouseRelease(&viewport, Qt::LeftButton, {}, Button(fruit));
    QCOMPARE(m_tree->currentIndex(), fruit); // dragging from a button selects nothing,
    QCOMPARE(clicked.size(), clicks); // and it is no click on the node
}

void TreeViewTest::paintsWholeRowsAnew()
{
    m_tree->Expand(Find(u"fruit"_s));
    Show();
    m_tree->setCurrentIndex(Find(u"apple"_s));
    QCoreApplication::processEvents();
    CPaintSpy const spy(*m_tree->viewport());
    m_tree->setCurrentIndex(Find(u"apricot"_s));
    QCoreApplication::processEvents();
    for (auto const* const name : {"apple", "apricot"}) {
        auto row = m_tree->visualRect(Find(QLatin1StringView(name)));
        row.setLeft(0);
        QCOMPARE(QRegion(row) - spy.m_painted, QRegion());
    }
    QVERIFY(!spy.m_painted.contains(m_tree->visualRect(Find(u"banana"_s))));
}

void TreeViewTest::findsTypedTexts()
{
    Show();
    m_tree->Expand(Find(u"fruit"_s));
    m_model->item(1)->setText(u"b-nuts now"_s);
    auto const type = [this](QString const& text, bool afterAPause = true) {
        if (afterAPause) {
            m_tree->keyboardSearch({});
        }
        QTest::keyClicks(m_tree.get(), text);
        return m_tree->currentIndex().data().toString();
    };
    QCOMPARE(type(u"A"_s), u"apple"_s);
    QCOMPARE(type(u"a"_s), u"apricot"_s); // a new search goes on to the next
    QCOMPARE(type(u"a"_s), u"apple"_s); // and around
    QCOMPARE(type(u"p"_s, false), u"apple"_s); // one that goes on may stay
    QCOMPARE(type(u"r"_s, false), u"apricot"_s);
    QCOMPARE(type(u"aa"_s), u"apricot"_s); // twice from apricot: apple, apricot
    QCOMPARE(type(u"b-nuts n"_s), u"b-nuts now"_s); // not closed by the minus
    QCOMPARE(type(u"hazel"_s), u"b-nuts now"_s); // in a closed node
    QCOMPARE(type(u"s"_s), u"salt"_s);
}

void TreeViewTest::scrollsSidewaysToTheBeginning()
{
    m_model->item(0)->child(0)->setText(QString(80, u'w'));
    m_tree->Expand(Find(u"fruit"_s));
    Show();
    auto const& bar = *m_tree->horizontalScrollBar();
    QVERIFY(bar.maximum() > 0);
    QCOMPARE(bar.maximum() + m_tree->viewport()->width(),
        m_tree->visualRect(m_tree->NodeAt(1)).right() + 1);
    m_tree->setCurrentIndex(Find(u"salt"_s));
    Press(*m_tree, Qt::Key_Right);
    Press(*m_tree, Qt::Key_Right);
    QVERIFY(bar.value() > 0);
    m_tree->horizontalScrollBar()->setValue(bar.maximum());
    Press(*m_tree, Qt::Key_Home);
    QCOMPARE(bar.value(), 0);
    m_model->item(0)->child(0)->setText(u"short"_s); // as wide as what was in sight, until
    QVERIFY(bar.maximum() > 0);
    auto font = m_tree->font();
    font.setPointSize(font.pointSize() + 1);
    m_tree->setFont(font);
    QTRY_COMPARE(bar.maximum(), 0);
}

void TreeViewTest::mirrorsFromRightToLeft()
{
    m_tree->setLayoutDirection(Qt::RightToLeft);
    Show();
    auto const place = m_tree->visualRect(Find(u"fruit"_s));
    QCOMPARE(place.left(), 0);
    QTest::mouseClick(m_tree->viewport(), Qt::LeftButton, {},
        {place.right() + place.height() / 2, place.center().y()});
    QVERIFY(m_tree->IsExpanded(Find(u"fruit"_s)));
    m_tree->setCurrentIndex(Find(u"fruit"_s));
    Press(*m_tree, Qt::Key_Right);
    QVERIFY(!m_tree->IsExpanded(Find(u"fruit"_s)));
    Press(*m_tree, Qt::Key_Left);
    QVERIFY(m_tree->IsExpanded(Find(u"fruit"_s)));
}

void TreeViewTest::accessFollowsTheNodes()
{
    QAccessible::setActive(true);
    m_tree->Expand(Find(u"fruit"_s));
    Show();
    auto* const access = QAccessible::queryAccessibleInterface(m_tree.get());
    auto* const banana = access->child(3);
    auto* const apple = access->child(1);
    m_model->item(0)->insertRow(0, new QStandardItem(u"ananas"_s));
    QCOMPARE(access->child(4), banana); // the same node, another row
    QCOMPARE(access->indexOfChild(banana), 4);
    QCOMPARE(banana->text(QAccessible::Name), u"banana"_s);

    auto* const nuts = access->child(5)->actionInterface();
    nuts->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(m_tree->IsExpanded(Find(u"nuts"_s)));
    nuts->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(!m_tree->IsExpanded(Find(u"nuts"_s)));
    auto* const act = banana->actionInterface();
    QCOMPARE(act->actionNames(), QStringList{QAccessibleActionInterface::setFocusAction()});
    act->doAction(QAccessibleActionInterface::toggleAction());
    act->doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(m_tree->currentIndex(), Find(u"banana"_s));

    m_tree->Collapse(Find(u"fruit"_s));
    QVERIFY(apple->state().invisible && apple->rect().isEmpty());
    m_model->item(0)->removeRow(1);
    QVERIFY(!apple->isValid() && apple->text(QAccessible::Name).isEmpty());
    QVERIFY(apple->state().invalid && apple->rect().isEmpty() && !apple->isValid());
    for (int i = 0; i < 600; ++i) { // those of gone nodes are not kept for ever
        m_model->appendRow(new QStandardItem(u"more"_s));
        QVERIFY(access->child(access->childCount() - 1)->isValid());
        m_model->removeRow(m_model->rowCount() - 1);
    }
    m_tree.reset();
}

void TreeViewTest::survivesItsModel()
{
    m_tree->Expand(Find(u"fruit"_s));
    Show();
    m_toolkit.reset();
    m_model.reset();
    QCOMPARE(m_tree->RowCount(), 0);
    m_tree->repaint();
    Press(*m_tree, Qt::Key_Down);
    QVERIFY(!m_tree->indexAt({5, 5}).isValid());

    auto const owner = std::make_unique<CTreeView>(); // goes before its model
    auto* const model = new QStandardItemModel(owner.get());
    model->appendRow(Branch(u"fruit"_s, {u"apple"_s}));
    owner->setModel(model);
    owner->Expand(model->index(0, 0));
}

CORVANA_TEST(TreeViewTest);
#include "TreeViewTest.moc"
