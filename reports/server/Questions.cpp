#include "reports/server/Questions.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace
{

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CQuestions)
};

void SetUp(QMessageBox& box, QString const& text)
{
    box.setWindowTitle(CTexts::tr("Report Server"));
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
}

} // namespace

void TellUser(QWidget* parent, QString const& text, QString const& detail)
{
    QMessageBox box(parent);
    SetUp(box, text);
    box.setInformativeText(detail);
    box.exec();
}

bool AskToDestroy(QWidget* parent, QString const& text)
{
    QMessageBox box(parent);
    SetUp(box, text);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

CQuitChoice AskHowToQuit(QWidget* parent)
{
    QMessageBox box(parent);
    SetUp(box, CTexts::tr("A report is being made. Do you want to finish it first?"));
    box.setInformativeText(CTexts::tr("One that is given back waits for the next start."));
    auto const* const finish = box.addButton(CTexts::tr("&Finish It"), QMessageBox::AcceptRole);
    auto const* const back = box.addButton(CTexts::tr("&Give It Back"), QMessageBox::ActionRole);
    box.addButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == finish ? CQuitChoice::finish
        : box.clickedButton() == back    ? CQuitChoice::giveBack
                                         : CQuitChoice::stay;
}
