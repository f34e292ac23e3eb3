#pragma once

#include "ui/FileDialogs.h"

#include <QList>
#include <QStringList>

/// Stands in for the user while it lives: answers every question for a file and keeps it.
class CFileRecorder : public CFileAsker
{
public:
    CFileRecorder()
        : m_pBefore(SetFileAsker(this))
    {
    }
    ~CFileRecorder() override { SetFileAsker(m_pBefore); }

    /// The next questions get these files, in order; further ones are cancelled.
    void AnswerNext(QStringList const& paths) { m_lstAnswers += paths; }
    QList<CFileQuestion> const& Questions() const { return m_lstQuestions; }

    QString Ask(QWidget*, CFileQuestion const& question) override
    {
        m_lstQuestions += question;
        return m_lstAnswers.isEmpty() ? QString() : m_lstAnswers.takeFirst();
    }

private:
    CFileAsker* const m_pBefore;
    QList<CFileQuestion> m_lstQuestions;
    QStringList m_lstAnswers;
};
