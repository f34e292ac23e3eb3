#include "platform/qt/DateField.h"

#include <QAction>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QScreen>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

QDate const kFirst(100, 1, 1);
QDate const kLast(9999, 12, 31);

QString Spell(QDate const& date)
{
    return date.toString(u"MM/dd/yyyy"_s);
}

/// The day itself or, in a shorter month, the last one before it.
QDate DayWithin(int year, int month, int day)
{
    return {year, month, std::min(day, QDate(year, month, 1).daysInMonth())};
}

/// A sheet of a calendar, in the colour of the text.
QIcon CalendarIcon(QColor const& colour)
{
    QIcon icon;
    for (int const unit : {1, 2, 3}) {
        QPixmap sheet(QSize(16, 16) * unit);
        sheet.fill(Qt::transparent);
        QPainter painter(&sheet);
        painter.scale(unit, unit);
        painter.fillRect(1, 2, 14, 13, colour);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(2, 6, 12, 8, colour);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        for (int const day : {0, 1, 2, 3, 4, 5}) {
            painter.fillRect(4 + day % 3 * 3, 8 + day / 3 * 3, 2, 2, colour);
        }
        icon.addPixmap(sheet);
    }
    return icon;
}

/// The calendar of a date field, below or above it.
class CCalendarPopup : public QFrame
{
public:
    explicit CCalendarPopup(QWidget& field)
        : QFrame(&field, Qt::Popup)
        , m_pCalendar(new QCalendarWidget)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setFrameShape(StyledPanel);
        setWindowTitle(tr("Calendar"));
        m_pCalendar->setObjectName(u"calendar"_s);
        m_pCalendar->setAccessibleName(windowTitle());
        m_pCalendar->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
        m_pCalendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        m_pCalendar->setDateRange(kFirst, kLast);
        auto* const layout = new QHBoxLayout(this);
        layout->setContentsMargins({});
        layout->addWidget(m_pCalendar);
    }

    QCalendarWidget& Calendar() const { return *m_pCalendar; }

    void ShowAt(QRect const& field, QRect const& screen)
    {
        auto const size = sizeHint();
        bool const fits = field.bottom() + size.height() <= screen.bottom();
        auto const left = std::clamp(
            field.left(), screen.left(), std::max(screen.left(), screen.right() - size.width()));
        move(left, fits ? field.bottom() + 1 : field.top() - size.height());
        show();
        m_pCalendar->setFocus();
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        setAttribute(Qt::WA_NoMouseReplay); // the button that opened it does not open it again
        QFrame::mousePressEvent(event);
    }

private:
    QCalendarWidget* const m_pCalendar;
};

} // namespace

CDateField::CDateField(QWidget* parent)
    : CPartsField(u"00/00/0000"_s, parent)
{
    auto const icon = CalendarIcon(palette().color(QPalette::Text));
    auto* const open = addAction(icon, TrailingPosition);
    open->setText(tr("Calendar"));
    open->setToolTip(tr("Choose from a calendar (F4)"));
    connect(open, &QAction::triggered, this, &CDateField::OpenCalendar);
}

void CDateField::SetDate(QDate const& date)
{
    Show(Spell(date));
}

QDate CDateField::Date() const
{
    return Read(text());
}

void CDateField::SetNeverInFuture(bool never)
{
    m_shortYear = never ? CShortYear::neverInFuture : CShortYear::nearest;
}

QDate CDateField::Read(QString const& text) const
{
    return ParseDate(text, QDate::currentDate(), m_shortYear).value_or(QDate());
}

QString CDateField::Standard(QString const& text) const
{
    return Spell(Read(text));
}

QString CDateField::Now() const
{
    return Spell(QDate::currentDate());
}

/// The year may stand first.
int CDateField::PartOf(QString const& text, int group) const
{
    auto const line = text.trimmed();
    bool const yearFirst
        = std::all_of(line.cbegin(), line.cbegin() + std::min<qsizetype>(line.size(), 4),
              [](QChar letter) { return letter.isDigit(); })
        && line.size() > 4 && !line[4].isDigit();
    return yearFirst ? (group + 2) % 3 : group;
}

QString CDateField::Stepped(QString const& text, int part, int steps) const
{
    auto const date = Read(text);
    if (part == 0) {
        return Spell(DayWithin(date.year(), std::clamp(date.month() + steps, 1, 12), date.day()));
    }
    if (part == 1) {
        auto const day = std::clamp(date.day() + steps, 1, date.daysInMonth());
        return Spell({date.year(), date.month(), day});
    }
    auto const year = std::clamp(date.year() + steps, kFirst.year(), kLast.year());
    return Spell(DayWithin(year, date.month(), date.day()));
}

QString CDateField::Paged(QString const& text, int steps) const
{
    return Spell(std::clamp(Read(text).addMonths(steps), kFirst, kLast));
}

void CDateField::keyPressEvent(QKeyEvent* event)
{
    auto const modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if ((event->key() == Qt::Key_F4 && modifiers == 0)
        || (event->key() == Qt::Key_Down && modifiers == Qt::AltModifier)) {
        OpenCalendar();
    } else {
        CPartsField::keyPressEvent(event);
    }
}

void CDateField::OpenCalendar()
{
    if (isReadOnly()) {
        return;
    }
    setFocus();
    auto* const popup = new CCalendarPopup(*this);
    auto const date = Date();
    popup->Calendar().setSelectedDate(date.isValid() ? date : QDate::currentDate());
    auto const take = [this, popup](QDate const& chosen) {
        Enter(Spell(chosen));
        popup->close();
    };
    connect(&popup->Calendar(), &QCalendarWidget::clicked, this, take);
    connect(&popup->Calendar(), &QCalendarWidget::activated, this, take);
    popup->ShowAt({mapToGlobal(QPoint()), size()}, screen()->availableGeometry());
}

COptionalDateField::COptionalDateField(QWidget* parent)
    : QWidget(parent)
    , m_pCheck(new QCheckBox)
    , m_pField(new CDateField)
{
    m_pCheck->setObjectName(u"check"_s);
    m_pField->setObjectName(u"field"_s);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_pCheck);
    layout->addWidget(m_pField, 1);
    setFocusProxy(m_pCheck);
    setFocusPolicy(m_pCheck->focusPolicy()); // the key of a label goes to nothing without one
    m_pField->setEnabled(false);
    m_pField->SetWayOut(m_pCheck);
    connect(m_pCheck, &QCheckBox::toggled, m_pField, &QWidget::setEnabled);
}

void COptionalDateField::SetName(QString const& name)
{
    m_pCheck->setAccessibleName(name);
    m_pField->setAccessibleName(name);
}

void COptionalDateField::SetDate(std::optional<QDate> const& date)
{
    m_pCheck->setChecked(date.has_value());
    m_pField->SetDate(date.value_or(QDate::currentDate()));
}

std::optional<QDate> COptionalDateField::Date() const
{
    return m_pCheck->isChecked() ? std::optional(m_pField->Date()) : std::nullopt;
}

bool COptionalDateField::IsGood() const
{
    return !m_pCheck->isChecked() || m_pField->IsGood();
}
