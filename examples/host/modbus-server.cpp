// A Modbus TCP server on this machine with 256 registers. It prints the port that it listens on and
// serves one client until the client disconnects. Then it compares its first registers with the
// expected ones, hexadecimal numbers, if there are any.

#include <modbus.h>

#include <arpa/inet.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

namespace {

constexpr int registerCount = 256;

int failed(const char* what)
{
    std::cerr << "modbus-server: " << what << ": " << modbus_strerror(errno) << '\n';
    return 1;
}

int portOf(int listener)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void serve(modbus_t* bus, modbus_mapping_t* registers)
{
    unsigned char request[MODBUS_TCP_MAX_ADU_LENGTH];
    for (int size = 0; size != -1; size = modbus_receive(bus, request)) {
        if (size > 0) {
            modbus_reply(bus, request, size, registers);
        }
    }
}

bool areExpected(const modbus_mapping_t& registers, int count, char** expected)
{
    bool same = count <= registerCount;
    for (int i = 0; i < count && same; ++i) {
        const std::uint16_t found = registers.tab_registers[i];
        same = found == std::stoul(expected[i], nullptr, 16);
        if (!same) {
            std::cerr << "modbus-server: register " << i << " contains " << std::hex << found
                      << ", expected " << expected[i] << '\n';
        }
    }
    return same;
}

} // namespace

int main(int argc, char** argv)
{
    const std::unique_ptr<modbus_t, decltype(&modbus_free)> bus(modbus_new_tcp("127.0.0.1", 0),
                                                                &modbus_free);
    const std::unique_ptr<modbus_mapping_t, decltype(&modbus_mapping_free)> registers(
        modbus_mapping_new(0, 0, registerCount, 0), &modbus_mapping_free);
    if (!bus || !registers) {
        return failed("no memory");
    }
    int listener = modbus_tcp_listen(bus.get(), 1);
    if (listener == -1) {
        return failed("cannot listen");
    }
    std::cout << portOf(listener) << std::endl;
    if (modbus_tcp_accept(bus.get(), &listener) == -1) {
        return failed("no client");
    }
    serve(bus.get(), registers.get());
    modbus_close(bus.get());
    close(listener);
    return areExpected(*registers, argc - 1, argv + 1) ? 0 : 1;
}
