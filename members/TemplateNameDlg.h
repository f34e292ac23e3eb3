#pragma once

#include "platform/qt/Dialog.h"
#include "ui/FormFields.h"

#include <memory>
#include <string>

namespace Ui
{
class TemplateNameDlg;
}

/// Asks for the name of a template of merge letters.
class CTemplateNameDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CTemplateNameDlg(QWidget* parent = nullptr);
    ~CTemplateNameDlg() override;

    std::string m_strName; ///< not empty after OK, nor beginning with the mark of the last name

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::TemplateNameDlg> const m_ui;
    CFormFields m_fields;
};
