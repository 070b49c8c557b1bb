#pragma once

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/dmesg/dmesg.h>
#include <zeltools/folderlistmodel.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/simulationinterface/simulationinterface.h>
#include <zeltools/statemachine/eventgrouphandler.h>
#include <zeltools/statemachine/statemachine.h>
#include <zeltools/system/datetimemanager.h>
#include <zeltools/system/packagesmanager.h>
#include <zeltools/system/servicemanager.h>
#include <zeltools/system/timezonehelper.h>

#include <zeltools/zeltools_export.h>

#include <qqml.h>

/// The types of other subsystems that QML may name. They are registered from here, so that these
/// subsystems need no QML.
namespace zeltools::quick
{

struct ZELTOOLS_EXPORT LogManagerForeign
{
    Q_GADGET
    QML_FOREIGN(LogManager)
    QML_NAMED_ELEMENT(LogManager)
    QML_UNCREATABLE("The only object is Library.logManager.")
};

struct ZELTOOLS_EXPORT DmesgForeign
{
    Q_GADGET
    QML_FOREIGN(dmesg::Dmesg)
    QML_NAMED_ELEMENT(Dmesg)
    QML_UNCREATABLE("The only object is Library.kernelLog.")
};

struct ZELTOOLS_EXPORT MonitorForeign
{
    Q_GADGET
    QML_FOREIGN(monitored_threads::Monitor)
    QML_NAMED_ELEMENT(Monitor)
    QML_UNCREATABLE("The only object is Library.monitor.")
};

struct ZELTOOLS_EXPORT PackagesManagerForeign
{
    Q_GADGET
    QML_FOREIGN(zeltools::system::PackagesManager)
    QML_NAMED_ELEMENT(PackagesManager)
    QML_UNCREATABLE("The only object is Library.packages.")
};

struct ZELTOOLS_EXPORT ServiceManagerForeign
{
    Q_GADGET
    QML_FOREIGN(zeltools::system::ServiceManager)
    QML_NAMED_ELEMENT(ServiceManager)
    QML_UNCREATABLE("The only object is Library.services.")
};

struct ZELTOOLS_EXPORT DateTimeManagerForeign
{
    Q_GADGET
    QML_FOREIGN(zeltools::system::DateTimeManager)
    QML_NAMED_ELEMENT(DateTimeManager)
    QML_UNCREATABLE("An application has its own. A screen uses Clock.")
};

struct ZELTOOLS_EXPORT TimeZoneHelperForeign
{
    Q_GADGET
    QML_FOREIGN(zeltools::system::TimeZoneHelper)
    QML_NAMED_ELEMENT(TimeZoneHelper)
};

struct ZELTOOLS_EXPORT FolderListModelForeign
{
    Q_GADGET
    QML_FOREIGN(tools::datamodel::FolderListModel)
    QML_NAMED_ELEMENT(FolderListModel)
};

struct ZELTOOLS_EXPORT DeclarativeStateMachineForeign
{
    Q_GADGET
    QML_FOREIGN(zeltools::declarativestatemachine::DeclarativeStateMachine)
    QML_NAMED_ELEMENT(DeclarativeStateMachine)
    QML_UNCREATABLE("The application creates its state machines.")
};

struct ZELTOOLS_EXPORT StateMachineForeign
{
    Q_GADGET
    QML_FOREIGN(StateMachine)
    QML_NAMED_ELEMENT(StateMachine)
    QML_UNCREATABLE("The application creates its state machines.")
};

struct ZELTOOLS_EXPORT EventGroupHandlerForeign
{
    Q_GADGET
    QML_FOREIGN(tools::EventGroupHandler)
    QML_NAMED_ELEMENT(EventGroupHandler)
    QML_UNCREATABLE("The application creates its event groups.")
};

struct ZELTOOLS_EXPORT SimulationInterfaceForeign
{
    Q_GADGET
    QML_FOREIGN(zeltools::simulationinterface::SimulationInterface)
    QML_NAMED_ELEMENT(SimulationInterface)
    QML_UNCREATABLE("The application creates its links.")
};

} // namespace zeltools::quick
