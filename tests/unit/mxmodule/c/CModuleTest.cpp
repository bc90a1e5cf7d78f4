// The functions of a module give what the operations of C++ give. MX0304: four analogue inputs.
#include "CallsOfC.h"

#include "ExampleModules.h"

#include <mxmodule/Datasheet.h>
#include <mxmodule/ProductPicture.h>

#include <gmock/gmock.h>

#include <initializer_list>
#include <utility>

namespace {

using mxmodule::Module;
using testing::HasSubstr;
using testing::StartsWith;

std::string asText(const std::vector<char>& bytes)
{
    return {bytes.begin(), bytes.end()};
}

class CModule : public testing::Test
{
protected:
    // What `function`, which takes a module and an error, returns.
    template <typename Function>
    std::string resultOf(const Function& function) const
    {
        return bytesOf([&](auto** error) { return function(made.get(), error); });
    }

    const OwnedByC<mxmodule_module> made = exampleForC("MX0304.bin");
    const Module same = Module::fromFile(examplePath("MX0304.bin"));
};

TEST_F(CModule, isDescribedAsByCpp)
{
    EXPECT_EQ(resultOf(mxmodule_name), examplePath("MX0304.bin"));
    EXPECT_EQ(resultOf(mxmodule_module_id), "5a030304");
    EXPECT_EQ(resultOf(mxmodule_label), "4 AI ±10 V / 0-20 mA");
    EXPECT_EQ(resultOf(mxmodule_json), same.json());
    EXPECT_EQ(resultOf(mxmodule_text), same.text());
    EXPECT_EQ(resultOf(mxmodule_datasheet), mxmodule::datasheet(same));
    EXPECT_EQ(resultOf(mxmodule_default_image), asText(same.defaultImage()));
    EXPECT_EQ(resultOf(mxmodule_default_image).size(), 33U);
}

TEST_F(CModule, hasChannelsAsInCpp)
{
    const mxmodule::ChannelMap map = same.channelMap();
    EXPECT_EQ(resultOf(mxmodule_channels_json), map.json());
    EXPECT_EQ(resultOf(mxmodule_channels_text), map.text());
    EXPECT_EQ(resultOf(mxmodule_channels_declarations), map.declarations());
    EXPECT_EQ(resultOf(mxmodule_channels_svg), map.svg());
    for (const int coloured : {0, 1}) {
        EXPECT_EQ(bytesOf([&](auto** error) {
                      return mxmodule_channels_drawing(made.get(), coloured, error);
                  }),
                  map.drawing(coloured != 0));
    }
    for (const char separator : {',', ';', '\t'}) {
        for (const int mark : {0, 1}) {
            EXPECT_EQ(bytesOf([&](auto** error) {
                          return mxmodule_channels_csv(made.get(), separator, mark, error);
                      }),
                      map.csv({separator, mark != 0}));
        }
    }
}

TEST_F(CModule, isMadeOfBytesThatAreGone)
{
    std::vector<char> bytes = exampleBytes("MX0304.bin");
    const auto copied = done([&](auto** error) {
        return mxmodule_from_bytes(bytes.data(), bytes.size(), "a.bin", 0, 0, error);
    });
    bytes.assign(bytes.size(), 0);
    EXPECT_EQ(bytesOf([&](auto** error) { return mxmodule_name(copied.get(), error); }), "a.bin");
    EXPECT_EQ(bytesOf([&](auto** error) { return mxmodule_json(copied.get(), error); }),
              same.json());
}

TEST_F(CModule, isMadeOfATextForm)
{
    const std::string text =
        "module: {type: 3, id: 0x01020304}\n"
        "catalogue: {BrandId: \"41\", BrandLabelName: Of text, BrandVersion: \"2.1\",\n"
        "  BrandSerialNumber: \"0\", ProductVersion: \"01.02.03\",\n"
        "  BrandOrderCode: K, BrandHwRevision: \"05\"}\n"
        "component: {Component: c, Creator: m}\n";
    const auto built = done([&](auto** error) {
        return mxmodule_from_bytes(text.data(), text.size(), "a.yaml", 0, 0, error);
    });
    EXPECT_EQ(bytesOf([&](auto** error) { return mxmodule_module_id(built.get(), error); }),
              "01020304");
}

// Four inputs of 16 bits from byte 64 on.
TEST_F(CModule, beginsWhereTheCallerSays)
{
    const auto loaded = done([](auto** error) {
        return mxmodule_load(examplePath("MX0304.bin").c_str(), 64, 8, error);
    });
    const auto moved = done([&](auto** error) { return mxmodule_at(made.get(), 64, 8, error); });
    for (const auto* one : {loaded.get(), moved.get()}) {
        const std::string channels =
            bytesOf([&](auto** error) { return mxmodule_channels_text(one, error); });
        EXPECT_THAT(channels, HasSubstr("IW64"));
        EXPECT_THAT(channels, HasSubstr("IW70"));
    }
    EXPECT_THAT(resultOf(mxmodule_channels_text), HasSubstr("IW0"));
}

// "±" is the byte 0xb1 of Windows-1252.
TEST_F(CModule, givesItsTextsByteForByte)
{
    EXPECT_THAT(resultOf(mxmodule_raw_texts),
                HasSubstr("\"label\": \"3420414920b131302056202f20302d3230206d41\""));
    EXPECT_EQ(resultOf(mxmodule_raw_texts), same.rawTexts().json());
}

TEST_F(CModule, mayHaveNoPicture)
{
    EXPECT_EQ(resultOf(mxmodule_product_picture), mxmodule::dataUrl(*mxmodule::pictureOf(same)));
    EXPECT_THAT(resultOf(mxmodule_product_picture), StartsWith("data:image/"));
    const auto plain = exampleForC("MX0502.bin");
    EXPECT_EQ(bytesOf([&](auto** error) { return mxmodule_product_picture(plain.get(), error); }),
              "");
}

// The module's own parameter, then six of each channel.
TEST_F(CModule, findsParametersByName)
{
    const std::initializer_list<std::pair<const char*, std::size_t>> names = {
        {"Mains suppression", 0}, {"AI 1/Upper limit", 2}, {"AI 2/Signal range", 7}, {"#20", 1}};
    for (const auto& [name, expected] : names) {
        mxmodule_error* error = nullptr;
        std::size_t position = 99;
        EXPECT_EQ(mxmodule_parameter_called(made.get(), name, &position, &error), 1) << name;
        EXPECT_EQ(position, expected) << name;
        EXPECT_EQ(error, nullptr);
        EXPECT_EQ(mxmodule_parameter_called(made.get(), name, &position, nullptr), 1) << name;
    }
}

TEST_F(CModule, leavesThePositionOfAnUnknownNameAsItWas)
{
    std::size_t position = 99;
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_parameter_called(made.get(), "AI 1/Upper limits", &position, failure);
    });
    EXPECT_EQ(position, 99U);
    EXPECT_STREQ(
        mxmodule_error_text(error.get()),
        "No parameter is called \"AI 1/Upper limits\", did you mean \"AI 1/Upper limit\" or "
        "\"AI 2/Upper limit\" or \"AI 3/Upper limit\"?");
}

TEST(CBytes, endWithANulThatDoesNotCount)
{
    const auto made = exampleForC("MX0304.bin");
    const auto id = done([&](auto** error) { return mxmodule_module_id(made.get(), error); });
    EXPECT_EQ(mxmodule_bytes_size(id.get()), 8U);
    EXPECT_STREQ(mxmodule_bytes_data(id.get()), "5a030304");
}

TEST(CBytes, areNoneAtANullPointer)
{
    EXPECT_EQ(mxmodule_bytes_size(nullptr), 0U);
    EXPECT_STREQ(mxmodule_bytes_data(nullptr), "");
}

TEST(CVersion, isThatOfTheProject)
{
    EXPECT_THAT(mxmodule_version(), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
}

} // namespace
