// A host with headers and classes that are called like the library's. Each keeps to its own: the
// program saves a file and then ends with status 1, because the library finds that its own Path was
// never set up.
#include <logging/log.h>
#include <path.h>
#include <system.h>
#include <zeltools/keyvaluefile.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logmanager.h>

#include <cstdlib>

bool Path::exists()
{
    std::abort();
}

void System::syncFile(QFile&)
{
    std::abort();
}

int main(int, char** argv)
{
    static_assert(isHostLog);
    if (zeltools::keyvaluefile::save(QLatin1String(argv[1]),
                                     {{Log::Payment.debugEnvVarName(), QLatin1String("1")}}))
        LogManager::initialize();
}
