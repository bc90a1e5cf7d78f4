// Values set by name in the parameter image of a module, as `mxtool config --set` does. Words: 'f'
// to check numbers only; 'b', a count and as many bytes, the image to write into; then a line per
// value: "NAME=VALUE", or '@', a byte that selects the parameter, and the value. Without words
// every parameter is set to the value that it has.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <mxmodule/Module.h>
#include <mxmodule/WantedValues.h>

#include <algorithm>

namespace {

using fuzz::require;
using mxmodule::Assignment;
using mxmodule::Composition;
using mxmodule::Module;
using mxmodule::Parameter;

using Assignments = std::vector<Assignment>;

// The value of `parameter` in a form that has one meaning.
std::string valueOf(const Parameter& parameter)
{
    return parameter.hasOptions ? "#" + parameter.value : parameter.value;
}

Assignments ownValues(const Module& module)
{
    Assignments all;
    for (const Parameter& parameter : module.parameters()) {
        if (!parameter.stored.empty()) {
            all.push_back({"#" + parameter.id, valueOf(parameter)});
        }
    }
    return all;
}

Assignments chosenValues(const Module& module, fuzz::Words& words, mxmodule::ValueCheck check)
{
    const auto parameters = module.parameters();
    mxmodule::WantedValues wanted(module);
    Assignments all;
    while (!words.empty()) {
        const std::string line = words.takeLine();
        if (line.size() < 2 || line[0] != '@' || parameters.empty()) {
            wanted.add({line}, "words", check);
            continue;
        }
        const std::size_t chosen = static_cast<unsigned char>(line[1]) % parameters.size();
        all.push_back({parameters[chosen].callName, line.substr(2)});
    }
    all.insert(all.end(), wanted.assignments().begin(), wanted.assignments().end());
    return all;
}

// The bits of the parameters that are set, as a mask for each byte of the image.
std::vector<unsigned> bitsOf(const Assignments& assignments, const Module& module, std::size_t size)
{
    std::vector<unsigned> mask(size);
    const auto parameters = module.parameters();
    for (const Assignment& one : assignments) {
        const auto positions = module.parametersCalled(one.name);
        require(positions.size() == 1);
        const mxmodule::ImagePlace& place = parameters[positions.front()].place;
        for (std::size_t i = 0; i < place.bytes && place.byte + i < size; ++i) {
            mask[place.byte + i] |=
                place.bitLength == 0 ? 0xFFU : ((1U << place.bitLength) - 1) << place.bitOffset;
        }
    }
    return mask;
}

void requireOtherBitsKept(const Module& module, const Assignments& assignments,
                          const std::vector<char>& before, const std::vector<char>& after)
{
    const auto mask = bitsOf(assignments, module, before.size());
    require(after.size() == before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        require(((static_cast<unsigned char>(before[i]) ^ static_cast<unsigned char>(after[i])) &
                 ~mask[i]) == 0);
    }
}

// Digits are the number itself where a parameter has neither options nor a conversion.
bool isPlainNumber(const std::string& value)
{
    return value == "0" || (!value.empty() && value[0] != '0' &&
                            value.find_first_not_of("0123456789") == std::string::npos);
}

void requireValues(const Module& module, const Assignments& assignments,
                   const std::vector<char>& image, mxmodule::ValueCheck check)
{
    const auto found = module.configuration(image, mxmodule::Fieldbus::Raw).parameters();
    for (const Assignment& one : assignments) {
        const Parameter& parameter = found[module.parametersCalled(one.name).front()];
        require(!parameter.stored.empty());
        if (!parameter.hasOptions && !parameter.isPhysical && isPlainNumber(one.value)) {
            require(parameter.stored == one.value);
        }
    }
    mxmodule::ComposeOptions again;
    again.check = check;
    again.image = image;
    require(module.compose(assignments, again).image == image); // they are there already
}

void requireResult(const Module& module, const Assignments& assignments,
                   const mxmodule::ComposeOptions& options)
{
    const Composition composition = module.compose(assignments, options);
    const std::vector<char>& base = options.image ? *options.image : module.defaultImage();
    if (!composition.ok()) {
        require(composition.image.empty() && composition.registers.empty());
        return;
    }
    requireOtherBitsKept(module, assignments, base, composition.image);
    requireValues(module, assignments, composition.image, options.check);
    if (!composition.noRegisters) {
        require(module.registers(composition.image) == composition.registers);
    }
}

void run(const Module& module, fuzz::Words& words)
{
    mxmodule::ComposeOptions options;
    if (words.empty()) {
        const Composition composition = module.compose(ownValues(module));
        require(composition.ok() && composition.image == module.defaultImage());
        return;
    }
    const std::uint8_t first = words.takeByte();
    if (first == 'f') {
        options.check = mxmodule::ValueCheck::NumberOnly;
    } else if (first == 'b') {
        const auto image = words.takeBytes(words.takeByte());
        options.image.emplace(image.begin(), image.end());
    }
    requireResult(module, chosenValues(module, words, options.check), options);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    fuzz::FuzzInput input(data, size);
    try {
        run(Module::fromBytes(input.file), input.words);
    } catch (const mxmodule::Failure&) {
        // a valid result
    }
    return 0;
}
