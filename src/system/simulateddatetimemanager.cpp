#include "system/simulateddatetimemanager.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/zelassert.h"
#include "simulationinterface/createinterface.h"

#include <QLocale>

#include <cstdlib>

namespace zeltools::system
{

using simulationinterface::SimulationInterface;

SimulatedDateTimeManager::SimulatedDateTimeManager(const QString& address, QObject* parent)
    : DateTimeManager(nullptr, parent)
    , m_interface(simulationinterface::createInterface(address, this))
{
    if (m_interface == nullptr) {
        const QString what =
            QStringLiteral("Failed creating simulation interface, address %1").arg(address);
        printFatalAssertMsg("m_interface != nullptr", what.toLocal8Bit().constData(), __FILE__,
                            __LINE__);
        std::exit(1);
    }
    connect(m_interface, &SimulationInterface::dataReceived, this,
            &SimulatedDateTimeManager::processIncomingData);
    connect(this, &DateTimeManager::writeDateTimeToRtc, this,
            &SimulatedDateTimeManager::sendDateTime);
    setCurrentDateTime(QDateTime::currentDateTime());
}

SimulatedDateTimeManager::~SimulatedDateTimeManager() = default;

QString SimulatedDateTimeManager::dateFormat()
{
    return QStringLiteral("yyyy/MM/dd");
}

QString SimulatedDateTimeManager::timeFormat()
{
    return QStringLiteral("hh:mm:ss");
}

QString SimulatedDateTimeManager::dateTimeFormat()
{
    return QStringLiteral("%1 %2").arg(dateFormat(), timeFormat());
}

QDateTime SimulatedDateTimeManager::currentDateTime() const
{
    return m_base.addMSecs(m_sinceBase.elapsed());
}

void SimulatedDateTimeManager::setCurrentDateTime(const QDateTime& dateTime)
{
    m_base = dateTime;
    m_sinceBase.start();
    restartMinuteTimer();
    Q_EMIT dateTimeChanged();
}

void SimulatedDateTimeManager::sendDateTime(const QDateTime& dateTime)
{
    if (m_interface->connected())
        m_interface->write(QLocale::c().toString(dateTime, dateTimeFormat()).toLatin1());
}

void SimulatedDateTimeManager::processIncomingData(const QByteArray& data)
{
    LogFormatter(LogLevel::Info).log(Log::Simulation)
        << "void zeltools::system::SimulatedDateTimeManager::processIncomingData(const "
           "QByteArray&)"
        << "Received date/time" << data;
    const uint size = qstrnlen(data.constData(), static_cast<uint>(data.size()));
    const QString text = QString::fromLatin1(data.constData(), static_cast<int>(size));
    setCurrentDateTime(QDateTime::fromString(text, dateTimeFormat()));
}

} // namespace zeltools::system
