// Parameter images and Modbus registers read back, as `mxtool config --decode` does. Words: 'm' for
// Modbus, else the raw image; then the bytes to decode. Without words the module's own bytes.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <mxmodule/Assignment.h>
#include <mxmodule/Module.h>

#include <cstdlib>

namespace {

using mxmodule::Configuration;
using mxmodule::Fieldbus;
using mxmodule::Module;

// Writes a configuration in every output format.
void show(const Configuration& configuration)
{
    configuration.text();
    configuration.csv();
    configuration.valuesFile();
    const auto values = mxmodule::readValues(configuration.json(), "words.json");
    if (values.image != configuration.image()) {
        std::abort(); // the JSON must be readable
    }
}

void decode(const Module& module, const std::vector<char>& bytes, Fieldbus fieldbus)
{
    try {
        const Configuration decoded = module.decode(bytes, fieldbus, "words");
        if (decoded.bytes() != bytes) {
            std::abort(); // the image must give the same bytes again
        }
        show(module.configuration(decoded.image(), Fieldbus::Raw));
        show(decoded);
    } catch (const mxmodule::Failure&) {
        // a valid result
    }
}

void decodeOwnBytes(const Module& module)
{
    decode(module, module.defaultImage(), Fieldbus::Raw);
    decode(module, module.defaults(Fieldbus::Modbus).bytes(), Fieldbus::Modbus);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    fuzz::FuzzInput input(data, size);
    try {
        const Module module = Module::fromBytes(input.file);
        if (input.words.empty()) {
            decodeOwnBytes(module);
            return 0;
        }
        const Fieldbus fieldbus = input.words.takeByte() == 'm' ? Fieldbus::Modbus : Fieldbus::Raw;
        const auto bytes = input.words.takeRest();
        decode(module, {bytes.begin(), bytes.end()}, fieldbus);
    } catch (const mxmodule::Failure&) {
        // a valid result
    }
    return 0;
}
