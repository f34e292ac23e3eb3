#pragma once

#include "platform/qt/Dialog.h"

#include <QWidget>

class QDialogButtonBox;
class QScrollArea;
class QTabWidget;

/// One page of a property sheet. As with a dialog, its members are what it edits. A page that is
/// never opened keeps the values that were put in.
class CPropertyPage : public QWidget
{
    Q_OBJECT
public:
    explicit CPropertyPage(QWidget* parent = nullptr)
        : QWidget(parent)
    {
    }

protected:
    friend class CPropertySheet;

    /// As with a dialog. Both are called once, when the page is opened for the first time.
    virtual void FillLists() { }
    virtual void ShowFields() = 0;
    /// Fields to members, whenever the page is left and on OK; see CDialog. False keeps the user
    /// on the page.
    virtual bool TakeFields() = 0;

private:
    bool m_bOpened = false;
};

/// A dialog of pages with tabs, OK and Cancel. A page that does not accept its fields cannot be
/// left, nor OK be pressed on it; pages that are not in front are not asked.
class CPropertySheet : public CDialog
{
    Q_OBJECT
public:
    explicit CPropertySheet(QString const& caption, QWidget* parent = nullptr);

    /// The sheet owns the page from here on. A page that is larger than the screen scrolls.
    void AddPage(CPropertyPage* page, QString const& title);
    /// Brings a page to the front, unless the one in front does not accept its fields.
    void ShowPage(CPropertyPage const* page);

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    CPropertyPage* Page(int index) const;
    QScrollArea* Scroller(int index) const;
    void Open(int index);
    void ChangeTo(int index);

    QTabWidget* const m_pTabs;
    QDialogButtonBox* const m_pButtons;
    int m_nCurrent = 0;
};
