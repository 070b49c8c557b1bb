// The code of docs/logging.md: writes lines, in buffered delivery, and takes them to a screen.

//! [lines]
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>

void report(int device)
{
    LogFormatter(LogLevel::Warning).log(Log::Payment | Log::CanBus) << "No answer from" << device;
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuAccess) << "Service menu opened";
}
//! [lines]

//! [delivery]
#include <zeltools/logging/logmanager.h>

void chooseDelivery()
{
    LogDelivery delivery;
    delivery.mode = LogDelivery::Buffered;
    LogManager::instance()->setDelivery(delivery);
}
//! [delivery]

//! [sink]
#include <zeltools/logging/logsink.h>

#include <QTextStream>

class Screen : public LogSink
{
public:
    void write(const LogRecord& record) override // level, modules, time, thread, text
    {
        m_out << "On the screen: " << QString::fromLocal8Bit(record.text) << Qt::endl;
    }

private:
    QTextStream m_out{stdout};
};
//! [sink]

#include <zeltools/path.h>

#include <QDir>

int main()
{
    Path::instance()->init(QDir::currentPath() + QStringLiteral("/software/host"),
                           QStringLiteral("default"), QStringLiteral("default"));
    chooseDelivery();
    LogManager::initialize();
    //! [add]
    Screen screen;
    LogManager::instance()->addSink(&screen);
    //! [add]
    constexpr int device = 7;
    report(device);
    LogManager::instance()->finalizeLogFiles();
    LogManager::instance()->removeSink(&screen);
}
