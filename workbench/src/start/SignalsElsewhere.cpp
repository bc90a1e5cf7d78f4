#include "start/SignalsElsewhere.h"

#include <pthread.h>

namespace workbench {

SignalsElsewhere::SignalsElsewhere() : before()
{
    sigset_t all;
    sigfillset(&all);
    static_cast<void>(pthread_sigmask(SIG_SETMASK, &all, &before));
}

SignalsElsewhere::~SignalsElsewhere()
{
    static_cast<void>(pthread_sigmask(SIG_SETMASK, &before, nullptr));
}

} // namespace workbench
