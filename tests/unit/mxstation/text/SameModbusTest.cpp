// Two maps of registers are the same only if no member of them differs.

#include <text/SameModbus.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using mxstation::isSameModbus;
using mxstation::ModbusMap;
using mxstation::PartOrder;

ModbusMap fullMap()
{
    ModbusMap map;
    map.identity.emplace();
    map.commit.emplace();
    return map;
}

TEST(SameModbus, findsEveryMemberThatDiffers)
{
    EXPECT_TRUE(isSameModbus(ModbusMap{}, ModbusMap{}));
    EXPECT_TRUE(isSameModbus(fullMap(), fullMap()));
    EXPECT_TRUE(isSameModbus({}, {}));
    EXPECT_FALSE(isSameModbus({}, ModbusMap{}));
    EXPECT_FALSE(isSameModbus(ModbusMap{}, {}));
    const std::vector<std::function<void(ModbusMap&)>> changes = {
        [](ModbusMap& map) { ++map.unit; },
        [](ModbusMap& map) { ++map.inputs.address; },
        [](ModbusMap& map) { ++map.inputs.readFunction; },
        [](ModbusMap& map) { ++map.outputs.address; },
        [](ModbusMap& map) { ++map.outputs.readFunction; },
        [](ModbusMap& map) { ++map.outputs.writeFunction; },
        [](ModbusMap& map) { ++map.parameters.address; },
        [](ModbusMap& map) { ++map.parameters.stride; },
        [](ModbusMap& map) { map.identity.reset(); },
        [](ModbusMap& map) { ++map.identity->address; },
        [](ModbusMap& map) { ++map.identity->stride; },
        [](ModbusMap& map) { ++map.identity->readFunction; },
        [](ModbusMap& map) { map.commit.reset(); },
        [](ModbusMap& map) { ++map.commit->address; },
        [](ModbusMap& map) { ++map.commit->value; },
        [](ModbusMap& map) { map.commit->readsAreStaged = !map.commit->readsAreStaged; },
        [](ModbusMap& map) { ++map.mostRead; },
        [](ModbusMap& map) { ++map.mostWritten; },
        [](ModbusMap& map) { map.words = PartOrder::Little; },
        [](ModbusMap& map) { map.bytes = PartOrder::Little; },
        [](ModbusMap& map) { ++map.timeout; },
        [](ModbusMap& map) { ++map.busyTime; },
        [](ModbusMap& map) { ++map.retries; },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        ModbusMap changed = fullMap();
        changes[i](changed);
        EXPECT_FALSE(isSameModbus(fullMap(), changed)) << "change " << i;
        EXPECT_FALSE(isSameModbus(changed, fullMap())) << "change " << i;
    }
}

} // namespace
