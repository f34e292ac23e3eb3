#pragma once

#include "doc/ClassLists.h"
#include "store/services/MemberServices.h"

#include <QGroupBox>

#include <memory>

class CCorvanaDoc;

namespace Ui
{
class ClassSlotBox;
}

/// The fields of one class slot of a member: the class, chosen from the catalogue, its bonuses and
/// its grade status. What it was shown and cannot show in turn, such as a class name that differs
/// from the catalogue's in its case, comes back as it was unless the user changed it.
class CClassSlotBox : public QGroupBox
{
    Q_OBJECT
public:
    /// The number, from 1 on, is what the user knows the slot by. The document must live longer.
    CClassSlotBox(CCorvanaDoc& doc, int number, QWidget* parent = nullptr);
    ~CClassSlotBox() override;

    void ShowSlot(CClassSlot const& slot);
    /// Takes category, course and section; the slot comes as it was shown or last taken.
    void TakeClass(CClassSlot& slot) const;
    /// Takes all fields; false, with the slot as it was, when a bonus is refused.
    bool TakeSlot(CClassSlot& slot) const;
    /// A class that the catalogue has is selected.
    bool HasClass() const;
    QWidget* CategoryList() const;

Q_SIGNALS:
    void DeleteAsked();

private:
    void ShowDelete(bool shown);
    void UpdateDelete();

    CCorvanaDoc& m_doc;
    std::unique_ptr<Ui::ClassSlotBox> const m_ui;
    CClassLists m_lists = {};
    bool m_bClassChosen = false; ///< the user has used the lists since the slot was shown
};
