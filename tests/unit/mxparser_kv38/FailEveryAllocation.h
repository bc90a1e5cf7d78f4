#pragma once

#include "AllocationFault.h"
#include "ConfiguredModule.h"
#include "DeviceView.h"
#include "ExampleModule.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

/// With EVERY_EXAMPLE in the environment every example module and every allocation is tried;
/// without it fewer, for everyday use.
inline bool isLongForm()
{
    return std::getenv("EVERY_EXAMPLE") != nullptr;
}

inline std::vector<std::string> examples()
{
    if (!isLongForm()) {
        return {"MX0001.bin", "MX0304.bin", "MX0602.bin"};
    }
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".bin" && name != "MX9999.bin") {
            names.push_back(name);
        }
    }
    return names;
}

/// Everything that a host reads of a device, as text.
inline std::string describe(const datamodel::Device& device)
{
    std::string text = device.deviceTypeId + "|" + device.brandLabelName;
    for (const auto& [name, value] : propertiesOf(device)) {
        text += "\n" + name + "=" + value;
    }
    for (const auto* image :
         attributesOf<datamodel::BinaryObject>(device, datamodel::binaryObjectTypeCode)) {
        text += "\n" + image->id + image->data;
    }
    for (const auto* channel :
         attributesOf<datamodel::Channel>(device, datamodel::channelTypeCode)) {
        text += "\n" + channel->id + "|" + channel->name + "|" + channel->iecSymbol;
    }
    for (const auto* parameter :
         attributesOf<datamodel::Parameter>(device, datamodel::parameterTypeCode)) {
        text += "\n" + parameter->id + "|" + parameter->name + "|" + parameter->value + "|" +
                parameter->unit + "|" + parameter->valueRange->min + "|" +
                parameter->valueRange->max;
        for (const auto& option : parameter->options) {
            text += "|" + option->text + "=" + option->value;
        }
    }
    for (const auto* set : attributesOf<datamodel::Set>(device, datamodel::setTypeCode)) {
        text += "\n" + set->id + "|" + set->name;
        for (const std::string& member : set->members) {
            text += " " + member;
        }
    }
    return text;
}

inline std::string describe(const std::shared_ptr<testkit::ParserAccess::DeviceP>& device)
{
    const auto& block = *device->privateProps.defaultParameterBlock;
    return describe(static_cast<const datamodel::Device&>(*device)) +
           std::string(block.begin(), block.end());
}

inline std::string describe(const std::shared_ptr<std::vector<char>>& bytes)
{
    return {bytes->begin(), bytes->end()};
}

inline std::string describe(
    const std::vector<std::unique_ptr<devices::parser::IDeviceParser::ChannelMappingInfo>>& list)
{
    std::string text;
    for (const auto& info : list) {
        text += info->iecSymbol + " " + std::to_string(info->byteAddress) + "." +
                std::to_string(info->bitOffset) + " " + std::to_string(info->mask) + "\n";
    }
    return text;
}

/// The result of an operation whose allocation fails.
enum class Outcome
{
    Throws,
    ThrowsOrGoesOn
};

/// Runs `operation` with its first allocation failing, then its second, until it has no more.
/// Returns how many there were.
template <class Operation>
std::size_t failEveryAllocation(Operation operation, Outcome outcome = Outcome::Throws)
{
    operation();
    const std::string expected = describe(operation());
    const std::size_t held = testkit::heldBlocks();
    for (std::size_t number = 1;; ++number) {
        bool happened = false;
        bool threw = false;
        {
            const testkit::AllocationFault fault(number);
            try {
                operation();
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            happened = fault.happened();
        }
        EXPECT_TRUE(threw == happened || outcome == Outcome::ThrowsOrGoesOn)
            << "allocation " << number;
        EXPECT_EQ(describe(operation()), expected) << "after allocation " << number;
        EXPECT_EQ(testkit::heldBlocks(), held) << "after allocation " << number;
        if (!happened || testing::Test::HasFailure()) {
            return number - 1;
        }
    }
}

/// Each allocation fails once; how many did is printed at the end.
class AllocationFailure : public testing::Test
{
protected:
    ~AllocationFailure() override
    {
        std::cout << "Allocations that failed: " << failures << std::endl;
    }

    // Each example with one value set, so that a configuration has something to do.
    template <class Operation>
    void forEachExample(Operation operation)
    {
        for (const std::string& name : examples()) {
            ConfiguredModule module = exampleModule(name);
            for (const auto& attribute : module.device->attributes) {
                if (attribute->typeCode() == datamodel::parameterTypeCode) {
                    const auto& first =
                        static_cast<const testkit::ParserAccess::ParameterP&>(*attribute);
                    module.set(first.name, first.value);
                    break;
                }
            }
            SCOPED_TRACE(name);
            failures += failEveryAllocation([&] { return operation(module); });
        }
    }

    std::size_t failures = 0;
};
