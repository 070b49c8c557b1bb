#include "system/ntpstate_p.h"

#include "filereplacement.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "system.h"

#include <QFile>
#include <QFileInfo>

namespace zeltools::system::service
{

NtpState::NtpState(const QString& file)
    : m_file(file)
{
}

bool NtpState::isOn() const
{
    return load() == "1";
}

// Returns an empty text if there is no file. save() writes no line feed, so that a state with one
// comes from elsewhere and counts as off.
QByteArray NtpState::load() const
{
    QFile file(m_file);
    return file.open(QIODevice::ReadOnly) ? file.readLine() : QByteArray();
}

void NtpState::save(bool isOn) const
{
    const QByteArray state = isOn ? "1" : "0";
    if (load() == state || !System::folderExists(QFileInfo(m_file).path()))
        return;
    FileReplacement replacement(m_file);
    if (replacement.replace(state))
        return;
    const QString error =
        replacement.needsWritingInPlace() ? writeInPlace(state) : replacement.errorString();
    if (!error.isEmpty())
        LogFormatter(LogLevel::Warning).log(Log::Network)
            << "void zeltools::system::service::Ntp::save() const" << error;
}

// For a folder that cannot take a second file. Returns an empty text if the state is written or the
// file cannot be opened either, otherwise the reason.
QString NtpState::writeInPlace(const QByteArray& state) const
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadWrite))
        return {};
    if (file.write(state) != state.size() || !file.flush() || !file.resize(state.size()))
        return file.errorString();
    System::syncFile(file);
    return {};
}

} // namespace zeltools::system::service
