#pragma once

#include <QObject>

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into one of Qt. One object
/// a process.
class CQuitSignals : public QObject
{
    Q_OBJECT
public:
    explicit CQuitSignals(QObject* parent = nullptr);

Q_SIGNALS:
    void Asked();
};
