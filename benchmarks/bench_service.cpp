// The time from the start of a process to its first frame: the service screen of the demo machine,
// beside a window with one rectangle. Without a display, by the software renderer.

#include "ratiotable.h"

#include <cstdlib>

#include <stdio.h>

namespace
{

// The program prints the time in milliseconds.
void addRow(const std::string& name, const std::string& command)
{
    add(name.c_str(),
        [command](benchmark::State& state) {
            constexpr double second_ms = 1000;
            for (auto _ : state) {
                FILE* const output = popen((command + " 2>/dev/null").c_str(), "r");
                double time_ms = 0;
                if (output == nullptr || std::fscanf(output, "%lf", &time_ms) != 1)
                    state.SkipWithError("a process failed");
                if (output != nullptr)
                    pclose(output);
                state.SetIterationTime(time_ms / second_ms);
            }
        })
        ->UseManualTime()
        ->Iterations(1);
}

} // namespace

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_QUICK_BACKEND", "software", 1);
    const std::string group = "from the start to the first frame";
    addRow(group + "/ZelTools, the service screen", SERVICE_PATH " --measure-start");
    addRow(group + "/QML, an empty window", EMPTYWINDOW_PATH);
    return RatioTable::run(argc, argv);
}
