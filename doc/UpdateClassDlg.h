#pragma once

#include "platform/qt/Dialog.h"
#include "store/services/MemberServices.h"
#include "ui/FormFields.h"

#include <memory>

class CCorvanaDoc;

namespace Ui
{
class UpdateClassDlg;
}

/// Asks for the class that takes the place of another one, with its bonuses and grade status, and
/// what becomes of the records of the class before.
class CUpdateClassDlg : public CDialog
{
    Q_OBJECT
public:
    /// The document has the catalogue and must outlive the dialog.
    explicit CUpdateClassDlg(CCorvanaDoc& doc, QWidget* parent = nullptr);
    ~CUpdateClassDlg() override;

    /// The new class, without an index. Bonuses and grade status begin with the centre's defaults;
    /// the lists start without a choice.
    CClassSlot m_class;
    bool m_bTransfer = true; ///< false: the records of the class before are deleted

protected:
    void FillLists() override;
    void ShowFields() override;
    bool TakeFields() override;

private:
    void SetControlIDs();

    std::unique_ptr<Ui::UpdateClassDlg> const m_ui;
    CFormFields m_fields;
};
