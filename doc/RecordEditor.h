#pragma once

#include "platform/db/Status.h"

#include <functional>

class QString;
class QWidget;

/// What became of a save.
enum class CSaveOutcome
{
    saved,
    changed, ///< another program changed the record since it was read; nothing was written
    deleted, ///< another program deleted the record since; nothing was written
    refused, ///< by the record's own rules, which the editor knows more of; nothing was written
    failed, ///< Status() tells why; nothing was written
};

/// Writes what a form edits, after a look whether the record still is as the form was filled from
/// it (doc/RowSnapshot.h), both in one transaction.
class CRecordEditor
{
public:
    CRecordEditor() = default;
    virtual ~CRecordEditor() = default;
    CRecordEditor(CRecordEditor const&) = delete;
    CRecordEditor& operator=(CRecordEditor const&) = delete;

    virtual CSaveOutcome Save() = 0;
    /// After "changed" or "deleted": the next Save writes over what was found, or adds the record
    /// again.
    virtual void TakeOver() = 0;
    /// What made the editor fail.
    CDbStatus const& Status() const { return m_status; }

protected:
    CDbStatus m_status;
};

/// The last step of OK in a form, under the wait window with waitText, or the wait cursor alone
/// without one. Whatever keeps the record (a "member") from being stored is told or asked; the form
/// then stays open, false, with everything that was entered, so that it can be tried again.
/// tellRefused tells what was refused, for editors that refuse.
bool SaveForm(QWidget& form, QString const& record, QString const& waitText, CRecordEditor& editor,
    std::function<void()> const& tellRefused = {});
