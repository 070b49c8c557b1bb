// The cost of the switches: when the library is loaded, when one is asked, when a file is read.

#include "ratiotable.h"
#include <zeltools/envvar/envvars.h>
#include <zeltools/envvar/envvarstore.h>
#include <zeltools/keyvaluefile.h>

#include <QFile>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <random>
#include <vector>

using namespace zeltools::envvar;

namespace
{

// The whole catalogue once more, into a store that is empty as when the library is loaded.
void constructCatalogue(benchmark::State& state)
{
    EnvVarStore& store = EnvVarStore::instance();
    const QVector<EnvVar*> catalogue = store.vars();
    struct Row
    {
        QByteArray name;
        QByteArray description;
        const EnvVar* var;
    };
    std::vector<Row> rows;
    for (EnvVar* var : catalogue) {
        rows.push_back({var->name().toLatin1(), var->description().toLatin1(), var});
        store.removeEnvVar(var);
    }
    std::vector<std::unique_ptr<EnvVar>> made;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        for (const auto& [name, description, var] : rows) {
            const char* const defined =
                var->stringValueOpt(EnvVar::Defines) ? "1" : name.constData();
            if (var->type() == Boolean)
                made.push_back(std::make_unique<EnvVarBool>(name, description, var->category(),
                                                            var->flags(), defined));
            else
                made.push_back(std::make_unique<EnvVarString>(name, description, var->category(),
                                                              var->flags(), defined));
        }
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count());
        for (const auto& var : made)
            store.removeEnvVar(var.get());
        made.clear();
    }
    for (EnvVar* var : catalogue)
        store.addEnvVar(var);
}

template <typename LookUp>
void lookUpEach(benchmark::State& state, LookUp&& lookUp)
{
    std::vector<QByteArray> names;
    for (const EnvVar* var : EnvVarStore::instance().vars())
        names.push_back(var->name().toLatin1());
    repeat(state, [&] {
        for (const QByteArray& name : names)
            benchmark::DoNotOptimize(lookUp(name));
    });
}

QString fileOf(int lines, bool isSorted)
{
    static const QTemporaryDir folder;
    std::vector<QByteArray> content;
    for (int i = 0; i < lines; ++i)
        content.push_back("PAYMENT_TERMINAL_" + QByteArray::number(1000000 + i) + "=value " +
                          QByteArray::number(i * 7) + "\n");
    if (!isSorted)
        std::shuffle(content.begin(), content.end(), std::mt19937(1));
    QFile file(folder.filePath(QStringLiteral("%1-%2").arg(lines).arg(isSorted)));
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    for (const QByteArray& line : content)
        file.write(line);
    return file.fileName();
}

void loadFile(benchmark::State& state, int lines, bool isSorted)
{
    const QString path = fileOf(lines, isSorted);
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const auto map = zeltools::keyvaluefile::load(path, true);
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count());
        if (map->size() != lines)
            state.SkipWithError("lines are missing");
    }
}

void countLineFeeds(benchmark::State& state, int lines)
{
    const QString path = fileOf(lines, true);
    repeat(state, [&] {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(file.readAll().count('\n'));
    });
}

void addAll()
{
    add("Asking a Boolean switch/ZelTools",
        [](auto& s) { repeat(s, [] { benchmark::DoNotOptimize(EnvVars::CanBusSimulation()); }); });
    add("Asking a Boolean switch/std::atomic<bool>", [](auto& s) {
        std::atomic<bool> value{true};
        benchmark::DoNotOptimize(&value);
        repeat(s, [&] { benchmark::DoNotOptimize(value.load()); });
    });
    add("Asking a Boolean switch/QMap look-up and comparison", [](auto& s) {
        QMap<EnvVar::ValueType, QString> values{{EnvVar::Env, QStringLiteral("1")}};
        benchmark::DoNotOptimize(&values);
        repeat(s,
               [&] { benchmark::DoNotOptimize(values.value(EnvVar::Env) == QLatin1String("1")); });
    });

    add("Constructing the 96 switches/ZelTools", constructCatalogue)->UseManualTime();
    add("Constructing the 96 switches/a look-up in the environment for each",
        [](auto& s) { lookUpEach(s, [](const QByteArray& name) { return qgetenv(name); }); });
    add("Constructing the 96 switches/a copy of the environment for each", [](auto& s) {
        lookUpEach(s, [](const QByteArray& name) {
            return QProcessEnvironment::systemEnvironment().contains(QString::fromLatin1(name));
        });
    });

    const auto addLoad = [](const char* name, int lines, bool isSorted) {
        add(name, [=](auto& s) { loadFile(s, lines, isSorted); })->UseManualTime();
    };
    addLoad("Loading 100000 lines, 3.8 MB/ZelTools, as save() writes them", 100000, true);
    addLoad("Loading 100000 lines, 3.8 MB/ZelTools, in random order", 100000, false);
    addLoad("Loading 100000 lines, 3.8 MB/ZelTools, half the lines", 50000, true);
    add("Loading 100000 lines, 3.8 MB/reading the file and counting line feeds",
        [](auto& s) { countLineFeeds(s, 100000); });
}

} // namespace

int main(int argc, char** argv)
{
    addAll();
    return RatioTable::run(argc, argv);
}
