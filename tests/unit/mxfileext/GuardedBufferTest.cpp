#include "CompanionTest.h"

#include <GuardedBuffer.h>

// Groups, records and parameter blocks at the end of accessible memory: they are read and written,
// and not one byte more.

namespace {

using testkit::Bytes;
using testkit::GuardedBuffer;
using testkit::ParameterRecord;

class GuardedCompanion : public CompanionTest
{
protected:
    static void giveGuarded(std::uint16_t group, const Bytes& payload)
    {
        testkit::MxBuffer buffer;
        const GuardedBuffer bytes(buffer.group(group, payload).bytes());
        mxfileext::parseGroup(0, group, bytes.data(), static_cast<unsigned short>(bytes.size()));
    }

    static std::size_t sizeOf(std::uint8_t datatype)
    {
        const std::size_t sizes[] = {1, 2, 1, 2, 1, 4, 4, 8, 8};
        return sizes[datatype - 1];
    }
};

TEST_F(GuardedCompanion, ValueAtTheEndOfTheBlockIsReadAndWritten)
{
    GuardedBuffer block(Bytes(8, 1));
    tellSize(block.size());
    for (std::uint8_t datatype = 1; datatype <= 9; ++datatype) {
        for (std::uint8_t offset = 0; offset <= 9; ++offset) {
            ParameterRecord parameter;
            parameter.datatype = datatype;
            parameter.position = static_cast<std::uint8_t>(4 + offset);
            GuardedBuffer record(parameter.bytes());
            const bool inside = offset + sizeOf(datatype) <= 8;

            mxfileext::ParameterValue_t value;
            mxfileext::getParameterValue(record.data(), block.data(), &value);
            EXPECT_EQ(value.present, inside) << int{datatype} << " at " << int{offset};

            const auto write = [&] {
                mxfileext::setParameter(0, block.data(), record.data(), "1");
            };
            if (inside) {
                EXPECT_NO_THROW(write());
            } else {
                EXPECT_THROW(write(), std::runtime_error);
            }
        }
    }
}

TEST_F(GuardedCompanion, ConvertedValueAtTheEndOfTheBlockIsReadAndWritten)
{
    giveGuarded(0x20C2, ConversionEntry{1, plusHalf, 0, 7}.bytes());
    giveGuarded(0x20D3, testkit::textTablePayload({{7, "mA"}}));
    ParameterRecord parameter;
    parameter.datatype = 2; // two bytes
    parameter.showMe = 7;
    parameter.conversionId = 1;
    parameter.position = 4 + 6;
    GuardedBuffer record(parameter.bytes());
    GuardedBuffer block({0, 0, 0, 0, 0, 0, 0, 10});
    tellSize(block.size());
    Converted converted;
    mxfileext::getConvertedParameter(0, block.data(), record.data(), &converted.value,
                                     &converted.min, &converted.max, converted.unit);
    EXPECT_EQ(converted.value, 5.0F); // 10 * 0.5
    EXPECT_EQ(converted.unit, "mA");
    mxfileext::setParameter(0, block.data(), record.data(), "6");
    EXPECT_EQ(block.data()[7], 12);
}

TEST_F(GuardedCompanion, GroupsOfEveryLengthAreReadToTheirEnd)
{
    const Bytes texts = testkit::textTablePayload({{1, "A"}, {7, "mA"}});
    const Bytes conversions = ConversionEntry{1, plusHalf, 0, 7}.bytes();
    ParameterRecord parameter;
    parameter.showMe = 7;
    parameter.conversionId = 1;
    std::size_t withUnit = 0;
    for (std::size_t size = 0; size <= texts.size(); ++size) {
        forgetAll();
        giveGuarded(0x20D3,
                    Bytes(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(size)));
        giveGuarded(0x20C2, conversions);
        withUnit += convert(parameter, {10}).unit == "mA" ? 1U : 0U;
    }
    EXPECT_EQ(withUnit, 2U); // with the carriage return that ends the text, and with all of it
    for (std::size_t size = 0; size < conversions.size(); ++size) {
        forgetAll();
        giveGuarded(0x20C2, Bytes(conversions.begin(),
                                  conversions.begin() + static_cast<std::ptrdiff_t>(size)));
        EXPECT_EQ(convert(parameter, {10}).value, 10.0F) << size;
    }
}

} // namespace
