#include "platform/qt/Dialog.h"

#include <QDialogButtonBox>

CDialog::CDialog(QWidget* parent)
    : QDialog(parent)
{
}

void CDialog::accept()
{
    if (TakeFields() && (!m_fnFinish || m_fnFinish())) {
        QDialog::accept();
    }
}

void CDialog::setVisible(bool visible)
{
    if (!m_bConnected) {
        m_bConnected = true;
        auto const boxes = findChildren<QDialogButtonBox*>();
        for (auto const* const box : boxes) {
            connect(box, &QDialogButtonBox::accepted, this, &CDialog::accept);
            connect(box, &QDialogButtonBox::rejected, this, &CDialog::reject);
        }
    }
    if (visible && !isVisible()) {
        FillLists();
        ShowFields();
    }
    QDialog::setVisible(visible);
}
