// Every allocation of a call of the C interface fails once, one after the other: there is no result
// and the error is `MXMODULE_NO_MEMORY`, nothing stays in memory, and the next call has a result.
// Not for JSON, whose library ends the process where memory runs out.
#include "CallsOfC.h"

#include "AllocationFault.h"
#include "ExampleModules.h"

#include <functional>

namespace {

using Operation = std::function<bool(mxmodule_error**)>; // whether it has a result

// Returns whether there were so many allocations.
bool failAllocation(std::size_t number, const Operation& hasResult)
{
    mxmodule_error* error = nullptr;
    const testkit::AllocationFault fault(number);
    if (hasResult(&error)) { // some libraries do without memory that they do not get
        EXPECT_EQ(error, nullptr);
        return fault.happened();
    }
    EXPECT_TRUE(fault.happened());
    EXPECT_EQ(mxmodule_error_code(error), MXMODULE_NO_MEMORY) << mxmodule_error_text(error);
    EXPECT_STREQ(mxmodule_error_text(error), "No memory");
    EXPECT_STREQ(mxmodule_error_place(error), "");
    mxmodule_error_free(error); // it belongs to the library, but C does not know that
    return true;
}

void failEachAllocation(const Operation& hasResult)
{
    hasResult(nullptr); // what is made once
    const std::size_t held = testkit::heldBlocks();
    std::size_t number = 1;
    while (!testing::Test::HasFailure() && failAllocation(number, hasResult)) {
        EXPECT_TRUE(hasResult(nullptr)) << "after allocation " << number;
        EXPECT_EQ(testkit::heldBlocks(), held) << "after allocation " << number;
        number += number < 50 ? 1 : 13;
    }
    EXPECT_GT(number, 10U);
}

template <typename Call>
Operation freeing(const Call& call)
{
    return [call](mxmodule_error** error) {
        auto* result = call(error);
        FreedForC()(result);
        return result != nullptr;
    };
}

class CAllocation : public testing::Test
{
protected:
    const OwnedByC<mxmodule_module> made = exampleForC("MX0602.bin");
};

TEST_F(CAllocation, ofAComposition)
{
    failEachAllocation(freeing([this](auto** error) {
        const mxmodule_assignment values[] = {{"Mode", "up"}, {"Gate 1 open/Total", "7"}};
        return mxmodule_compose(made.get(), values, 2, nullptr, 0, MXMODULE_FULL, error);
    }));
}

TEST_F(CAllocation, ofAConfiguration)
{
    failEachAllocation(freeing([this](auto** error) {
        return mxmodule_configure(made.get(), nullptr, 0, MXMODULE_MODBUS, error);
    }));
}

TEST_F(CAllocation, ofAModule)
{
    const std::vector<char> file = exampleBytes("MX0602.bin");
    failEachAllocation(freeing([&](auto** error) {
        return mxmodule_from_bytes(file.data(), file.size(), "a.bin", 0, 0, error);
    }));
}

TEST_F(CAllocation, ofAPicture)
{
    failEachAllocation(
        freeing([this](auto** error) { return mxmodule_channels_svg(made.get(), error); }));
}

} // namespace
