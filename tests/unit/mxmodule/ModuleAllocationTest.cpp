// Every allocation of an operation on a module fails once, one after the other: std::bad_alloc is
// thrown, nothing of the operation stays in memory, and the next call gives the same as before.
#include "AllocationFault.h"
#include "ExampleModules.h"

#include <mxmodule/Module.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

namespace {

using mxmodule::Fieldbus;
using mxmodule::Module;

// With EVERY_EXAMPLE in the environment each allocation fails; without it fewer, for everyday use.
std::size_t stride()
{
    return std::getenv("EVERY_EXAMPLE") != nullptr ? 1 : 7;
}

std::string textOfBytes(const std::vector<char>& bytes)
{
    return {bytes.begin(), bytes.end()};
}

class ModuleAllocation : public testing::Test
{
protected:
    // Returns whether there were so many allocations. Sorting does without memory: then all is
    // found.
    template <class Operation>
    static bool failOne(const Operation& operation, std::size_t number, const std::string& expected)
    {
        std::string found = expected;
        bool happened = false;
        {
            const testkit::AllocationFault fault(number);
            try {
                found = operation();
            } catch (const std::bad_alloc&) {
                EXPECT_TRUE(fault.happened());
            }
            happened = fault.happened();
        }
        EXPECT_EQ(found, expected) << "with a failed allocation " << number;
        return happened;
    }

    // `operation` returns what it found as text.
    template <class Operation>
    static void failEach(const Operation& operation)
    {
        operation(); // what is made once
        const std::string expected = operation();
        const std::size_t held = testkit::heldBlocks();
        std::size_t failures = 0;
        for (std::size_t number = 1; !HasFailure(); number += number < 300 ? 1 : stride()) {
            const bool happened = failOne(operation, number, expected);
            EXPECT_EQ(operation(), expected) << "after allocation " << number;
            EXPECT_EQ(testkit::heldBlocks(), held) << "after allocation " << number;
            if (!happened) {
                break;
            }
            ++failures;
        }
        EXPECT_GT(failures, 10U);
    }

    std::vector<char> bytes = exampleBytes("MX0602.bin");
    Module module = Module::fromBytes(bytes, "a.bin");
};

TEST_F(ModuleAllocation, ofAModule)
{
    failEach([this] { return textOfBytes(Module::fromBytes(bytes, "a.bin").defaultImage()); });
}

TEST_F(ModuleAllocation, ofItsDescription)
{
    failEach([this] { return module.at({}).parameters().back().shown; });
}

TEST_F(ModuleAllocation, ofAComposition)
{
    failEach([this] {
        const auto composition = module.compose({{"Mode", "up"}, {"State 1/Total", "7"}});
        return textOfBytes(composition.image) + std::to_string(composition.registers.size()) +
               std::to_string(composition.findings.size());
    });
}

TEST_F(ModuleAllocation, ofAConfiguration)
{
    const auto registers = module.defaults(Fieldbus::Modbus).bytes();
    failEach([&] { return module.decode(registers, Fieldbus::Modbus).parameters().back().shown; });
}

TEST_F(ModuleAllocation, ofAChannelMap)
{
    failEach([this] { return module.channelMap().svg(); });
}

} // namespace
