// The time of whole processes that search the log files of a machine, 100 MB with predecessors:
// zelctl log, grep with the same pattern, and the bare reading.

#include "ratiotable.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace
{

struct Folder
{
    Folder()
        : path(std::filesystem::temp_directory_path() / "bench_zelctl.XXXXXX")
    {
        std::string name = path.string();
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        path = name;
    }
    ~Folder() { std::filesystem::remove_all(path); }

    std::filesystem::path path;
};

std::string stamp(int millisecond)
{
    constexpr int second = 1000;
    constexpr int minute = 60 * second;
    constexpr int hour = 60 * minute;
    char text[32];
    std::snprintf(text, sizeof text, "%02d/11/2026 %02d:%02d:%02d:%03d|",
                  1 + millisecond / (24 * hour), millisecond / hour % 24, millisecond / minute % 60,
                  millisecond / second % 60, millisecond % second);
    return text;
}

// The order of the files is that of their times, where they do not overlap.
void writeLogs(const std::filesystem::path& folder)
{
    std::mt19937 random(1);
    int general_ms = 0;
    int other_ms = 0;
    const auto write = [&](const char* name, int size, int& time_ms, auto&& text) {
        std::ofstream file(folder / name);
        while (file.tellp() < size)
            file << stamp(time_ms += static_cast<int>(random() % 1000)) << text();
    };
    constexpr const char* levels[]{"Debug   ", "Info    ", "Info    ", "Warning ", "Error   "};
    const auto general = [&] {
        return ' ' + std::string(levels[random() % 5]) + " | Dispensed drink " +
               std::to_string(random() % 100000) + " \"caff\xc3\xa8\" after seconds " +
               std::to_string(random() % 60) + '\n';
    };
    const auto event = [&] {
        return " DispensedDrinkEvent| drink " + std::to_string(random() % 100000) + '\n';
    };
    const auto ground = [&] { return std::to_string(random() % 100000) + " mg ground\n"; };
    write("zel_logs.log.1", 40'000'000, general_ms, general);
    write("zel_logs.log", 40'000'000, general_ms, general);
    write("zel_events.log", 10'000'000, other_ms, event);
    other_ms = 0;
    write("zel_grinder.log", 10'000'000, other_ms, ground);
}

void addRow(const std::string& name, const std::string& command)
{
    add(name.c_str(), [command](benchmark::State& state) {
        for (auto _ : state) {
            if (std::system((command + " >/dev/null").c_str()) != 0)
                state.SkipWithError("a process failed");
        }
    })->UseRealTime();
}

// The output of grep goes through cat: it stops at the first line if that goes to /dev/null.
void addSearch(const std::string& folder, const std::string& name, const std::string& ours,
               const std::string& grep)
{
    const std::string group = "zelctl log over 100 MB, " + name;
    addRow(group + "/ZelTools", ZELCTL_PATH " log " + folder + ' ' + ours + " | cat");
    addRow(group + "/grep", "grep -h " + grep + ' ' + folder + "/* | cat");
    addRow(group + "/reading alone", "cat " + folder + "/*");
}

} // namespace

int main(int argc, char** argv)
{
    const Folder folder;
    writeLogs(folder.path);
    const std::string path = folder.path.string();
    addSearch(path, "a text", "--grep 'drink 4242 '", "-F 'drink 4242 '");
    addSearch(path, "an expression", "--grep 'drink 4[0-9]+2 .*seconds 39'",
              "-E 'drink 4[0-9]+2 .*seconds 39'");
    addSearch(path, "an expression without a text", "--grep '[0-9]{5} .*[0-4]9$'",
              "-E '[0-9]{5} .*[0-4]9$'");
    addSearch(path, "a level", "--level error", "-E '^.{23}\\| (Error   |Critical) \\|'");
    return RatioTable::run(argc, argv);
}
