#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>

/// A device for two state machines that do the same: it is hot after a moment.
class Boiler : public QObject
{
    Q_OBJECT

public:
    void heat()
    {
        ++m_heatings;
        QTimer::singleShot(std::chrono::milliseconds(10), this, &Boiler::hot);
    }
    int heatings() const { return m_heatings; }

Q_SIGNALS:
    void hot();
    void failed();

private:
    int m_heatings = 0;
};
