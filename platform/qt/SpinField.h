#pragma once

#include <QAbstractSpinBox>

/// A field for a whole number, digits only, with spin buttons. Unlike a spin box it takes numbers
/// outside its range as they are typed: whoever takes the value checks it. The buttons, the arrow
/// keys and the wheel stop at the ends of the range.
class CSpinField : public QAbstractSpinBox
{
    Q_OBJECT
public:
    explicit CSpinField(QWidget* parent = nullptr);

    void SetRange(int least, int greatest);
    void SetValue(int value);
    /// For the messages about what stands in it; QAbstractSpinBox keeps it to itself.
    QLineEdit* Edit() const { return lineEdit(); }

    void stepBy(int steps) override;
    QValidator::State validate(QString& text, int& position) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    StepEnabled stepEnabled() const override;
    void wheelEvent(QWheelEvent* event) override;

private:
    int m_nLeast = 0;
    int m_nGreatest = 99;
};
