#pragma once

#include "members/LetterTemplates.h"
#include "members/MergeLetter.h"
#include "platform/qt/Dialog.h"
#include "ui/FormFields.h"

#include <cstdint>
#include <memory>

class CCorvanaDoc;

namespace Ui
{
class MergeLetterDlg;
}

/// Writes to members: the user chooses a template, edits the letter's body, and prints it. Asks for
/// the template as soon as it is shown.
class CMergeLetterDlg : public CDialog
{
    Q_OBJECT
public:
    /// The letters go to the members found; the set must outlive the dialog, as the document must.
    CMergeLetterDlg(CCorvanaDoc& doc, CDAOMem& found, CLetterTemplates templates);
    ~CMergeLetterDlg() override;

    std::int32_t m_nBlankLines = 0; ///< at the top of the page, 0 to 40

    /// Not OK: asks first when the letter would be lost.
    void reject() override;

protected:
    void ShowFields() override;
    bool TakeFields() override;
    void showEvent(QShowEvent* event) override;

private:
    void SelectTemplate();
    void SaveTemplate();
    bool MayReplace(QStringList const& names);
    void ShowBody(QString const& body);
    QStringList BodyLines() const;
    void ShowLastLine();

    CPrintOut Letters(
        CLetterExtent extent, std::function<void()> const& step = [] {});
    void PrintLetters(CLetterExtent extent);
    void TellFailed();

    CCorvanaDoc& m_doc;
    CDAOMem& m_found;
    CLetterTemplates m_templates;
    int m_nTemplate = 0;
    bool m_bWasShown = false;
    std::unique_ptr<Ui::MergeLetterDlg> const m_ui;
    CFormFields m_fields;
};
