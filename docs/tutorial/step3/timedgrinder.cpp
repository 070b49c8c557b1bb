#include "timedgrinder.h"

#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

TimedGrinder::TimedGrinder()
{
    QTimer::singleShot(0, this, &Grinder::ready);
}

void TimedGrinder::grind(int dose_g)
{
    QTimer::singleShot(dose_g * 2ms, this, &Grinder::ground);
}
