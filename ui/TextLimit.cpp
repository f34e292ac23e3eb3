#include "ui/TextLimit.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBoundaryFinder>
#include <QTextDocument>
#include <QValidator>

#include <algorithm>
#include <utility>

namespace
{

qsizetype CountLetters(QString const& text)
{
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (letters.toNextBoundary() >= 0) {
        ++count;
    }
    return count;
}

qsizetype CountCharacters(QString const& text)
{
    return text.toUcs4().size();
}

struct CLimit
{
    qsizetype (*m_fnCount)(QString const&);
    qsizetype m_nMost;
};

/// What was changed in a text: the same before and after it.
struct CEdit
{
    qsizetype m_nAt;
    QString m_strOld;
    QString m_strNew;
};

CEdit Difference(QString const& before, QString const& after)
{
    auto const shorter = std::min(before.size(), after.size());
    auto const front = std::mismatch(before.cbegin(), before.cbegin() + shorter, after.cbegin());
    auto at = front.first - before.cbegin();
    at -= at > 0 && before[at - 1].isHighSurrogate() ? 1 : 0;
    auto const back
        = std::mismatch(before.crbegin(), before.crbegin() + (shorter - at), after.crbegin());
    auto same = back.first - before.crbegin();
    same -= same > 0 && before[before.size() - same].isLowSurrogate() ? 1 : 0;
    return {at, before.mid(at, before.size() - at - same), after.mid(at, after.size() - at - same)};
}

/// As much from the beginning of what is new as is taken.
QString Fitting(QString const& before, CEdit const& edit, CLimit limit)
{
    auto const head = before.left(edit.m_nAt) + edit.m_strNew;
    auto const tail = before.mid(edit.m_nAt + edit.m_strOld.size());
    auto const count = limit.m_fnCount(head + tail);
    bool const isShorter = edit.m_strNew.size() < edit.m_strOld.size()
        && (edit.m_strNew.isEmpty() || count <= limit.m_fnCount(before));
    if (isShorter || count <= limit.m_nMost) {
        return edit.m_strNew;
    }
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, head);
    letters.setPosition(edit.m_nAt);
    auto end = edit.m_nAt;
    for (auto next = end; next >= 0; next = letters.toNextBoundary()) {
        if (limit.m_fnCount(head.left(next) + tail) > limit.m_nMost) {
            break;
        }
        end = next;
    }
    return edit.m_strNew.left(end - edit.m_nAt);
}

/// Makes a line edit take back what does not fit, before anybody sees it.
class CLineLimit : public QValidator
{
public:
    CLineLimit(QLineEdit& field, int letters)
        : QValidator(&field)
        , m_field(field)
        , m_limit{&CountLetters, letters}
        , m_strBefore(field.text())
    {
        // By the time this comes the line edit has taken it back.
        connect(
            &field, &QLineEdit::inputRejected, this, [this] { EnterWhatFits(); },
            Qt::QueuedConnection);
    }

    State validate(QString& text, int&) const override
    {
        // What the program puts in cannot be undone; what undoing brings back was there before.
        bool const byUser = m_field.isUndoAvailable() && !m_field.isRedoAvailable();
        auto const edit = Difference(m_strBefore, text);
        auto const fitting = byUser ? Fitting(m_strBefore, edit, m_limit) : edit.m_strNew;
        if (fitting.size() < edit.m_strNew.size()) {
            m_fitting = {edit.m_nAt, edit.m_strOld, fitting};
            return Invalid;
        }
        m_strBefore = text;
        return Acceptable;
    }

private:
    void EnterWhatFits()
    {
        auto const edit = std::exchange(m_fitting, {});
        if (!edit.m_strNew.isEmpty() && m_field.text() == m_strBefore) {
            m_field.setSelection(
                static_cast<int>(edit.m_nAt), static_cast<int>(edit.m_strOld.size()));
            m_field.insert(edit.m_strNew);
        }
    }

    QLineEdit& m_field;
    CLimit const m_limit;
    mutable QString m_strBefore; ///< the last text that was taken
    mutable CEdit m_fitting = {}; ///< what is left of the last one that was not
};

/// Makes a text field take back what does not fit.
class CMemoLimit : public QObject
{
public:
    CMemoLimit(QPlainTextEdit& field, int characters)
        : QObject(&field)
        , m_field(field)
        , m_limit{&CountCharacters, characters}
        , m_strBefore(field.toPlainText())
    {
        connect(&field, &QPlainTextEdit::textChanged, this, &CMemoLimit::Check);
    }

private:
    void Check()
    {
        auto const& document = *m_field.document();
        bool const byUser = document.isUndoAvailable() && !document.isRedoAvailable();
        if (byUser && !m_bCutting) {
            auto const edit = Difference(m_strBefore, m_field.toPlainText());
            auto const fitting = Fitting(m_strBefore, edit, m_limit);
            if (fitting.size() < edit.m_strNew.size()) {
                m_bCutting = true;
                Cut({edit.m_nAt, edit.m_strOld, fitting});
                m_bCutting = false;
            }
        }
        m_strBefore = m_field.toPlainText();
    }

    /// Makes the last step the one that is taken. Letters that are typed one after the other are
    /// one step.
    void Cut(CEdit const& taken)
    {
        auto wanted = m_strBefore;
        if (!taken.m_strNew.isEmpty()) {
            wanted.replace(taken.m_nAt, taken.m_strOld.size(), taken.m_strNew);
        }
        auto& document = *m_field.document();
        document.undo();
        auto const step = Difference(m_field.toPlainText(), wanted);
        auto cursor = m_field.textCursor();
        if (step.m_strOld.isEmpty() && step.m_strNew.isEmpty()) {
            document.clearUndoRedoStacks(QTextDocument::RedoStack);
        } else {
            cursor.setPosition(static_cast<int>(step.m_nAt));
            cursor.setPosition(
                static_cast<int>(step.m_nAt + step.m_strOld.size()), QTextCursor::KeepAnchor);
            cursor.insertText(step.m_strNew);
        }
        cursor.setPosition(static_cast<int>(taken.m_nAt + taken.m_strNew.size()));
        m_field.setTextCursor(cursor);
    }

    QPlainTextEdit& m_field;
    CLimit const m_limit;
    QString m_strBefore; ///< the last text that was taken
    bool m_bCutting = false;
};

} // namespace

void LimitText(QLineEdit& field, int letters)
{
    field.setValidator(new CLineLimit(field, letters));
}

void LimitText(QPlainTextEdit& field, int characters)
{
    new CMemoLimit(field, characters);
}
