#include "FailEveryAllocation.h"

#include <Poco/Logger.h>
#include <Poco/NullChannel.h>

// Every allocation of an operation fails once, one after the other: std::bad_alloc is thrown, no
// memory is lost, and the next run of the operation gives the usual result. LeakSanitizer looks at
// what is left when the program ends. A file that cannot be loaded ends a walk of
// `populateDatabase` with the directory still open, so the program is linked with
// LostDirectories.cpp.

namespace {

using devices::parser::FieldbusType;
using testkit::AllocationFault;
using testkit::ParserAccess;

TEST_F(AllocationFailure, TheChosenAllocationFailsAndNoOther)
{
    // Operators that are called by name: the compiler may do without those of a new expression.
    const AllocationFault fault(2);
    operator delete(operator new(1));
    EXPECT_FALSE(fault.happened());
    EXPECT_THROW(operator delete(operator new(1)), std::bad_alloc);
    EXPECT_TRUE(fault.happened());
    EXPECT_NO_THROW(operator delete(operator new(1)));
}

TEST_F(AllocationFailure, OfATranslation)
{
    forEachExample([](ConfiguredModule& module) {
        return module.parser.parse(module.mxData, nullptr, 100, 200);
    });
    EXPECT_GT(failures, 300U);
}

TEST_F(AllocationFailure, OfATranslationByANewParser)
{
    forEachExample([](ConfiguredModule& module) {
        devices::parser::mx::Parser_kv38 parser;
        std::vector<char> block = *module.device->privateProps.defaultParameterBlock;
        return parser.parse(module.mxData, &block, 0, 0);
    });
    EXPECT_GT(failures, 300U);
}

TEST_F(AllocationFailure, OfATranslationThatTellsEverything)
{
    ConfiguredModule module = exampleModule(isLongForm() ? "MX0304.bin" : "MX0001.bin");
    const Poco::AutoPtr<Poco::Channel> previous(module.parser.logger.getChannel());
    module.parser.logger.setChannel(Poco::AutoPtr<Poco::Channel>(new Poco::NullChannel));
    module.parser.setLoggingLevel("trace");
    // Poco builds the text of a line in a stream, and streams swallow what is thrown within them:
    // the line is cut then.
    failures += failEveryAllocation(
        [&] { return module.parser.parse(module.mxData, nullptr, 0, 0); }, Outcome::ThrowsOrGoesOn);
    module.parser.logger.setChannel(previous);
    EXPECT_GT(failures, 300U);
}

TEST_F(AllocationFailure, OfARawConfiguration)
{
    for (const FieldbusType fieldbus : {FieldbusType::Raw, FieldbusType::Modbus}) {
        forEachExample([&](ConfiguredModule& module) {
            return module.parser.getCalculatedRawConfig(fieldbus, module.mxData,
                                                        module.device.get(), &module.user);
        });
    }
    EXPECT_GT(failures, 100U);
}

TEST_F(AllocationFailure, OfAModbusBuffer)
{
    forEachExample([](ConfiguredModule& module) {
        std::vector<char> raw = *module.device->privateProps.defaultParameterBlock;
        return module.parser.createModbusParamBuffer(module.device.get(), &raw);
    });
    EXPECT_GT(failures, 10U);
}

TEST_F(AllocationFailure, OfAChannelMapping)
{
    forEachExample([](ConfiguredModule& module) {
        return module.parser.getChannelMappingInfoList(module.device.get());
    });
    EXPECT_GT(failures, 10U);
}

} // namespace
