#pragma once

#include <QObject>

/// Announces SIGINT and SIGTERM, which no longer end the process from the construction on. Threads
/// that were started before must block them.
class StopSignals : public QObject
{
    Q_OBJECT

public:
    StopSignals();
    ~StopSignals() override;

Q_SIGNALS:
    void stopped();

private:
    const int m_descriptor;
};
