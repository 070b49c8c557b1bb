#pragma once

#include "grinder.h"

#include <zeltools/envvar/envvarstring.h>
#include <zeltools/simulationinterface/simulationinterface.h>
#include <zeltools/statemachine/eventgrouphandler.h>

#include <memory>

namespace switches
{
extern zeltools::envvar::EnvVarString grinder;
}

//! [class]
/// A grinder behind a link: it is asked "grind 7" and answers "ground", or something else if it has
/// not done it.
class LinkedGrinder : public Grinder
{
    Q_OBJECT

public:
    /// An invalid address gives a grinder that never becomes ready.
    explicit LinkedGrinder(const QString& address);
    ~LinkedGrinder() override;
    void grind(int dose_g) override;

private:
    std::unique_ptr<zeltools::simulationinterface::SimulationInterface> m_link;
    tools::EventGroupHandler m_request;
};
//! [class]

//! [make]
/// The grinder that the switch GRINDER names by its address, or one that only takes its time.
std::unique_ptr<Grinder> makeGrinder();
//! [make]
