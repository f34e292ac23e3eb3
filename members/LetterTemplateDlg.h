#pragma once

#include "platform/qt/Dialog.h"

#include <QStringListModel>

#include <memory>

namespace Ui
{
class LetterTemplateDlg;
}

/// Chooses a template of merge letters by its name.
class CLetterTemplateDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CLetterTemplateDlg(QStringList const& names, QWidget* parent = nullptr);
    ~CLetterTemplateDlg() override;

    int m_nTemplate = 0; ///< its place among the names

    /// Without a template chosen OK closes the list as if it had not been pressed.
    void accept() override;

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::LetterTemplateDlg> const m_ui;
    QStringListModel m_names;
};
