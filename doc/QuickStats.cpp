// How the centre's totals are counted and shown.
#include "doc/CorvanaDoc.h"
#include "doc/QuickStatsDlg.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <algorithm>
#include <memory>

namespace
{

/// Notes what could not be counted: a find that fails gives 0, like one that finds nothing.
class CCountCheck
{
public:
    /// The count that the set has just given.
    int Note(int count, CDAOEFSet const& set, QString const& what)
    {
        if (!set.LastStatus() && !m_lstFailed.contains(what)) {
            m_lstFailed += what;
            m_lstReasons += ToQt(set.LastStatus().Text());
        }
        return count;
    }

    /// Empty when nothing failed. One reason stands for all: the sets are of one file.
    QString Text(QString const& format) const
    {
        return m_lstFailed.isEmpty()
            ? QString()
            : format.arg(m_lstFailed.join(QStringLiteral(", ")), m_lstReasons.front());
    }

private:
    QStringList m_lstFailed;
    QStringList m_lstReasons;
};

} // namespace

void CCorvanaDoc::CompileStats(CQuickStatsDlg& dialog)
{
    CWaitCursor const wait;
    CCountCheck check;
    {
        CSetCloser const close(m_setSmMem);
        int const members = check.Note(m_setSmMem.FindAllMembers(true), m_setSmMem, tr("members"));
        int const past = check.Note(m_setSmMem.CountPast(), m_setSmMem, tr("members"));
        dialog.m_strMembers = QString::number(members);
        dialog.m_strCurrentMembers = QString::number(std::max(0, members - past));
        dialog.m_strPastMembers = QString::number(past);
    }
    {
        CSetCloser const close(m_setWk);
        dialog.m_strWorkouts
            = QString::number(check.Note(m_setWk.FindWks(0), m_setWk, tr("workouts")));
        dialog.m_strTodaysWorkouts
            = QString::number(check.Note(m_setWk.CountToday(), m_setWk, tr("workouts")));
    }
    {
        CSetCloser const close(m_setSmEval);
        dialog.m_strEvaluations = QString::number(check.Note(
            m_setSmEval.FindEvals(CDAOSmEval::idMember, 0), m_setSmEval, tr("evaluations")));
    }
    {
        CSetCloser const close(m_setBodyComp);
        dialog.m_strBodyComps = QString::number(
            check.Note(m_setBodyComp.FindBodyComps(0), m_setBodyComp, tr("body compositions")));
    }
    dialog.m_strNotCounted = check.Text(tr("Not counted: %1. %2"));
}

void CCorvanaDoc::ShowQuickStats()
{
    auto window = std::make_unique<CWaitDlg>(tr("Compiling statistics, please wait..."));
    CQuickStatsDlg dialog(m_setChkIn, Window());
    CompileStats(dialog);
    window.reset();
    dialog.exec();
}
