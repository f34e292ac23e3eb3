#pragma once

#include "platform/qt/Dialog.h"

#include <memory>
#include <string>

class CCorvanaDoc;
struct CClassLists;

namespace Ui
{
class ClassDlg;
}

/// Asks for a class of the catalogue, of which course and section may be left open.
class CClassDlg : public CDialog
{
    Q_OBJECT
public:
    /// The document fills the lists and must outlive the dialog.
    explicit CClassDlg(CCorvanaDoc& doc, QWidget* parent = nullptr);
    ~CClassDlg() override;

    // What was chosen. The lists start without a choice, whatever stands here.
    std::string m_strCategory;
    std::string m_strCourse; ///< empty when the category has no courses
    std::string m_strSection; ///< empty when the course has no sections

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    CClassLists Lists() const;

    CCorvanaDoc& m_doc;
    std::unique_ptr<Ui::ClassDlg> const m_ui;
};
