#pragma once

#include <QCoreApplication>
#include <QEventLoop>

/// Processes events until the condition is true. There is no deadline.
template <typename Condition>
void runLoopUntil(const Condition& isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
