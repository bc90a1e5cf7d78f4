#include "export/IecAddresses.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::IecVariable;

std::uint64_t bytesOfSize(char size)
{
    switch (size) {
    case 'W':
        return 2;
    case 'D':
        return 4;
    case 'L':
        return 8;
    default:
        return 1;
    }
}

bool isMultiple(const IecVariable& variable)
{
    return variable.firstBit / 8 % bytesOfSize(variable.size) == 0;
}

// The variable as one whose address, counted in bytes, has this number.
std::string addressAt(IecVariable variable, std::uint64_t number)
{
    variable.firstBit = variable.size == 'X' ? number : number * 8;
    return mxmodule::iecByteAddress(variable);
}

} // namespace

IecAddresses::IecAddresses(const Plan& plan, AddressStyle wanted) : style(wanted)
{
    if (style == AddressStyle::Separate) {
        number(plan);
    }
}

std::optional<std::string> IecAddresses::of(const IecVariable& variable) const
{
    if (style == AddressStyle::Separate) {
        const auto& space = numbers.at({variable.isInput, variable.size});
        return addressAt(variable, space.at(variable.firstBit));
    }
    if (style == AddressStyle::Byte || variable.size == 'X') {
        return mxmodule::iecByteAddress(variable);
    }
    return isMultiple(variable) ? std::optional(addressAt(variable, variable.firstBit / 8 /
                                                                        bytesOfSize(variable.size)))
                                : std::nullopt;
}

std::string IecAddresses::reason(const IecVariable& variable)
{
    return fmt::format("byte {} is no multiple of {}", variable.firstBit / 8,
                       bytesOfSize(variable.size));
}

const char* IecAddresses::meaning() const
{
    switch (style) {
    case AddressStyle::Byte:
        return "Addresses count bytes.";
    case AddressStyle::Index:
        return "Addresses count units of their own size.";
    default:
        return "Addresses of each size count from 0 in each image.";
    }
}

// Variables at one place are one. The elements of an array are numbered singly: no other of their
// size begins between them.
void IecAddresses::number(const Plan& plan)
{
    for (const Channel& channel : plan.channels) {
        for (const IecVariable& variable : mxmodule::iecVariables(channel)) {
            auto& space = numbers[{variable.isInput, variable.size}];
            for (unsigned i = 0; i < std::max(variable.elements, 1U); ++i) {
                space.emplace(variable.firstBit + std::uint64_t{i} * 8, 0);
            }
        }
    }
    for (auto& [space, places] : numbers) {
        std::uint64_t next = 0;
        for (auto& [firstBit, assigned] : places) {
            assigned = next++;
        }
    }
}

} // namespace mxstation
