// The keys and the context menu of a list.
#include "ui/ListDlg.h"

#include "ui_ListDlg.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kNumberedColumns = 9;

} // namespace

QAction& CListDlg::AddKey(
    QString const& text, char const* name, QKeySequence const& key, std::function<void()> use)
{
    auto* const action = new QAction(text, this);
    action->setObjectName(QLatin1StringView(name));
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [use = std::move(use)] { use(); });
    addAction(action);
    m_lstKeys.push_back(action);
    return *action;
}

void CListDlg::AddKeys()
{
    AddKey(tr("&Find in List"), "findAction", QKeySequence::Find, [this] {
        m_ui->findEdit->setFocus();
        m_ui->findEdit->selectAll();
    });
    // In the find field the same keys are for its own text.
    auto& copy = AddKey(tr("&Copy Row"), "copyAction", QKeySequence::Copy, [this] { CopyRow(); });
    copy.setShortcutContext(Qt::WidgetShortcut);
    removeAction(&copy);
    m_ui->recordList->addAction(&copy);
    AddKey(
        tr("Copy A&ll"), "copyAllAction", QKeySequence(u"Ctrl+Shift+C"_s), [this] { CopyAll(); });
    AddKey(tr("&Save As..."), "saveAction", QKeySequence::Save, [this] { SaveAsCsv(); });
    AddKey(tr("Print Pre&view..."), "previewAction", {}, [this] { Preview(); });
    AddKey(tr("Save as P&DF..."), "pdfAction", {}, [this] { SaveAsPdf(); });
    AddKey(tr("&Refresh"), "refreshAction", QKeySequence::Refresh, [this] { Refill(); });
    AddKey(tr("Reset Colu&mns"), "resetAction", {}, [this] { ResetColumns(); });
    for (int number = 0; number <= kNumberedColumns; ++number) {
        auto* const key = new QShortcut(QKeySequence(u"Ctrl+%1"_s.arg(number)), this);
        connect(key, &QShortcut::activated, this,
            [this, number] { number == 0 ? SortBy(-1, false) : ToggleSort(number - 1); });
    }
}

void CListDlg::ShowMenu(QPoint const& where, int column)
{
    QMenu menu(this);
    for (auto* const button : m_lstButtons) {
        if (button->isEnabled() && !button->isDefault()) {
            connect(
                menu.addAction(button->text()), &QAction::triggered, button, &QPushButton::click);
        }
    }
    menu.addSeparator();
    AddSortActions(menu, column);
    menu.addSeparator();
    for (auto* const key : m_lstKeys) {
        menu.addAction(key);
    }
    menu.exec(where);
}

void CListDlg::AddSortActions(QMenu& menu, int column)
{
    auto const& columns = m_pModel->Columns();
    auto const add = [&](QMenu& to, QString const& text, int sortBy, bool down) {
        connect(to.addAction(text), &QAction::triggered, this,
            [this, sortBy, down] { SortBy(sortBy, down); });
    };
    auto const isSortable
        = [&](std::size_t at) { return at < columns.size() && !columns[at].m_sort.IsEmpty(); };
    if (column >= 0 && isSortable(static_cast<std::size_t>(column))) {
        auto const heading = columns[static_cast<std::size_t>(column)].m_strHeading;
        add(menu, tr("Sort &Up by %1").arg(heading), column, false);
        add(menu, tr("Sort D&own by %1").arg(heading), column, true);
    }
    auto& others = *menu.addMenu(tr("Sort &By"));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (isSortable(i)) {
            auto const key = i < kNumberedColumns ? u"\tCtrl+%1"_s.arg(i + 1) : QString();
            connect(others.addAction(columns[i].m_strHeading + key), &QAction::triggered, this,
                [this, i] { ToggleSort(static_cast<int>(i)); });
        }
    }
    add(menu, tr("Order of the Search") + u"\tCtrl+0"_s, -1, false);
}
