#include "text/SameModbus.h"

#include <tuple>

namespace mxstation {

namespace {

auto statedOf(const ModbusImage& image)
{
    return std::tuple(image.address, image.readFunction, image.writeFunction);
}

auto statedOf(const ModbusModuleRegisters& registers)
{
    return std::tuple(registers.address, registers.stride);
}

auto statedOf(const ModbusIdentity& identity)
{
    return std::tuple(identity.address, identity.stride, identity.readFunction);
}

auto statedOf(const ModbusCommit& commit)
{
    return std::tuple(commit.address, commit.value, commit.readsAreStaged);
}

template <typename Section>
auto statedIn(const std::optional<Section>& section)
{
    return section ? std::optional(statedOf(*section)) : std::nullopt;
}

auto statedOf(const ModbusMap& map)
{
    return std::tuple(map.unit, statedOf(map.inputs), statedOf(map.outputs),
                      statedOf(map.parameters), statedIn(map.identity), statedIn(map.commit),
                      map.mostRead, map.mostWritten, map.words, map.bytes, map.timeout,
                      map.busyTime, map.retries);
}

} // namespace

bool isSameModbus(const std::optional<ModbusMap>& a, const std::optional<ModbusMap>& b)
{
    return a.has_value() == b.has_value() && (!a || statedOf(*a) == statedOf(*b));
}

} // namespace mxstation
