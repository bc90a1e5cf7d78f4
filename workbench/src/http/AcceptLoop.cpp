#include "http/AcceptLoop.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>
#include <vector>

namespace workbench {

namespace {

int newEvent()
{
    const int event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (event < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    return event;
}

} // namespace

AcceptLoop::AcceptLoop(const LoopbackSockets& listening, std::function<void(int)> whenAccepted,
                       std::function<void()> whenTicked, std::chrono::milliseconds timeOfTick)
    : sockets(listening),
      accepted(std::move(whenAccepted)),
      ticked(std::move(whenTicked)),
      tick(timeOfTick),
      stop(newEvent())
{
    try {
        thread = std::thread([this] { run(); });
    } catch (...) {
        close(stop);
        throw;
    }
}

AcceptLoop::~AcceptLoop()
{
    const std::uint64_t one = 1;
    static_cast<void>(!write(stop, &one, sizeof one));
    thread.join();
    close(stop);
}

void AcceptLoop::run() const
{
    std::vector<pollfd> waiting = {{stop, POLLIN, 0}};
    for (const int listener : sockets.descriptors()) {
        waiting.push_back({listener, POLLIN, 0});
    }
    while (true) {
        const int ready = poll(waiting.data(), waiting.size(), static_cast<int>(tick.count()));
        ticked();
        if (ready <= 0) {
            continue;
        }
        if (waiting.front().revents != 0) {
            return;
        }
        for (const pollfd& one : waiting) {
            if (one.revents != 0) {
                acceptOne(one.fd);
            }
        }
    }
}

void AcceptLoop::acceptOne(int listener) const
{
    const int descriptor = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor >= 0) {
        const int on = 1;
        static_cast<void>(setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on));
        accepted(descriptor);
    } else if (errno == EMFILE || errno == ENFILE || errno == ENOMEM || errno == ENOBUFS) {
        constexpr int pause = 50; // milliseconds; the client waits, without a busy loop
        pollfd one{stop, POLLIN, 0};
        static_cast<void>(poll(&one, 1, pause));
    }
}

} // namespace workbench
