// The time of a process from its start to its end: hosts that link the library, beside hosts that
// link the same modules of Qt and a process that links neither. Beside the time that passes, the
// tables show the time of the processor, which other processes of the machine disturb less.

#include "ratiotable.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Command = std::vector<std::string>;

// Runs a program to its end, with standard error at /dev/null, and returns its processor time in
// seconds, or a negative number if it fails.
double run(const Command& command)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (error != 0 || wait4(process, &status, 0, &usage) != process || status != 0)
        return -1;
    const auto seconds = [](const timeval& time) {
        constexpr double microseconds = 1e6;
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / microseconds;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double checked(double time_s, benchmark::State& state)
{
    if (time_s < 0)
        state.SkipWithError("a process failed");
    return time_s;
}

// One row of each of two tables.
struct Row
{
    std::string name;
    Command command;
};

void addTables(const std::string& group, const std::vector<Row>& rows)
{
    for (const auto& [name, command] : rows) {
        add((group + ", time/" + name).c_str(), [command = command](benchmark::State& state) {
            for (auto _ : state)
                checked(run(command), state);
        })->UseRealTime();
    }
    for (const auto& [name, command] : rows) {
        add((group + ", processor/" + name).c_str(), [command = command](benchmark::State& state) {
            for (auto _ : state)
                state.SetIterationTime(checked(run(command), state));
        })->UseManualTime();
    }
}

} // namespace

int main(int argc, char** argv)
{
    std::string folder = std::filesystem::temp_directory_path() / "bench_startup.XXXXXX";
    if (mkdtemp(folder.data()) == nullptr)
        std::abort();
    for (const char* program : {STARTUP_LINE, STARTUP_QT_LINE}) { // makes the folders and files
        if (run({program, folder}) < 0)
            std::abort();
    }
    addTables("a process that ends at once", {{"ZelTools", {STARTUP_ZELTOOLS}},
                                              {"the same modules of Qt", {STARTUP_QT}},
                                              {"neither", {STARTUP_NEITHER}}});
    addTables("a process that logs a line",
              {{"ZelTools", {STARTUP_LINE, folder}},
               {"the same modules of Qt", {STARTUP_QT_LINE}},
               {"the same, with as many folders and files", {STARTUP_QT_LINE, folder}}});
    const int status = RatioTable::run(argc, argv);
    std::filesystem::remove_all(folder);
    return status;
}
