#include "Interruption.h"

#include <csignal>

namespace mxtool {

namespace {

volatile std::sig_atomic_t signalsCame = 0;

extern "C" void rememberSignal(int /*number*/)
{
    signalsCame = 1;
}

void handle(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    static_cast<void>(sigaction(number, &action, nullptr));
}

} // namespace

Interruption::Interruption()
{
    signalsCame = 0;
    handle(SIGINT, rememberSignal);
    handle(SIGTERM, rememberSignal);
}

Interruption::~Interruption()
{
    handle(SIGINT, SIG_DFL);
    handle(SIGTERM, SIG_DFL);
}

bool Interruption::isRequested()
{
    return signalsCame != 0;
}

} // namespace mxtool
