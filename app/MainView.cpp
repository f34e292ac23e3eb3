#include "app/MainView.h"

#include "doc/CorvanaDoc.h"
#include "ui/ControlID.h"
#include "ui/Convert.h"
#include "ui/WaitCursor.h"

#include <QEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

// In pixels of a screen whose usual font is kUsualHeight high; larger fonts scale the text.
constexpr int kLargeHeight = 20;
constexpr int kSmallHeight = 16;
constexpr int kUsualHeight = 16;

constexpr int kTop = 40;
constexpr int kFrameMargin = 20;
constexpr int kPanelMargin = 10;
constexpr int kButtonGap = 7;
constexpr int kEdge = 11; // least distance of the buttons from the edges

// Buttons stand in reading order, two a row, with one more below; that is their tab order too.
constexpr std::size_t kMember = 0;
constexpr std::size_t kQuickStats = 8;

/// A bold font whose characters are that high in all.
QFont BoldFont(QFont font, int height)
{
    font.setBold(true);
    font.setPixelSize(height);
    auto const real = QFontMetrics(font).height();
    font.setPixelSize(std::max(1, height * height / std::max(1, real)));
    return font;
}

/// Colours of the store have red in the low byte.
QColor ColourOf(std::uint32_t colour)
{
    return {static_cast<int>(colour & 0xFFU), static_cast<int>(colour >> 8U & 0xFFU),
        static_cast<int>(colour >> 16U & 0xFFU)};
}

/// Black or white, whichever reads better: they contrast alike at a luminance of 0.179.
QColor TextColourOn(QColor const& panel)
{
    auto const linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    auto const luminance = 0.2126 * linear(panel.redF()) + 0.7152 * linear(panel.greenF())
        + 0.0722 * linear(panel.blueF());
    return luminance > 0.179 ? Qt::black : Qt::white;
}

void DrawCentred(QPainter& painter, int centre, int top, QString const& text)
{
    auto const metrics = painter.fontMetrics();
    painter.drawText(centre - metrics.horizontalAdvance(text) / 2, top + metrics.ascent(), text);
}

} // namespace

CMainView::CMainView(CCorvanaDoc& doc, QWidget* parent)
    : QWidget(parent)
    , m_doc(doc)
{
    setObjectName(u"mainView"_s);
    setFocusPolicy(Qt::ClickFocus);
    MakeButtons();
    UpdateFonts();
}

void CMainView::MakeButtons()
{
    struct CButton
    {
        int m_nID;
        char const* m_name;
        QString m_strLabel;
        void (*m_fnPress)(CCorvanaDoc&);
    };
    std::array<CButton, kButtons> const buttons = {{
        {1187, "memberButton", tr("Member"), [](CCorvanaDoc& doc) { doc.EditMember(0); }},
        {1197, "memberReportButton", tr("Member Report"),
            [](CCorvanaDoc& doc) { doc.QueueReport(0); }},
        {1184, "workoutButton", tr("Workout"),
            [](CCorvanaDoc& doc) { doc.AddEditWorkout(nullptr); }},
        {1198, "workoutReportButton", tr("Workout Report"),
            [](CCorvanaDoc& doc) { doc.QueueReport(5); }},
        {1185, "evaluationButton", tr("Evaluation"),
            [](CCorvanaDoc& doc) { doc.AddEditEvaluation(nullptr); }},
        {1200, "evaluationReportButton", tr("Evaluation Report"),
            [](CCorvanaDoc& doc) { doc.QueueReport(9); }},
        {1186, "bodyCompButton", tr("Body Composition"),
            [](CCorvanaDoc& doc) { doc.AddEditBodyComp(nullptr); }},
        {1201, "bodyCompReportButton", tr("Body Composition Report"),
            [](CCorvanaDoc& doc) { doc.QueueReport(11); }},
        {1188, "quickStatsButton", tr("Quick Statistics"),
            [](CCorvanaDoc& doc) { doc.ShowQuickStats(); }},
    }};
    for (std::size_t i = 0; i < kButtons; ++i) {
        auto* const button = new QPushButton(buttons[i].m_strLabel, this);
        button->setObjectName(QLatin1StringView(buttons[i].m_name));
        button->hide(); // until its place is known
        button->installEventFilter(this);
        SetControlID(button, buttons[i].m_nID);
        connect(button, &QPushButton::clicked, this,
            [this, press = buttons[i].m_fnPress] { press(m_doc); });
        m_lstButtons[i] = button;
    }
    MarkDefault(m_lstButtons[kMember]);
}

QStringList CMainView::BannerLines() const
{
    auto const& center = m_doc.m_setCenter;
    if (center.m_strCenterName.empty()) {
        return {};
    }
    QStringList lines{ToQt(center.m_strCenterName)};
    auto const add = [&lines](QString const& before, std::string const& text) {
        if (!text.empty()) {
            lines += before + ToQt(text);
        }
    };
    add({}, center.m_strAddress1);
    add({}, center.m_strAddress2);
    if (!center.m_strCity.empty() && !center.m_strState.empty() && !center.m_strZip.empty()) {
        lines += ToQt(center.m_strCity + ", " + center.m_strState + " " + center.m_strZip);
    }
    add({}, center.m_strPhone);
    add(tr("Web: "), center.m_strWeb);
    add(tr("Email: "), center.m_strEmail);
    return lines;
}

QSize CMainView::ButtonSize() const
{
    QSize size;
    for (auto const* const button : m_lstButtons) {
        size = size.expandedTo(button->sizeHint());
    }
    // Large ones: half as high again as a usual button, and as much more wide.
    int const more = size.height() / 2;
    return size + QSize(more, more);
}

CMainView::CPlaces CMainView::PlacesFor(int width) const
{
    CPlaces places;
    places.m_nCentre = width / 2;
    int y = kTop;
    PlaceBanner(places, y);
    auto const line = QFontMetrics(m_smallFont).lineSpacing();
    places.m_nDateTop = y;
    PlaceButtons(places, y + 3 * line);
    return places;
}

void CMainView::PlaceBanner(CPlaces& places, int& y) const
{
    auto const lines = BannerLines();
    if (lines.isEmpty()) {
        return;
    }
    QFontMetrics const large(m_largeFont);
    QFontMetrics const small(m_smallFont);
    int width = 0;
    int const top = y;
    for (auto const& text : lines) {
        bool const isName = places.m_lstLineTops.isEmpty();
        width = std::max(width, (isName ? large : small).horizontalAdvance(text));
        places.m_lstLineTops += y;
        y += isName ? large.lineSpacing() : small.lineSpacing();
    }
    QRect const block(places.m_nCentre - width / 2, top, width, y - top);
    auto const grown = [&block](int by) { return block.adjusted(-by, -by, by, by); };
    places.m_frame = grown(kFrameMargin);
    places.m_panel = grown(kPanelMargin);
    y += 2 * small.lineSpacing();
}

void CMainView::PlaceButtons(CPlaces& places, int y) const
{
    auto const size = ButtonSize();
    int const left = places.m_nCentre - (2 * size.width() + kButtonGap) / 2;
    int const right = left + size.width() + kButtonGap;
    for (std::size_t i = 0; i < kQuickStats; i += 2) {
        places.m_buttons[i] = QRect(QPoint(left, y), size);
        places.m_buttons[i + 1] = QRect(QPoint(right, y), size);
        y += size.height() + kButtonGap;
    }
    places.m_buttons[kQuickStats] = QRect(QPoint((left + right) / 2, y), size);
    places.m_nBottom = y + size.height();
}

QSize CMainView::minimumSizeHint() const
{
    return {2 * ButtonSize().width() + kButtonGap + 2 * kEdge, PlacesFor(0).m_nBottom + kEdge};
}

void CMainView::MoveButtons()
{
    auto const places = PlacesFor(width());
    for (std::size_t i = 0; i < kButtons; ++i) {
        m_lstButtons[i]->setGeometry(places.m_buttons[i]);
        m_lstButtons[i]->show();
    }
}

void CMainView::paintEvent(QPaintEvent*)
{
    CWaitCursor const wait;
    auto const banner = BannerLines();
    auto const date = ToQt(CEFOleDateTime::GetCurrentTime().Format("%A - %B  %d, %Y"));
    auto const places = PlacesFor(width());

    QPainter painter(this);
    if (!banner.isEmpty()) {
        auto const panel = ColourOf(m_doc.m_setTouch.m_clrPanel);
        painter.setPen(Qt::black);
        painter.setBrush(ColourOf(m_doc.m_setTouch.m_clrFrame));
        painter.drawRect(places.m_frame.adjusted(0, 0, -1, -1));
        painter.setBrush(panel);
        painter.drawRect(places.m_panel.adjusted(0, 0, -1, -1));
        painter.setPen(TextColourOn(panel));
        painter.setFont(m_largeFont);
        for (qsizetype line = 0; line < banner.size(); ++line) {
            DrawCentred(painter, places.m_nCentre, places.m_lstLineTops[line], banner[line]);
            painter.setFont(m_smallFont);
        }
    }
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(m_smallFont);
    DrawCentred(painter, places.m_nCentre, places.m_nDateTop, date);
    UpdateAccessibleText(banner, date);
}

void CMainView::UpdateAccessibleText(QStringList const& banner, QString const& date)
{
    auto const name = banner.join(u'\n');
    if (name != accessibleName()) {
        setAccessibleName(name);
    }
    if (date != accessibleDescription()) {
        setAccessibleDescription(date);
    }
}

void CMainView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    MoveButtons();
}

void CMainView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    updateGeometry(); // the banner may have been loaded since the view was made
    MoveButtons();
}

void CMainView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        UpdateFonts();
    }
}

void CMainView::UpdateFonts()
{
    auto const usual = std::max(kUsualHeight, fontMetrics().height());
    m_largeFont = BoldFont(font(), kLargeHeight * usual / kUsualHeight);
    m_smallFont = BoldFont(font(), kSmallHeight * usual / kUsualHeight);
    updateGeometry();
    if (isVisible()) {
        MoveButtons();
    }
}

void CMainView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QWidget::keyPressEvent(event);
        return;
    }
    for (auto* const button : m_lstButtons) {
        if (button->isDefault()) {
            button->click();
        }
    }
}

bool CMainView::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        MarkDefault(qobject_cast<QPushButton*>(object));
    } else if (event->type() == QEvent::FocusOut) {
        MarkDefault(m_lstButtons[kMember]);
    }
    return QWidget::eventFilter(object, event);
}

void CMainView::MarkDefault(QPushButton* button)
{
    for (auto* const other : m_lstButtons) {
        other->setDefault(other == button);
    }
}
