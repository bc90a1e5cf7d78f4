// A host that configures a module, writes the Modbus registers of its parameters to a Modbus TCP
// server on this machine, and reads them back.

#include <devices/parser/mx/ByteReaders.h>
#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/LoadFile.h>
#include <devices/parser/mx/Parser_kv38.h>
#include <modbus.h>

#include <cerrno>
#include <iostream>

namespace {

using Registers = std::vector<std::uint16_t>;

// The user's copy of `device`; its parameters called `name` have the value `value`.
datamodel::ParamDevice withValue(const datamodel::Device& device, const std::string& name,
                                 const std::string& value)
{
    datamodel::ParamDevice copy;
    copy.deviceTypeId = device.deviceTypeId;
    for (const auto& attribute : device.attributes) {
        const auto* parameter = dynamic_cast<const datamodel::Parameter*>(attribute.get());
        if (parameter != nullptr && parameter->name == name) {
            auto changed = std::make_shared<datamodel::Parameter>(*parameter);
            changed->value = value;
            copy.attributes.push_back(changed);
        }
    }
    return copy;
}

// Two bytes make a register, the high byte first.
Registers registersOf(const std::vector<char>& bytes)
{
    Registers registers;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto* const word = reinterpret_cast<const unsigned char*>(&bytes[i]);
        registers.push_back(devices::parser::mx::readU16BE(word));
    }
    return registers;
}

void check(int result)
{
    if (result == -1) {
        throw std::runtime_error(std::string("Modbus: ") + modbus_strerror(errno));
    }
}

// Writes `registers` to the server and reads them back.
Registers writeAndReadBack(int port, const Registers& registers)
{
    const std::unique_ptr<modbus_t, decltype(&modbus_free)> bus(modbus_new_tcp("127.0.0.1", port),
                                                                &modbus_free);
    const int count = static_cast<int>(registers.size()); // 123 at most in one request
    check(modbus_connect(bus.get()));
    check(modbus_write_registers(bus.get(), 0, count, registers.data()));
    Registers held(registers.size());
    check(modbus_read_registers(bus.get(), 0, count, held.data()));
    modbus_close(bus.get());
    return held;
}

void configure(const std::string& path, const std::string& name, const std::string& value, int port)
{
    std::vector<char> mxData;
    devices::parser::mx::loadFile(path, mxData);
    devices::parser::mx::Parser_kv38 parser;
    const auto device = parser.parse(mxData, nullptr, 0, 0);
    auto copy = withValue(*device, name, value);
    constexpr auto modbus = devices::parser::FieldbusType::Modbus;
    const auto bytes = parser.getCalculatedRawConfig(modbus, mxData, device.get(), &copy);
    const Registers registers = registersOf(*bytes);
    if (writeAndReadBack(port, registers) != registers) {
        throw std::runtime_error("the server holds other registers than were written");
    }
    for (const std::uint16_t word : registers) {
        std::cout << devices::parser::mx::u16AsHex(word) << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::cerr << "Usage: modbus MX-FILE PARAMETER VALUE PORT\n";
        return 2;
    }
    try {
        configure(argv[1], argv[2], argv[3], std::stoi(argv[4]));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
}
