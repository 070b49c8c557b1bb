#pragma once

#include "grinder.h"

/// A grinder that only takes its time, as long as there is no other.
class TimedGrinder : public Grinder
{
    Q_OBJECT

public:
    TimedGrinder();
    void grind(int dose_g) override;
};
