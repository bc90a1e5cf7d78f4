#include "ExampleModule.h"

using testkit::Bytes;
using testkit::ChannelRecord;
using testkit::hexBytes;
using testkit::join;
using testkit::ParameterRecord;

namespace {

Bytes parameterRecords()
{
    ParameterRecord plain;
    plain.number = 1;
    plain.nameId = 100;
    plain.maximum = 200;

    ParameterRecord chosen;
    chosen.number = 2;
    chosen.nameId = 101;
    chosen.position = 5;
    chosen.datatype = 5;
    chosen.mapId = 9;
    chosen.bitLength = 3;
    chosen.bitOffset = 2;
    chosen.channelNumber = 1;

    ParameterRecord converted;
    converted.number = 3;
    converted.nameId = 102;
    converted.position = 6;
    converted.datatype = 4;
    converted.showMe = 7;
    converted.conversionId = 1;
    converted.channelNumber = 1;

    return join({plain.bytes(), chosen.bytes(), converted.bytes()});
}

// Bit, bit field of 12 bits, dropped word, double word, long with two words after its record.
Bytes channelRecords()
{
    return join({ChannelRecord{1, 0x85, 1, 0, 0}.bytes(), ChannelRecord{2, 0x85, 12, 1, 0}.bytes(),
                 ChannelRecord{3, 0x82, 16, 0, 0}.bytes(), ChannelRecord{4, 0x06, 32, 0, 0}.bytes(),
                 ChannelRecord{5, 0x48, 64, 0, 2}.bytes()});
}

// Factor 0.5, offset -10, unit text 120.
Bytes conversions()
{
    return hexBytes("01 3f000000 c1200000 0078");
}

} // namespace

Groups exampleGroups()
{
    return {
        {0x0001, testkit::identityPayload(3, 0x01020304)},
        {0x0020, testkit::entriesPayload({{"BrandLabelName", "Example"},
                                          {"BrandVersion", "2.1"},
                                          {"BrandId", "41"},
                                          {"BrandSerialNumber", "0"},
                                          {"ProductVersion", "01.02.03"},
                                          {"BrandOrderCode", "K38-E"},
                                          {"BrandHwRevision", "05"}})},
        {0x0040, testkit::entriesPayload({{"Component", "kv38-example"}})},
        {0x0010, hexBytes("00 00 05 04 03e8")},
        {0x0011, testkit::linesPayload({"InData DW", "OutData DD,s=D", "Parameter D s", "Parameter",
                                        "Diagnosis W", "Comment D"})},
        {0x20F0, join({hexBytes("01 0082"), testkit::textBytes("2024-05-31")})},
        {0x20F1, Bytes(1500, 0)},
        {0x20D3, testkit::textTablePayload({{100, "Filter"},
                                            {101, "Mode"},
                                            {102, "Limit"},
                                            {110, "off"},
                                            {111, "on"},
                                            {120, "mA"},
                                            {130, "4012345678901"},
                                            {200, "Input 1"},
                                            {201, "-"}})},
        {0x20C1, testkit::optionList(9, {{0, 110}, {1, 111}})},
        {0x20C2, conversions()},
        {0x20C0, parameterRecords()},
        {0x20D7, hexBytes("01 00c8 03 00c9")},
        {0x20D0, channelRecords()},
    };
}

testkit::MxBuffer bufferOf(const Groups& groups)
{
    testkit::MxBuffer buffer;
    for (const auto& [id, payload] : groups) {
        buffer.group(id, payload);
    }
    return buffer;
}
