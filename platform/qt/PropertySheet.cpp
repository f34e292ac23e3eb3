#include "platform/qt/PropertySheet.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// As large as the page in it, as far as the screen allows.
class CPageScroller : public QScrollArea
{
public:
    explicit CPageScroller(CPropertyPage* page)
    {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setWidget(page);
        viewport()->setAutoFillBackground(false);
        page->setAutoFillBackground(false);
    }

    QSize sizeHint() const override
    {
        // Tabs, buttons and the window's frame want some of the screen too.
        auto const room = screen()->availableSize() - QSize(80, 180);
        auto wanted = widget()->sizeHint();
        if (wanted.height() > room.height()) {
            wanted.rwidth() += verticalScrollBar()->sizeHint().width();
        }
        return wanted.boundedTo(room);
    }
};

/// Where typing begins, rather than on the tabs, which come first.
void FocusFirstField(QWidget const& page)
{
    for (auto* field = page.nextInFocusChain(); page.isAncestorOf(field);
         field = field->nextInFocusChain()) {
        if ((field->focusPolicy() & Qt::TabFocus) != 0 && field->isEnabled()) {
            field->setFocus(Qt::TabFocusReason); // what stands in it is selected, to type over
            return;
        }
    }
}

} // namespace

CPropertySheet::CPropertySheet(QString const& caption, QWidget* parent)
    : CDialog(parent)
    , m_pTabs(new QTabWidget)
    , m_pButtons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(caption);
    m_pTabs->setObjectName(u"tabs"_s);
    m_pButtons->setObjectName(u"buttonBox"_s);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_pTabs);
    connect(m_pTabs, &QTabWidget::currentChanged, this, &CPropertySheet::ChangeTo);
}

void CPropertySheet::AddPage(CPropertyPage* page, QString const& title)
{
    QSignalBlocker const block(m_pTabs); // the first page comes to the front, but is not open yet
    m_pTabs->addTab(new CPageScroller(page), title);
    // Whatever enters the window last is the last one that Tab comes to.
    m_pButtons->setParent(nullptr);
    layout()->addWidget(m_pButtons);
}

void CPropertySheet::ShowPage(CPropertyPage const* page)
{
    for (int index = 0; index < m_pTabs->count(); ++index) {
        if (Page(index) == page) {
            m_pTabs->setCurrentIndex(index);
        }
    }
}

void CPropertySheet::ShowFields()
{
    Open(m_nCurrent);
    if (!testAttribute(Qt::WA_Resized)) {
        resize(sizeHint()); // left alone, a window opens at no more than two thirds of the screen
    }
    FocusFirstField(*Page(m_nCurrent));
}

bool CPropertySheet::TakeFields()
{
    if (Page(m_nCurrent)->TakeFields()) {
        return true;
    }
    if (auto* const field = focusWidget(); field != nullptr) {
        Scroller(m_nCurrent)->ensureWidgetVisible(field);
    }
    return false;
}

/// The tabs have gone to another page already. They go back first, so that what the old one
/// objects to is said while the user sees it.
void CPropertySheet::ChangeTo(int index)
{
    QSignalBlocker const block(m_pTabs);
    m_pTabs->setCurrentIndex(m_nCurrent);
    if (index != m_nCurrent && TakeFields()) {
        Open(index);
        m_nCurrent = index;
        m_pTabs->setCurrentIndex(index);
        if (auto* const edit = qobject_cast<QLineEdit*>(focusWidget()); edit != nullptr) {
            edit->selectAll(); // as if Tab had come to it
        }
    }
}

void CPropertySheet::Open(int index)
{
    auto* const page = Page(index);
    if (!page->m_bOpened) {
        page->m_bOpened = true;
        page->FillLists();
        page->ShowFields();
        Scroller(index)->updateGeometry(); // what is shown may want more room than the empty page
        if (isVisible()) {
            resize(size().expandedTo(sizeHint()));
        }
    }
}

QScrollArea* CPropertySheet::Scroller(int index) const
{
    return static_cast<QScrollArea*>(m_pTabs->widget(index));
}

CPropertyPage* CPropertySheet::Page(int index) const
{
    return static_cast<CPropertyPage*>(Scroller(index)->widget());
}
