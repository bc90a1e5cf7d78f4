#include "CompanionTest.h"

namespace {

using testkit::Bytes;
using testkit::join;
using testkit::ParameterRecord;
using testkit::u16;

class ModuleStateTest : public CompanionTest
{
protected:
    ModuleStateTest() { record.conversionId = 1; }

    static Bytes conversionTo(std::uint32_t factor)
    {
        return ConversionEntry{1, factor, 0, 7}.bytes();
    }

    // Raw value 4, as it is converted now.
    Converted four(unsigned char module = 0) const { return convert(record, {4}, module); }

    ParameterRecord record;
};

const Bytes unitVolt = testkit::textTablePayload({{7, "V"}});
const Bytes unitAmpere = testkit::textTablePayload({{7, "A"}});

TEST_F(ModuleStateTest, firstOccurrenceOfAGroupHolds)
{
    give(0, 0x20C2, conversionTo(plusHalf));
    give(0, 0x20C2, conversionTo(plusTen));
    giveTexts(unitVolt);
    giveTexts(unitAmpere);
    EXPECT_EQ(four().value, 2.0F);
    EXPECT_EQ(four().unit, "V");
}

TEST_F(ModuleStateTest, firstOccurrenceHoldsWhenItIsEmptyOrDamaged)
{
    give(0, 0x20C2, {});
    give(0, 0x20C2, conversionTo(plusTen));
    EXPECT_EQ(four().value, 4.0F);

    forgetAll();
    give(0, 0x20C2, {1, 2, 3});
    give(0, 0x20C2, conversionTo(plusTen));
    EXPECT_EQ(four().value, 4.0F);

    forgetAll();
    give(0, 0x20C2, conversionTo(plusTen));
    giveTexts({});
    giveTexts(unitVolt);
    EXPECT_EQ(four().unit, "");
}

TEST_F(ModuleStateTest, groupsComeInAnyOrder)
{
    give(0, 0x20C2, conversionTo(plusHalf));
    give(0, 0x20C0, ParameterRecord{}.bytes());
    giveTexts(unitVolt);
    EXPECT_EQ(four().unit, "V");
}

TEST_F(ModuleStateTest, groupIsTheOneThatTheArgumentNames)
{
    const Bytes group = join({u16(0x20C2), u16(17), conversionTo(plusHalf), u16(0)});
    mxfileext::parseGroup(0, 0x20C3, group.data(), 17);
    EXPECT_EQ(four().value, 4.0F);
    mxfileext::parseGroup(0, 0x20C2, group.data(), 17);
    EXPECT_EQ(four().value, 2.0F);
}

TEST_F(ModuleStateTest, sizeBelowSixIsIgnored)
{
    const Bytes group = join({u16(0x20C2), u16(17), conversionTo(plusHalf), u16(0)});
    for (unsigned short size = 0; size < 6; ++size) {
        // No byte may be accessed: there are only `size` of them.
        const Bytes part(group.begin(), group.begin() + size);
        mxfileext::parseGroup(0, 0x20C2, part.data(), size);
        mxfileext::parseGroup(0, 0x20D3, part.data(), size);
    }
    // None of them was the group's first occurrence.
    give(0, 0x20C2, conversionTo(plusHalf));
    giveTexts(unitVolt);
    EXPECT_EQ(four().value, 2.0F);
    EXPECT_EQ(four().unit, "V");
}

TEST_F(ModuleStateTest, keepsNothingOfTheCallersBytes)
{
    Bytes conversions = join({u16(0x20C2), u16(17), conversionTo(plusHalf), u16(0)});
    Bytes texts = join({u16(0x20D3), u16(13), {0, 0}, u16(7), {'V', 0x0D, 0x0A}, u16(0)});
    mxfileext::parseGroup(0, 0x20C2, conversions.data(), 17);
    mxfileext::parseGroup(0, 0x20D3, texts.data(), 13);
    Bytes().swap(conversions);
    Bytes().swap(texts);
    std::vector<char> block{1};
    mxfileext::initializeModule(block.data(), 1);
    std::vector<char>().swap(block);
    EXPECT_EQ(four().value, 2.0F);
    EXPECT_EQ(four().unit, "V");
}

TEST_F(ModuleStateTest, modulesHaveTablesOfTheirOwn)
{
    give(0, 0x20C2, conversionTo(plusHalf));
    give(1, 0x20C2, conversionTo(plusTen));
    give(1, 0x20D3, unitAmpere);
    EXPECT_EQ(four(0).value, 2.0F);
    EXPECT_EQ(four(0).unit, "");
    EXPECT_EQ(four(1).value, 40.0F);
    EXPECT_EQ(four(1).unit, "A");
    EXPECT_EQ(four(255).value, 4.0F);

    record.showMe = 4;
    Bytes image{0};
    set(record, image, "20", 0);
    EXPECT_EQ(image, (Bytes{40}));
    set(record, image, "20", 1);
    EXPECT_EQ(image, (Bytes{2}));
}

TEST_F(ModuleStateTest, clearingForgetsTheTablesOfOneModule)
{
    for (unsigned char module = 0; module < 2; ++module) {
        give(module, 0x20C2, conversionTo(plusHalf));
        give(module, 0x20D3, unitVolt);
    }
    mxfileext::clearParsedData(0);
    EXPECT_EQ(four(0).value, 4.0F);
    EXPECT_EQ(four(1).value, 2.0F);
    EXPECT_EQ(four(1).unit, "V");

    // After it the next occurrence is the first one.
    give(0, 0x20C2, conversionTo(plusTen));
    EXPECT_EQ(four(0).value, 40.0F);
    EXPECT_EQ(four(0).unit, "");
}

TEST_F(ModuleStateTest, clearingModuleZeroForgetsTheSizeOfItsBlock)
{
    const Bytes block{4};
    const Bytes bytes = record.bytes();
    const auto isPresent = [&] {
        mxfileext::ParameterValue_t value;
        mxfileext::getParameterValue(bytes.data(), block.data(), &value);
        return value.present;
    };
    tellSize(1);
    EXPECT_TRUE(isPresent());
    mxfileext::clearParsedData(1);
    EXPECT_TRUE(isPresent());
    mxfileext::clearParsedData(0);
    EXPECT_FALSE(isPresent());
}

TEST_F(ModuleStateTest, theLastSizeToldHolds)
{
    EXPECT_EQ(read(record, {4})[0], "4");
    EXPECT_EQ(read(record, {})[0], "");
    EXPECT_EQ(read(record, {5})[0], "5");
}

TEST_F(ModuleStateTest, largestGroupIsTaken)
{
    // 65,535 bytes, the most that a group can have; 65,529 of them are the payload, which holds
    // 5,957 entries of 11 bytes and 2 bytes more.
    Bytes payload;
    for (unsigned i = 0; i < 5957; ++i) {
        const Bytes entry = conversionTo(i == 0 ? plusHalf : plusTen);
        payload.insert(payload.end(), entry.begin(), entry.end());
    }
    give(0, 0x20C2, payload);
    EXPECT_EQ(four().value, 2.0F);
    forgetAll();
    payload.resize(65529);
    give(0, 0x20C2, payload);
    EXPECT_EQ(four().value, 4.0F);
}

} // namespace
