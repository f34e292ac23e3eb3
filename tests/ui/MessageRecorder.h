#pragma once

#include "ui/Messages.h"

#include <QList>
#include <QStringList>

#include <functional>

/// Stands in for the user while it lives: answers every message box and keeps what it said.
class CMessageRecorder : public CMessageShower
{
public:
    CMessageRecorder()
        : m_pBefore(SetMessageShower(this))
    {
    }
    ~CMessageRecorder() override { SetMessageShower(m_pBefore); }

    /// The next questions get these answers, in order; further ones get "no".
    void AnswerNext(QList<bool> const& answers) { m_lstAnswers += answers; }
    /// Called while a message shows, for tests that look at the screen at that moment.
    std::function<void()> m_fnWhileShown;

    QList<CMessage> const& Messages() const { return m_lstMessages; }
    QStringList Texts() const { return m_lstTexts; }

    bool Show(QWidget*, CMessage const& message) override
    {
        m_lstMessages += message;
        m_lstTexts += message.m_strText;
        if (m_fnWhileShown) {
            m_fnWhileShown();
        }
        return message.m_bQuestion && !m_lstAnswers.isEmpty() && m_lstAnswers.takeFirst();
    }

private:
    CMessageShower* const m_pBefore;
    QList<CMessage> m_lstMessages;
    QStringList m_lstTexts;
    QList<bool> m_lstAnswers;
};
