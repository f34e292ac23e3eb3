#include "ui/Messages.h"

#include "ui/WaitCursor.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kLongestDetail = 1000; ///< letters for which a box has room

CMessageShower* g_shower = nullptr;

QMessageBox::StandardButtons ButtonsOf(CMessage const& message)
{
    if (!message.m_bQuestion) {
        return QMessageBox::Ok;
    }
    switch (message.m_question) {
    case CQuestion::okCancel:
    case CQuestion::destroyingOkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case CQuestion::retryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    case CQuestion::yesNo:
    case CQuestion::destroying:
        break;
    }
    return QMessageBox::Yes | QMessageBox::No;
}

bool ShowBox(QWidget* parent, CMessage const& message)
{
    auto text = message.m_strText;
    text.replace(u'\t', u"    "_s); // a tab would be so wide that lines break
    QMessageBox box(
        message.m_icon == CMessageIcon::exclamation ? QMessageBox::Warning : QMessageBox::NoIcon,
        u"Corvana"_s, text, ButtonsOf(message), parent);
    box.setTextFormat(Qt::PlainText);
    if (message.m_strDetail.size() > kLongestDetail) {
        box.setDetailedText(message.m_strDetail); // in a field that scrolls
    } else {
        box.setInformativeText(message.m_strDetail);
    }
    if (message.m_bQuestion && message.m_question == CQuestion::destroying) {
        box.setDefaultButton(QMessageBox::No);
    } else if (message.m_bQuestion && message.m_question == CQuestion::destroyingOkCancel) {
        box.setDefaultButton(QMessageBox::Cancel);
    }
    auto const answer = box.exec();
    return answer == QMessageBox::Yes || answer == QMessageBox::Ok || answer == QMessageBox::Retry;
}

bool Show(QWidget* parent, CMessage const& message)
{
    CWaitCursorPause pause;
    auto* const over = parent != nullptr ? parent : QApplication::activeWindow();
    return g_shower != nullptr ? g_shower->Show(over, message) : ShowBox(over, message);
}

void SelectAll(QWidget* field)
{
    auto* const combo = qobject_cast<QComboBox*>(field);
    QObject* const text = combo != nullptr ? combo->lineEdit() : field;
    // Line edits, spin boxes and text fields all have this slot, from no common base.
    if (text != nullptr && text->metaObject()->indexOfMethod("selectAll()") >= 0) {
        QMetaObject::invokeMethod(text, "selectAll");
    }
}

} // namespace

CMessageShower* SetMessageShower(CMessageShower* shower)
{
    return std::exchange(g_shower, shower);
}

void Tell(QWidget* parent, QString const& text, CMessageIcon icon, QString const& detail)
{
    Show(parent, {.m_strText = text, .m_strDetail = detail, .m_icon = icon});
}

bool Ask(QWidget* parent, QString const& text, CQuestion question, CMessageIcon icon,
    QString const& detail)
{
    return Show(parent,
        {.m_strText = text,
            .m_strDetail = detail,
            .m_icon = icon,
            .m_bQuestion = true,
            .m_question = question});
}

bool Refuse(QWidget* field, QString const& text)
{
    if (!text.isEmpty()) {
        Tell(field->window(), text);
    }
    field->setFocus();
    SelectAll(field);
    return false;
}
