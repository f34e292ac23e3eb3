#pragma once

#include "platform/qt/PartsField.h"

#include <QTime>

/// A field for a time of day to the second, shown as 18:05:09; takes whatever ParseTime() reads.
class CTimeField : public CPartsField
{
    Q_OBJECT
public:
    explicit CTimeField(QWidget* parent = nullptr);

    /// An invalid time shows as nothing.
    void SetTime(QTime const& time);
    /// The time in the field; invalid when there is none or what is in it is no time.
    QTime Time() const;

protected:
    QString Standard(QString const& text) const override;
    QString Now() const override;
    QString Stepped(QString const& text, int part, int steps) const override;
    QString Paged(QString const& text, int steps) const override;
};
