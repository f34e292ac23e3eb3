#pragma once

#include "platform/qt/Dialog.h"

#include <memory>
#include <string>

class CCorvanaDoc;

namespace Ui
{
class ClassDlg;
}

/// Asks for a class of the catalogue, of which course and section may be left open.
class CClassDlg : public CDialog
{
    Q_OBJECT
public:
    /// The document has the catalogue and must outlive the dialog.
    explicit CClassDlg(CCorvanaDoc& doc, QWidget* parent = nullptr);
    ~CClassDlg() override;

    // What was chosen. The lists start without a choice, whatever stands here.
    std::string m_strCategory;
    std::string m_strCourse; ///< empty when the category has no courses
    std::string m_strSection; ///< empty when the course has no sections

protected:
    void FillLists() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::ClassDlg> const m_ui;
};
