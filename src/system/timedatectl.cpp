#include "system/timedatectl_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "timedprocess.h"

#include <sys/timex.h>

namespace zeltools::system
{

std::optional<bool> timeSyncState(std::chrono::milliseconds timeLimit)
{
    constexpr int mostOutput_B = 65536; // a hundred times what it prints
    QByteArray output;
    TimedProcess process([] {});
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        output += process.readAllStandardOutput();
        if (output.size() > mostOutput_B)
            process.kill();
    });
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("timedatectl"), {QStringLiteral("status")}, QIODevice::ReadOnly);
    QString failure = process.waitForEnd(timeLimit);
    if (output.size() > mostOutput_B)
        failure = QStringLiteral("it prints too much");
    if (failure.isEmpty())
        return output.contains("NTP service: active");
    LogFormatter(LogLevel::Error).log(Log::SystemPackagesManager)
        << "bool zeltools::system::PackagesManager::ntpEnabled() const"
        << "Failed to run timedatectl:" << failure;
    return std::nullopt;
}

// The status flag of the kernel does not serve here: a time service may leave it set, to keep the
// kernel from the hardware clock.
bool isClockKept()
{
    using namespace std::chrono_literals;
    constexpr std::chrono::microseconds unknownError = 16s; // The kernel counts the error up to it.
    timex clock{};
    return ::adjtimex(&clock) >= 0 && std::chrono::microseconds(clock.maxerror) < unknownError;
}

} // namespace zeltools::system
