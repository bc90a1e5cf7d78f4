#include "Interruption.h"

#include <algorithm>
#include <csignal>
#include <ctime>

namespace mxtool {

namespace {

volatile std::sig_atomic_t signalsCame = 0;

extern "C" void rememberSignal(int /*number*/)
{
    signalsCame = 1;
}

// A signal between a look at `signalsCame` and a wait does not end that wait.
constexpr std::chrono::milliseconds longestWait{100};

void waitFor(std::chrono::nanoseconds time)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    timespec wait = {};
    wait.tv_sec = seconds.count();
    wait.tv_nsec = (time - seconds).count();
    nanosleep(&wait, nullptr);
}

// A signal that is ignored, as SIGHUP by nohup, stays so.
void handle(int number, void (*handler)(int))
{
    struct sigaction action = {};
    if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        return;
    }
    action = {};
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
    handle(SIGHUP, rememberSignal);
}

Interruption::~Interruption()
{
    handle(SIGINT, SIG_DFL);
    handle(SIGTERM, SIG_DFL);
    handle(SIGHUP, SIG_DFL);
}

bool Interruption::isRequested()
{
    return signalsCame != 0;
}

bool Interruption::isRequestedUntil(std::chrono::steady_clock::time_point time)
{
    while (!isRequested()) {
        const std::chrono::nanoseconds left = time - std::chrono::steady_clock::now();
        if (left <= left.zero()) {
            return false;
        }
        waitFor(std::min<std::chrono::nanoseconds>(left, longestWait));
    }
    return true;
}

} // namespace mxtool
