// LTTng-UST under bench_stall: the tracepoint takes the five items of the line.

#include "stallevent.h"
#include "stallthreads.h"

#include <signal.h>
#include <sys/prctl.h>

int main()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    stall::run([] {
        lttng_ust_tracepoint(stall, line, "Dispensed drink", 42, "espresso", "after seconds", 25);
    });
    std::printf("\n"); // The session daemon knows what was lost.
    return 0;
}
