// Step 2: switches and their file. Run it with both: step2 /tmp/machine step2/environment

#include "machine.h"

#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>

#include <QCoreApplication>

//! [main]
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Machine machine(arguments.value(1), arguments.value(2));

    LogFormatter(LogLevel::Info).log(Log::Beverage)
        << "A cup takes" << switches::dose_g() << "g of coffee";
    LogFormatter(LogLevel::Debug).log(Log::Beverage) << "This line is on now";
}
//! [main]
