// A host that sets parameters of a module by their names and writes the Modbus registers of the
// module to a Modbus TCP server on this machine. Findings say what was wrong with a value.

#include <modbus.h>
#include <mxmodule/Module.h>
#include <mxmodule/WantedValues.h>

#include <algorithm>
#include <cerrno>
#include <iomanip>
#include <iostream>

namespace {

using Registers = std::vector<std::uint16_t>;

void report(const std::vector<mxmodule::Finding>& findings)
{
    for (const mxmodule::Finding& finding : findings) {
        std::cerr << mxmodule::severityName(finding.severity) << ": " << finding.place << ": "
                  << finding.text << '\n';
        if (!finding.hint.empty()) {
            std::cerr << "hint: " << finding.hint << '\n';
        }
    }
}

// Returns the registers of the module in the file at `path` with the values in `words`, each
// "NAME=VALUE"; none after an error.
Registers configured(const std::string& path, const std::vector<std::string>& words)
{
    const auto module = mxmodule::Module::fromFile(path);
    mxmodule::WantedValues wanted(module);
    wanted.add(words, "argument", mxmodule::ValueCheck::Full);
    const mxmodule::Composition made = module.compose(wanted.assignments());
    report(made.findings);
    if (made.noRegisters) {
        report({*made.noRegisters});
    }
    return made.registers;
}

void check(int result)
{
    if (result == -1) {
        throw std::runtime_error(std::string("Modbus: ") + modbus_strerror(errno));
    }
}

void write(int port, const Registers& registers)
{
    const std::unique_ptr<modbus_t, decltype(&modbus_free)> bus(modbus_new_tcp("127.0.0.1", port),
                                                                &modbus_free);
    check(modbus_connect(bus.get()));
    const int count = static_cast<int>(registers.size());
    for (int first = 0; first < count; first += MODBUS_MAX_WRITE_REGISTERS) {
        const int size = std::min(count - first, MODBUS_MAX_WRITE_REGISTERS);
        check(modbus_write_registers(bus.get(), first, size, registers.data() + first));
    }
    modbus_close(bus.get());
}

void print(const Registers& registers)
{
    std::cout << std::hex << std::setfill('0');
    for (const std::uint16_t word : registers) {
        std::cout << std::setw(4) << word << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cerr << "Usage: configure MX-FILE PORT NAME=VALUE...\n";
        return 2;
    }
    try {
        const Registers registers = configured(argv[1], {argv + 3, argv + argc});
        if (registers.empty()) {
            std::cerr << argv[1] << ": nothing is written\n";
            return 1;
        }
        write(std::stoi(argv[2]), registers);
        print(registers);
        return 0;
    } catch (const mxmodule::Failure& failure) {
        report(failure.findings());
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
    }
    return 1;
}
