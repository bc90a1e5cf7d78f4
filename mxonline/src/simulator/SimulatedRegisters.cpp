#include "simulator/SimulatedRegisters.h"

#include "bus/ModbusException.h"
#include "coupler/RegisterOrder.h"

#include <text/Hexadecimal.h>
#include <text/WholeNumber.h>

#include <algorithm>

namespace mxonline {

namespace {

std::uint32_t identifierOf(const mxstation::PlannedModule& module)
{
    return text::wholeNumber<std::uint32_t>(module.module.moduleId(), 16).value();
}

} // namespace

SimulatedRegisters::SimulatedRegisters(const mxstation::Plan& planned, bool isStrict)
    : map(*planned.modbus),
      row(moduleRegisters(planned)),
      inputImage(planned.input.size),
      outputImage(planned.output.size)
{
    for (const ModuleRegisters& module : row) {
        const auto defaults = module.module().module.defaults(mxmodule::Fieldbus::Modbus);
        stagedWords.push_back(module.reordered(defaults.registers()));
        identities.emplace_back();
        setModuleId(identities.size() - 1, identifierOf(module.module()));
    }
    activeWords = stagedWords;
    placeImages();
    placeModules();
    if (map.commit) {
        holding[map.commit->address] = {Use::Commit, 0, 0};
    }
    if (!isStrict) {
        placeGaps();
    }
}

// Outputs are written to holding registers, by whatever function they are read.
void SimulatedRegisters::placeImages()
{
    Space& inputs = map.inputs.readFunction == 4 ? input : holding;
    for (std::uint32_t i = 0; i < (inputImage.size() + 1) / 2; ++i) {
        inputs[map.inputs.address + i] = {Use::Input, 0, i};
    }
    for (std::uint32_t i = 0; i < (outputImage.size() + 1) / 2; ++i) {
        holding[map.outputs.address + i] = {Use::Output, 0, i};
        if (map.outputs.readFunction == 4) {
            input[map.outputs.address + i] = {Use::Output, 0, i};
        }
    }
}

void SimulatedRegisters::placeModules()
{
    for (std::uint32_t module = 0; module < row.size(); ++module) {
        const RegisterRange range = row[module].range();
        for (std::uint32_t i = 0; i < range.count; ++i) {
            holding[range.address + i] = {Use::Parameter, module, i};
        }
        if (map.identity) {
            Space& space = map.identity->readFunction == 4 ? input : holding;
            const RegisterRange identifier = identifierRange(row[module], *map.identity);
            for (std::uint32_t i = 0; i < identifier.count; ++i) {
                space[identifier.address + i] = {Use::Identity, module, i};
            }
        }
    }
}

// From the first parameter to the last: what is for something else stays that.
void SimulatedRegisters::placeGaps()
{
    std::uint32_t end = map.parameters.address;
    for (const ModuleRegisters& module : row) {
        const RegisterRange range = module.range();
        end = range.count == 0 ? end : std::max(end, range.end());
    }
    for (std::uint32_t address = map.parameters.address; address < end; ++address) {
        holding.try_emplace(address, Place{Use::Gap, 0, 0});
    }
}

std::uint8_t SimulatedRegisters::rejection(const ServedRequest& request) const
{
    if (request.exception != 0) {
        return request.exception;
    }
    const Space& space = spaceOf(request.function);
    for (std::uint32_t i = 0; i < request.read.count; ++i) {
        if (space.find(request.read.address + i) == space.end()) {
            return illegalDataAddress;
        }
    }
    std::uint8_t code = 0;
    for (std::uint32_t i = 0; i < request.written.count; ++i) {
        const auto found = holding.find(request.written.address + i);
        const Use use = found == holding.end() ? Use::Gap : found->second.use;
        if (use == Use::Gap || use == Use::Input || use == Use::Identity) {
            return illegalDataAddress;
        }
        if (use == Use::Commit && request.values[i] != map.commit->value) {
            code = illegalDataValue;
        }
    }
    return code;
}

void SimulatedRegisters::write(const ServedRequest& request)
{
    for (std::uint32_t i = 0; i < request.written.count; ++i) {
        const Place& place = holding.at(request.written.address + i);
        const auto kept = static_cast<std::uint16_t>(valueAt(place, true) & request.keptBits);
        const auto changed = static_cast<std::uint16_t>(request.values[i] & ~request.keptBits);
        put(place, static_cast<std::uint16_t>(kept | changed));
    }
}

std::vector<std::uint16_t> SimulatedRegisters::read(const ServedRequest& request) const
{
    std::vector<std::uint16_t> words;
    for (std::uint32_t i = 0; i < request.read.count; ++i) {
        words.push_back(valueAt(spaceOf(request.function).at(request.read.address + i), false));
    }
    return words;
}

std::uint16_t SimulatedRegisters::valueAt(const Place& place, bool isForWriting) const
{
    const auto registerIn = [&](const std::vector<std::uint8_t>& image) {
        const std::size_t first = std::size_t{2} * place.index;
        const std::uint8_t second = first + 1 < image.size() ? image[first + 1] : std::uint8_t{0};
        return registerOf(image[first], second, map);
    };
    const bool isStaged = isForWriting || !map.commit || map.commit->readsAreStaged;
    switch (place.use) {
    case Use::Input:
        return registerIn(inputImage);
    case Use::Output:
        return registerIn(outputImage);
    case Use::Parameter:
        return (isStaged ? stagedWords : activeWords)[place.module][place.index];
    case Use::Identity:
        return identities[place.module][place.index];
    default: // a gap, and the commit register, which holds nothing
        return 0;
    }
}

void SimulatedRegisters::put(const Place& place, std::uint16_t value)
{
    switch (place.use) {
    case Use::Output:
        putOutput(std::size_t{2} * place.index, imageBytesOf({value}, map));
        break;
    case Use::Parameter:
        stagedWords[place.module][place.index] = value;
        if (!map.commit) {
            activeWords[place.module][place.index] = value;
        }
        break;
    default: // the commit register
        activeWords = stagedWords;
        ++committed;
    }
}

// An image of an odd number of bytes has no second byte in its last register.
void SimulatedRegisters::putOutput(std::size_t index, const std::vector<std::uint8_t>& bytes)
{
    const std::size_t count = std::min(bytes.size(), outputImage.size() - index);
    std::copy_n(bytes.begin(), count, outputImage.begin() + static_cast<std::ptrdiff_t>(index));
}

std::vector<std::uint16_t> SimulatedRegisters::active(std::size_t index) const
{
    return row[index].reordered(activeWords[index]);
}

std::vector<std::uint16_t> SimulatedRegisters::staged(std::size_t index) const
{
    return row[index].reordered(stagedWords[index]);
}

void SimulatedRegisters::setModuleId(std::size_t index, std::uint32_t moduleId)
{
    std::vector<std::uint16_t> words = {static_cast<std::uint16_t>(moduleId >> 16),
                                        static_cast<std::uint16_t>(moduleId)};
    reorderValue(words, 0, words.size(), map);
    identities[index] = words;
}

} // namespace mxonline
