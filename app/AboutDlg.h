#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class AboutDlg;
}

/// Tells the program's name, version and legal notice.
class CAboutDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CAboutDlg(QWidget* parent = nullptr);
    ~CAboutDlg() override;

private:
    std::unique_ptr<Ui::AboutDlg> const m_ui;
};
