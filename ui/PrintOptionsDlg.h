#pragma once

#include "platform/qt/Dialog.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

class QCheckBox;

namespace Ui
{
class PrintOptionsDlg;
}

/// Chooses what is printed of a list.
class CPrintOptionsDlg : public CDialog
{
    Q_OBJECT
public:
    /// A bit of the word, and what it stands for. The first one is in focus when nothing is chosen.
    using CItems = std::vector<std::pair<std::uint32_t, QString>>;

    /// The note is what stands above the items, the remark, if any, what the user is to know below.
    CPrintOptionsDlg(
        QString const& note, CItems const& items, QString const& remark, QWidget* parent = nullptr);
    ~CPrintOptionsDlg() override;

    std::uint32_t m_nItems = 0; ///< those chosen, at least one

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::PrintOptionsDlg> const m_ui;
    std::vector<std::pair<std::uint32_t, QCheckBox*>> m_boxes;
};
