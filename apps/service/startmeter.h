#pragma once

#include <QObject>

class QQuickWindow;

/// Prints how long it took from the start of the process to the first frame of the window, in
/// milliseconds, and ends the application.
class StartMeter : public QObject
{
    Q_OBJECT

public:
    explicit StartMeter(QQuickWindow* window);

private:
    void report();
};
