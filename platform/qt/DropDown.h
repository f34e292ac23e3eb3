#pragma once

#include <QComboBox>

/// A drop-down list that tells when the user is done with it, rather than every entry that he
/// passes on the way: lists that depend on the choice are filled then.
class CDropDown : public QComboBox
{
    Q_OBJECT
public:
    explicit CDropDown(QWidget* parent = nullptr);

    /// The open list is as wide as its longest entry, however narrow the closed one is.
    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    /// The list was closed, with or without a new choice, or an entry was chosen by key while it
    /// was closed. The choice stands when this comes.
    void Closed();

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    bool m_bTelling = false;
};
