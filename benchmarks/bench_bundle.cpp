// The time to pack 1 GB of logs, in 250 MB files: the library, tar with zstd at the same level, and
// the bare copying. The files are in the page cache. BENCH_BUNDLE_MB sets another size.

#include "ratiotable.h"
#include <zeltools/supportbundle/supportbundle.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdlib>
#include <fstream>
#include <random>

namespace
{

void writeLog(const QString& path, qint64 size_B)
{
    std::mt19937 random(1);
    std::ofstream file(path.toStdString());
    constexpr const char* levels[]{"Debug   ", "Info    ", "Warning ", "Error   "};
    char line[128];
    for (int ms = 0; file.tellp() < size_B; ms += static_cast<int>(random() % 1000)) {
        std::snprintf(line, sizeof line,
                      "15/11/2026 %02d:%02d:%02d:%03d| %s | Dispensed drink %d \"caff\xc3\xa8\" "
                      "after seconds %d\n",
                      ms / 3600000 % 24, ms / 60000 % 60, ms / 1000 % 60, ms % 1000,
                      levels[random() % 4], static_cast<int>(random() % 100000),
                      static_cast<int>(random() % 60));
        file << line;
    }
}

void addCommand(const char* name, const std::string& command)
{
    add(name,
        [command](benchmark::State& state) {
            for (auto _ : state) {
                if (std::system(command.c_str()) != 0)
                    state.SkipWithError("a process failed");
            }
        })
        ->UseRealTime()
        ->Iterations(1);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString logs = folder.filePath(QStringLiteral("logs"));
    const QString out = folder.filePath(QStringLiteral("out.tar.zst"));
    const bool hasSize = qEnvironmentVariableIsSet("BENCH_BUNDLE_MB");
    const qint64 size_MB = hasSize ? qEnvironmentVariableIntValue("BENCH_BUNDLE_MB") : 1000;
    QDir().mkdir(logs);
    for (int i = 0; i < 4; ++i)
        writeLog(logs + QStringLiteral("/zel_logs.log.%1").arg(i), size_MB * 1000 * 1000 / 4);

    add("1 GB of logs, level 3/SupportBundle",
        [&](benchmark::State& state) {
            for (auto _ : state) {
                zeltools::SupportBundle bundle;
                bundle.addMachineFolder(logs);
                if (!bundle.create(out))
                    state.SkipWithError(qPrintable(bundle.errorString()));
            }
        })
        ->UseRealTime()
        ->Iterations(1);
    const std::string in = logs.toStdString();
    const std::string archive = folder.filePath(QStringLiteral("tar.tar.zst")).toStdString();
    addCommand("1 GB of logs, level 3/tar --zstd, with sync",
               "tar --zstd -cf " + archive + " -C " + in + " . && sync " + archive);
    addCommand("1 GB of logs, level 3/copying", "cat " + in + "/* > " + archive + ".copy");
    return RatioTable::run(argc, argv);
}
