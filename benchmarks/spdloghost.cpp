// A host that logs by spdlog, for docs/coming-from-spdlog.md; docs/migration/logging.cpp does the
// same with this library: spdloghost FOLDER

#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

int main(int, char** argv)
{
    //! [host]
    const std::string path = std::string(argv[1]) + "/machine.log";
    const spdlog::sink_ptr screen = std::make_shared<spdlog::sinks::stderr_sink_mt>();
    const spdlog::sink_ptr file =
        std::make_shared<spdlog::sinks::rotating_file_sink_mt>(path, 1024 * 1024, 1);
    spdlog::logger roaster("Roaster", {screen, file});
    roaster.set_pattern("%d/%m/%Y %H:%M:%S:%e| %l | %v");
    roaster.set_level(spdlog::level::debug);
    roaster.flush_on(spdlog::level::trace);

    roaster.info("Roasted {} g at {} degrees", 250, 210.5);
    roaster.debug("Drum turns {} times a minute", 54);
    roaster.warn("Beans: {}", "none");
    //! [host]
}
