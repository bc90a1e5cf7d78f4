#pragma once

#include "DeviceReport.h"
#include "MxBuffer.h"
#include "TranslatedModule.h"

#include <mxmodule/Module.h>

/// A module whose parameters have every peculiarity that a call must handle. Its block is 00 0a 0b
/// 05 07 64 00 00.
class TestModule
{
public:
    const mxmodule::TranslatedModule& operator*() const { return translated; }
    const mxmodule::TranslatedModule* operator->() const { return &translated; }
    const mxmodule::DeviceReport& report() const { return translated.report(); }

    /// Returns the module as hosts have it.
    static mxmodule::Module module() { return mxmodule::Module::fromBytes(file(), "MX1.bin"); }

    static std::vector<char> file()
    {
        using testkit::u16;
        using testkit::u32;
        testkit::MxBuffer module = testkit::minimalModule({"Parameter DD"});
        module.group(0x20D3, testkit::textTablePayload({{100, "Filter"},
                                                        {101, "Level"},
                                                        {102, "A=B"},
                                                        {103, "X/Y"},
                                                        {104, "Low bits"},
                                                        {105, "Whole byte"},
                                                        {106, "Far"},
                                                        {107, "Gain"},
                                                        {108, "AI 1"},
                                                        {109, "AI 2"},
                                                        {110, "off"},
                                                        {111, "slow"},
                                                        {112, "5"},
                                                        {113, "same"},
                                                        {114, "9"},
                                                        {120, "mA"},
                                                        {121, "V"}}));
        module.group(0x0010, testkit::join({testkit::hexBytes("00 00"),
                                            testkit::hexBytes("00 0a 0b 05 07 64 00 00")}));
        // Option "5" has the number 2, the number 5 is "slow"; two options are called "same"; "9"
        // is only a text.
        module.group(0x20C1, testkit::optionList(
                                 1, {{0, 110}, {5, 111}, {2, 112}, {3, 113}, {4, 113}, {7, 114}}));
        // Conversion 1: factor 0.5, offset 0, unit "V".
        module.group(0x20C2, testkit::join({{1}, u32(0x3F000000), u32(0), u16(121)}));
        module.group(0x20D7, testkit::join({{0}, u16(108), {1}, u16(109)}));
        module.group(0x20D0, testkit::join({channel(0), channel(1)}));
        module.group(0x20C0, parameters());
        return module.chars();
    }

private:
    static testkit::Bytes channel(std::uint8_t number)
    {
        testkit::ChannelRecord record;
        record.number = number;
        record.kind = 0x85;
        record.bitLength = 8;
        return record.bytes();
    }

    static testkit::Bytes parameters()
    {
        const std::uint8_t u8 = 1;
        std::vector<testkit::ParameterRecord> all(9);
        for (std::uint8_t i = 0; i < all.size(); ++i) {
            all[i].number = static_cast<std::uint8_t>(i + 1);
            all[i].datatype = u8;
        }
        place(all[0], 100, 0);
        all[0].mapId = 1;
        for (const std::uint8_t channelNumber : {std::uint8_t{0}, std::uint8_t{1}}) {
            auto& level = all[1U + channelNumber];
            place(level, 101, static_cast<std::uint8_t>(1 + channelNumber));
            level.minimum = 10;
            level.maximum = 20;
            level.unitId = 120;
            level.channelNumber = channelNumber;
        }
        place(all[3], 102, 3);
        all[3].datatype = 3;
        place(all[4], 103, 6);
        place(all[5], 104, 4);
        all[5].datatype = 5;
        all[5].bitLength = 3;
        place(all[6], 105, 4);
        place(all[7], 106, 9);
        place(all[8], 107, 5);
        all[8].showMe = 7;
        all[8].conversionId = 1;
        std::vector<testkit::Bytes> records;
        for (const auto& record : all) {
            records.push_back(record.bytes());
        }
        return testkit::join(records);
    }

    static void place(testkit::ParameterRecord& record, std::uint16_t nameId, std::uint8_t byte)
    {
        record.nameId = nameId;
        record.position = static_cast<std::uint8_t>(byte + 4);
    }

    mxmodule::TranslatedModule translated{
        mxmodule::ModuleFile("MX1.bin", file()), {}, {}, "", nullptr};
};
