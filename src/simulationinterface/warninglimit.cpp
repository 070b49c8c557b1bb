#include "simulationinterface/warninglimit_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace zeltools::simulationinterface
{

using namespace std::chrono_literals;

namespace
{

constexpr int maximumWarnings = 10; // in a minute

} // namespace

WarningLimit::WarningLimit(const char* cause, QObject* parent)
    : QObject(parent)
    , m_cause(cause)
{
}

WarningLimit::~WarningLimit()
{
    endMinute();
}

bool WarningLimit::mayWarn()
{
    if (++m_count == 1)
        QTimer::singleShot(1min, this, &WarningLimit::endMinute);
    return m_count <= maximumWarnings;
}

void WarningLimit::endMinute()
{
    const int count = std::exchange(m_count, 0);
    if (count > maximumWarnings)
        LogFormatter(LogLevel::Warning).log(Log::Simulation)
            << m_cause << "caused" << count - maximumWarnings << "more warnings";
}

} // namespace zeltools::simulationinterface
