#pragma once

#include "platform/qt/Dialog.h"
#include "store/sets/DAOBodyComp.h"

#include <memory>

namespace Ui
{
class BodyCompMethodDlg;
}

/// Asks by which method a new body composition is measured.
class CBodyCompMethodDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CBodyCompMethodDlg(QWidget* parent = nullptr);
    ~CBodyCompMethodDlg() override;

    int m_nMethod = CDAOBodyComp::mSkinfolds; ///< a CDAOBodyComp::method

protected:
    void FillLists() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::BodyCompMethodDlg> const m_ui;
};
