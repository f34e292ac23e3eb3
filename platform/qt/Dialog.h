#pragma once

#include <QDialog>

#include <functional>

/// The base of all dialogs. The members of a dialog are what it edits: they are shown when it
/// opens and taken from its fields on OK, both through the two functions that a dialog overrides.
/// OK and Cancel of the button box in its form are connected here.
class CDialog : public QDialog
{
    Q_OBJECT
public:
    explicit CDialog(QWidget* parent = nullptr);

    /// What OK does last, after the fields were taken. As long as it gives false the dialog stays
    /// open, with everything that was entered in it.
    void SetFinish(std::function<bool()> finish) { m_fnFinish = std::move(finish); }

    /// OK: closes the dialog if its fields are accepted and its last step is done.
    void accept() override;
    void setVisible(bool visible) override;

protected:
    /// Fills lists whose entries come from elsewhere, such as the classes of a member. Called each
    /// time before the dialog shows, ahead of ShowFields.
    virtual void FillLists() { }
    /// Members to fields, at any time, also when a button has calculated one.
    virtual void ShowFields() { }
    /// Fields to members, on OK. Checks in the order of the form and stops at the first fault; the
    /// members are set last, so that a refused OK changes none. False keeps the dialog open.
    virtual bool TakeFields() { return true; }

private:
    std::function<bool()> m_fnFinish;
    bool m_bConnected = false;
};
