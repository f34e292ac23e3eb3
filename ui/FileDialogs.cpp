#include "ui/FileDialogs.h"

#include "ui/WaitCursor.h"

#include <QApplication>
#include <QFileDialog>

#include <utility>

namespace
{

CFileAsker* g_asker = nullptr;

} // namespace

CFileAsker* SetFileAsker(CFileAsker* asker)
{
    return std::exchange(g_asker, asker);
}

QString AskForFile(QWidget* parent, CFileQuestion const& question)
{
    CWaitCursorPause const pause;
    auto* const over = parent != nullptr ? parent : QApplication::activeWindow();
    if (g_asker != nullptr) {
        return g_asker->Ask(over, question);
    }
    if (question.m_bFolder) {
        return QFileDialog::getExistingDirectory(over, question.m_strTitle, question.m_strName);
    }
    if (question.m_bSave) {
        return QFileDialog::getSaveFileName(over, question.m_strTitle, question.m_strName,
            question.m_strFilter, nullptr, QFileDialog::DontConfirmOverwrite);
    }
    return QFileDialog::getOpenFileName(
        over, question.m_strTitle, question.m_strName, question.m_strFilter);
}
