#include "bus/AnsweringPeer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace {

constexpr int frameSilence = 20; // milliseconds after which a serial frame is complete

void require(bool isGood, const char* what)
{
    if (!isGood) {
        throw std::runtime_error(what);
    }
}

} // namespace

AnsweringPeer::AnsweringPeer(React reaction, bool isSerial)
    : react(std::move(reaction)), serial(isSerial)
{
    require(pipe(stopPipe) == 0, "pipe");
    isSerial ? openTerminal() : listenOnLoopback();
    thread = std::thread([this] { serial ? serve(descriptor) : serveClients(); });
}

AnsweringPeer::~AnsweringPeer()
{
    close(stopPipe[1]);
    thread.join();
    close(stopPipe[0]);
    close(descriptor);
    if (terminal >= 0) {
        close(terminal);
    }
}

std::vector<Bytes> AnsweringPeer::frames() const
{
    const std::lock_guard<std::mutex> lock(access);
    return received;
}

void AnsweringPeer::listenOnLoopback()
{
    descriptor = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    require(bind(descriptor, plain, size) == 0 && listen(descriptor, 4) == 0, "listen");
    require(getsockname(descriptor, plain, &size) == 0, "getsockname");
    place = mxonline::TcpTarget{"127.0.0.1", ntohs(address.sin_port)};
}

void AnsweringPeer::openTerminal()
{
    descriptor = posix_openpt(O_RDWR | O_NOCTTY);
    require(descriptor >= 0 && grantpt(descriptor) == 0 && unlockpt(descriptor) == 0, "openpt");
    char name[64] = {};
    require(ptsname_r(descriptor, name, sizeof name) == 0, "ptsname");
    terminal = open(name, O_RDWR | O_NOCTTY);
    termios settings{};
    require(tcgetattr(terminal, &settings) == 0, "tcgetattr");
    cfmakeraw(&settings);
    require(tcsetattr(terminal, TCSANOW, &settings) == 0, "tcsetattr");
    mxonline::SerialTarget target;
    target.device = name;
    target.baud = 115200;
    place = target;
}

void AnsweringPeer::serveClients()
{
    while (waitFor(descriptor, -1)) {
        const int client = accept(descriptor, nullptr, nullptr);
        serve(client);
        close(client);
    }
}

void AnsweringPeer::serve(int client)
{
    Bytes frame;
    while (readFrame(client, frame)) {
        {
            const std::lock_guard<std::mutex> lock(access);
            received.push_back(frame);
        }
        const Reaction reaction = react(frame);
        if (serial) {
            for (const std::uint8_t& byte : reaction.answer) {
                std::this_thread::sleep_for(reaction.pause);
                static_cast<void>(!write(client, &byte, 1));
            }
        } else {
            static_cast<void>(
                send(client, reaction.answer.data(), reaction.answer.size(), MSG_NOSIGNAL));
        }
        if (reaction.closes) {
            return;
        }
    }
}

// False: the object is being destroyed, or the time is over.
bool AnsweringPeer::waitFor(int input, int milliseconds) const
{
    pollfd both[] = {{stopPipe[0], POLLIN, 0}, {input, POLLIN, 0}};
    return poll(both, 2, milliseconds) > 0 && both[0].revents == 0;
}

bool AnsweringPeer::readFrame(int client, Bytes& frame) const
{
    frame.clear();
    const auto isComplete = [this, &frame] {
        return !serial && frame.size() >= 6 &&
               frame.size() >= 6U + static_cast<unsigned>(frame[4] << 8 | frame[5]);
    };
    while (!isComplete()) {
        if (!waitFor(client, serial && !frame.empty() ? frameSilence : -1)) {
            return serial && !frame.empty();
        }
        std::uint8_t byte = 0;
        if (read(client, &byte, 1) != 1) {
            return false;
        }
        frame.push_back(byte);
    }
    return true;
}
