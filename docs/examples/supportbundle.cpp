// The code of docs/support-bundle.md: packs the facts about this machine.

#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

//! [bundle]
#include <zeltools/supportbundle/supportbundle.h>

#include <QCoreApplication>
#include <QTextStream>

void packBundle(const QString& path)
{
    auto* const bundle = new zeltools::SupportBundle(qApp);
    bundle->addThisMachine();
    QObject::connect(bundle, &zeltools::SupportBundle::finished, bundle,
                     [bundle, path](bool isDone) {
                         QTextStream(stdout) << (isDone ? path : bundle->errorString()) << Qt::endl;
                         bundle->deleteLater();
                         QCoreApplication::exit(isDone ? 0 : 1);
                     });
    bundle->start(path); // in a thread of its own; cancel() ends it
}
//! [bundle]

#include <QDir>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Path::instance()->init(QDir::currentPath() + QStringLiteral("/software/host"),
                           QStringLiteral("default"), QStringLiteral("default"));
    LogManager::initialize();
    LogManager::instance()->enableLogToFile(true);
    LogFormatter(LogLevel::Warning).log(Log::Payment) << "The coin changer is empty";
    packBundle(QDir::currentPath() + QStringLiteral("/machine-4711.tar.gz"));
    return QCoreApplication::exec();
}
