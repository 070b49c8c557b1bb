// The cost of a list of time zones, which each screen that shows one asks for.

#include "ratiotable.h"
#include <zeltools/system/timezonehelper.h>

#include <QTimeZone>

#include <memory>
#include <string>
#include <vector>

#include <dirent.h>

namespace
{

const std::string s_database = "/usr/share/zoneinfo/";

std::vector<std::string> areas()
{
    std::vector<std::string> areas;
    const QStringList names = zeltools::system::TimeZoneHelper().areas();
    for (const QString& name : names)
        areas.push_back(s_database + name.toStdString());
    return areas;
}

void listZones(benchmark::State& state)
{
    for (auto _ : state) {
        if (zeltools::system::TimeZoneHelper::timeZones().size() < 300)
            state.SkipWithError("there is no time zone database");
    }
}

void walkAreas(benchmark::State& state)
{
    const std::vector<std::string> folders = areas();
    for (auto _ : state) {
        int count = 0;
        for (const std::string& folder : folders) {
            const std::unique_ptr<DIR, int (*)(DIR*)> opened(opendir(folder.c_str()), closedir);
            while (readdir(opened.get()) != nullptr)
                ++count;
        }
        benchmark::DoNotOptimize(count);
    }
}

void askForIdentifiers(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QTimeZone::availableTimeZoneIds());
}

} // namespace

int main(int argc, char** argv)
{
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("timeZones()/ZelTools", listZones);
    RegisterBenchmark("timeZones()/readdir of the areas alone", walkAreas);
    RegisterBenchmark("timeZones()/QTimeZone::availableTimeZoneIds()", askForIdentifiers);
    return RatioTable::run(argc, argv);
}
