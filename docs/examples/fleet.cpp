// The code of docs/fleet.md: hands the lines of a program to the journal.

//! [program]
#include <zeltools/logging/journalsink.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Path::instance()->init(QCoreApplication::arguments().value(1), QStringLiteral("default"),
                           QStringLiteral("default"));
    static JournalSink journal(QStringLiteral("vending")); // lives until the process ends
    LogManager::instance()->addSink(&journal);
    LogManager::initialize();

    LogFormatter(LogLevel::Warning).log(Log::Payment) << "The coin changer is empty";

    LogManager::instance()->finalizeLogFiles();
    LogManager::instance()->removeSink(&journal);
}
//! [program]
