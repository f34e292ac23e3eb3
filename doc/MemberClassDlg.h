#pragma once

#include "platform/qt/Dialog.h"
#include "store/sets/DAOCls.h"

#include <cstdint>
#include <memory>
#include <string>

class CCorvanaDoc;

namespace Ui
{
class MemberClassDlg;
}

/// Asks for one of a member's classes.
class CMemberClassDlg : public CDialog
{
    Q_OBJECT
public:
    /// The document fills the list.
    explicit CMemberClassDlg(CCorvanaDoc& doc, QWidget* parent = nullptr);
    ~CMemberClassDlg() override;

    std::int32_t m_lMemberID = 0;
    bool m_bWithUnknown = false; ///< offer the records of deleted classes too
    bool m_bWithAll = false; ///< offer all classes as one entry too
    /// Selected at first; after OK the chosen one. Stays as it is when the member has no classes.
    std::uint8_t m_nClassIndex = CDAOCls::kAllClasses;
    std::string m_strClass; ///< after OK the text of the chosen class

protected:
    void FillLists() override;
    bool TakeFields() override;

private:
    CCorvanaDoc& m_doc;
    std::unique_ptr<Ui::MemberClassDlg> const m_ui;
};
