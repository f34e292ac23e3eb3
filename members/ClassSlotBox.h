#pragma once

#include "store/services/MemberServices.h"
#include "ui/FormFields.h"

#include <QGroupBox>

#include <memory>

class CCorvanaDoc;
class CDropDown;

namespace Ui
{
class ClassSlotBox;
}

/// The fields of one class slot of a member: the class, chosen from the catalogue, its bonuses and
/// its grade status.
class CClassSlotBox : public QGroupBox
{
    Q_OBJECT
public:
    /// The number, from 1 on, is what the user knows the slot by. Document and slot must live
    /// longer.
    CClassSlotBox(CCorvanaDoc& doc, int number, CClassSlot& slot, QWidget* parent = nullptr);
    ~CClassSlotBox() override;

    void Show();
    /// False when a bonus is refused; the slot stays as it is until Commit.
    bool Take() { return m_fields.Take(); }
    void Commit();

    /// The slot with the class that the lists show.
    CClassSlot ShownClass() const;
    /// The same as long as the user has chosen; else the class as it is stored, of which the lists
    /// may show more.
    CClassSlot ClassToDelete() const;
    /// A class that the catalogue has is selected.
    bool HasClass() const;
    QWidget* CategoryList() const;

Q_SIGNALS:
    void DeleteAsked();

private:
    void ShowDelete(bool shown);
    void UpdateDelete();

    CClassSlot& m_slot;
    CClassSlot m_shown; ///< the slot as the fields were filled from it
    std::unique_ptr<Ui::ClassSlotBox> const m_ui;
    CFormFields m_fields;
};
