#pragma once

#include "platform/qt/Dialog.h"

#include <QString>
#include <QTimer>

#include <cstdint>
#include <memory>

class CCheckInModel;
class CDAOChkIn;

namespace Ui
{
class QuickStatsDlg;
}

/// Shows the totals of the centre, as its caller counted them, and who is checked in now, which it
/// reads itself every 15 seconds.
///
/// Only OK closes it. Its button Delete is the one that Esc and the window's close box stand for:
/// they delete the selected check-in too.
class CQuickStatsDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CQuickStatsDlg(CDAOChkIn& set, QWidget* parent = nullptr);
    ~CQuickStatsDlg() override;

    QString m_strMembers;
    QString m_strCurrentMembers;
    QString m_strPastMembers;
    QString m_strWorkouts;
    QString m_strTodaysWorkouts;
    QString m_strEvaluations;
    QString m_strBodyComps;
    QString m_strNotCounted; ///< what could not be counted and why; empty when all was

    void done(int result) override;
    void reject() override; ///< deletes; the dialog stays open

protected:
    void FillLists() override;
    void ShowFields() override;
    void showEvent(QShowEvent* event) override;

private:
    class CListPlace;

    void SetUpList();
    void Refresh();
    void DeleteCheckIn();
    bool DeleteFirstOf(std::int32_t memberID);
    bool FailToDelete();

    CDAOChkIn& m_set;
    std::unique_ptr<Ui::QuickStatsDlg> const m_ui;
    CCheckInModel* const m_pModel;
    QTimer m_timer{this}; ///< to the next refresh; stands still during one, and during a deletion
    QString m_strRefreshed; ///< when that was done last
};
