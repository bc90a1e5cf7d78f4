#pragma once

#include <Failure.h>
#include <MxBuffer.h>
#include <mxfileext/mxfileext.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// Value, minimum and maximum as texts.
using Texts = std::array<std::string, 3>;

/// The results of `getConvertedParameter`.
struct Converted
{
    float value = -1;
    float min = -1;
    float max = -1;
    std::string unit = "unset";
};

/// One entry of the conversion table; `factor` and `offset` are the bits of a binary32.
struct ConversionEntry
{
    std::uint8_t id;
    std::uint32_t factor;
    std::uint32_t offset = 0;
    unsigned unitTextId = 0;

    testkit::Bytes bytes() const
    {
        using testkit::u16;
        using testkit::u32;
        return testkit::join({{id}, u32(factor), u32(offset), u16(unitTextId)});
    }
};

// Bits of the binary32 numbers that the tests use.
constexpr std::uint32_t plusOne = 0x3F800000;
constexpr std::uint32_t plusHalf = 0x3F000000;
constexpr std::uint32_t minusHalf = 0xBF000000;
constexpr std::uint32_t plusTenth = 0x3DCCCCCD;
constexpr std::uint32_t plusTen = 0x41200000;

/// Starts and ends with nothing known about the modules 0 and 1.
class CompanionTest : public testing::Test
{
protected:
    CompanionTest() { forgetAll(); }
    ~CompanionTest() override { forgetAll(); }

    static void forgetAll()
    {
        mxfileext::clearParsedData(0);
        mxfileext::clearParsedData(1);
    }

    static void give(unsigned char module, std::uint16_t group, const testkit::Bytes& payload)
    {
        testkit::MxBuffer buffer;
        const testkit::Bytes& bytes = buffer.group(group, payload).bytes();
        mxfileext::parseGroup(module, group, bytes.data(),
                              static_cast<unsigned short>(bytes.size()));
    }

    static void giveTexts(const testkit::Bytes& payload) { give(0, 0x20D3, payload); }

    static void giveConversions(const std::vector<ConversionEntry>& entries)
    {
        testkit::Bytes payload;
        for (const ConversionEntry& entry : entries) {
            payload = testkit::join({payload, entry.bytes()});
        }
        give(0, 0x20C2, payload);
    }

    static void tellSize(std::size_t size)
    {
        mxfileext::initializeModule(nullptr, static_cast<unsigned short>(size));
    }

    static mxfileext::ParameterValue_t decode(const testkit::ParameterRecord& record,
                                              const testkit::Bytes& block)
    {
        tellSize(block.size());
        mxfileext::ParameterValue_t value;
        mxfileext::getParameterValue(record.bytes().data(), block.data(), &value);
        return value;
    }

    static Texts textsOf(const mxfileext::ParameterValue_t& value)
    {
        Texts texts{"unset", "unset", "unset"};
        mxfileext::parameterValueToString(value, texts[0], texts[1], texts[2]);
        return texts;
    }

    static Texts read(const testkit::ParameterRecord& record, const testkit::Bytes& block)
    {
        return textsOf(decode(record, block));
    }

    static Converted convert(const testkit::ParameterRecord& record, testkit::Bytes block,
                             unsigned char module = 0)
    {
        tellSize(block.size());
        testkit::Bytes bytes = record.bytes();
        Converted result;
        mxfileext::getConvertedParameter(module, block.data(), bytes.data(), &result.value,
                                         &result.min, &result.max, result.unit);
        return result;
    }

    static void set(const testkit::ParameterRecord& record, testkit::Bytes& image,
                    const std::string& text, unsigned char module = 0)
    {
        tellSize(image.size());
        testkit::Bytes bytes = record.bytes();
        mxfileext::setParameter(module, image.data(), bytes.data(), text);
    }

    static testkit::Bytes imageAfter(const testkit::ParameterRecord& record, testkit::Bytes image,
                                     const std::string& text)
    {
        set(record, image, text);
        return image;
    }

    /// Returns the failure's text; the image must be unchanged.
    static std::string failureToSet(const testkit::ParameterRecord& record,
                                    const testkit::Bytes& image, const std::string& text)
    {
        testkit::Bytes changed = image;
        const std::string failure = testkit::failureOf([&] { set(record, changed, text); });
        EXPECT_EQ(changed, image) << text;
        return failure;
    }
};
