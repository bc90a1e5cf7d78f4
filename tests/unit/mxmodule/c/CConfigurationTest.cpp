// Compositions, configurations and comparisons of MX0304, whose registers ModuleValuesTest.cpp
// derives, and of MX0502.
#include "CallsOfC.h"

#include "ExampleModules.h"

#include <mxmodule/Registers.h>
#include <mxmodule/WantedValues.h>

#include <gmock/gmock.h>

namespace {

using mxmodule::Fieldbus;
using mxmodule::Listing;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<unsigned char> imageOf(const OwnedByC<mxmodule_composition>& made)
{
    std::size_t size = 0;
    const unsigned char* first = mxmodule_composition_image(made.get(), &size);
    return {first, first + size};
}

std::vector<std::uint16_t> registersOf(const OwnedByC<mxmodule_composition>& made)
{
    std::size_t count = 0;
    const std::uint16_t* first = mxmodule_composition_registers(made.get(), &count);
    return {first, first + count};
}

class CConfiguration : public testing::Test
{
protected:
    OwnedByC<mxmodule_composition> composed(const std::vector<mxmodule_assignment>& values) const
    {
        return done([&](auto** error) {
            return mxmodule_compose(made.get(), values.data(), values.size(), nullptr, 0,
                                    MXMODULE_FULL, error);
        });
    }

    OwnedByC<mxmodule_configuration> defaults(mxmodule_fieldbus fieldbus) const
    {
        return done([&](auto** error) {
            return mxmodule_configure(made.get(), nullptr, 0, fieldbus, error);
        });
    }

    const OwnedByC<mxmodule_module> made = exampleForC("MX0502.bin");
    const mxmodule::Module same = exampleModule("MX0502.bin");
};

// Pt1000 is 1 and the second option, 100 degrees are 1000 = 0x03e8, -2 is 0xfe; the rest as by
// default: -3 is 0xfd, Potentiometer 6 and the fifth option, 450 degrees 4500 = 0x1194.
TEST_F(CConfiguration, isComposedOfValues)
{
    const auto composition = composed({{"Temperature 1/Sensor type", "Pt1000"},
                                       {"Temperature 1/Temperature limit", "100 °C"},
                                       {"channel_1/Wires", "-2"}});
    EXPECT_THAT(imageOf(composition), ElementsAre(1, 3, 0xe8, 0xfd, 6, 0x11, 0x94, 0xfe));
    EXPECT_THAT(registersOf(composition),
                ElementsAre(0x0100, 0x03e8, 0xfd00, 0x0400, 0x1194, 0xfe00));
    EXPECT_EQ(mxmodule_composition_findings(composition.get()), nullptr);
    EXPECT_EQ(mxmodule_composition_no_registers(composition.get()), nullptr);
}

TEST_F(CConfiguration, isComposedIntoAnImage)
{
    const std::vector<unsigned char> image = {2, 0, 1, 0xfc, 5, 0, 2, 0xfe};
    const mxmodule_assignment value = {"channel_1/Wires", "-4"};
    const auto composition = done([&](auto** error) {
        return mxmodule_compose(made.get(), &value, 1, image.data(), image.size(), MXMODULE_FULL,
                                error);
    });
    EXPECT_THAT(imageOf(composition), ElementsAre(2, 0, 1, 0xfc, 5, 0, 2, 0xfc));
}

// Expected is -4 to -2, but 7 fits into the byte.
TEST_F(CConfiguration, takesOtherNumbersWhereTheCallerSaysSo)
{
    const mxmodule_assignment value = {"channel_1/Wires", "7"};
    const auto compose = [&](mxmodule_value_check check) {
        return [&, check](auto** error) {
            return mxmodule_compose(made.get(), &value, 1, nullptr, 0, check, error);
        };
    };
    EXPECT_EQ(imageOf(done(compose(MXMODULE_NUMBER_ONLY))).back(), 7);
    const auto error = errorOf(compose(MXMODULE_FULL));
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
    EXPECT_STREQ(mxmodule_error_place(error.get()), "channel_1/Wires");
    EXPECT_THAT(mxmodule_error_text(error.get()), HasSubstr("expected a whole number, -4 to -2"));
}

TEST_F(CConfiguration, isRefusedForEveryReasonAtOnce)
{
    const mxmodule_assignment values[] = {{"channel_1/Wires", "7"}, {"Wires 2", "-2"}};
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_compose(made.get(), values, 2, nullptr, 0, MXMODULE_FULL, failure);
    });
    EXPECT_THAT(mxmodule_error_findings(error.get()), HasSubstr("\"place\": \"channel_1/Wires\""));
    EXPECT_THAT(mxmodule_error_findings(error.get()), HasSubstr("\"accepted\": ["));
    EXPECT_THAT(mxmodule_error_findings(error.get()), HasSubstr("\"place\": \"Wires 2\""));
    EXPECT_STREQ(mxmodule_error_place(error.get()), "Wires 2");
}

TEST_F(CConfiguration, isComposedOfAFileOfValues)
{
    const std::string values = same.defaults(Fieldbus::Raw).valuesFile(Listing::All);
    const auto composition = done([&](auto** error) {
        return mxmodule_compose_file(made.get(), values.data(), values.size(), "a.yaml",
                                     MXMODULE_FULL, error);
    });
    EXPECT_THAT(imageOf(composition), ElementsAre(0, 0x11, 0x94, 0xfd, 6, 0x11, 0x94, 0xfd));
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_compose_file(made.get(), "{", 1, "a.json", MXMODULE_FULL, failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_INPUT);
    EXPECT_THAT(mxmodule_error_place(error.get()), HasSubstr("a.json"));
}

TEST_F(CConfiguration, ofNoneIsNothing)
{
    std::size_t size = 99;
    EXPECT_EQ(mxmodule_composition_image(nullptr, &size), nullptr);
    EXPECT_EQ(size, 0U);
    size = 99;
    EXPECT_EQ(mxmodule_composition_registers(nullptr, &size), nullptr);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(mxmodule_composition_findings(nullptr), nullptr);
    EXPECT_EQ(mxmodule_composition_no_registers(nullptr), nullptr);
    const auto composition = composed({});
    EXPECT_NE(mxmodule_composition_image(composition.get(), nullptr), nullptr);
    EXPECT_NE(mxmodule_composition_registers(composition.get(), nullptr), nullptr);
}

TEST_F(CConfiguration, isDecoded)
{
    const char registers[] = "\x01\x00\x03\xe8\xfd\x00\x04\x00\x11\x94\xfe";
    const auto found = done([&](auto** error) {
        return mxmodule_decode(made.get(), registers, 12, MXMODULE_MODBUS, "meter", error);
    });
    EXPECT_EQ(
        bytesOf([&](auto** error) { return mxmodule_configuration_image(found.get(), error); }),
        std::string("\x01\x03\xe8\xfd\x06\x11\x94\xfe"));
    EXPECT_EQ(
        bytesOf([&](auto** error) { return mxmodule_configuration_bytes(found.get(), error); }),
        std::string(registers, 12));
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_decode(made.get(), registers, 11, MXMODULE_MODBUS, "meter", failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_INPUT);
    EXPECT_STREQ(mxmodule_error_place(error.get()), "meter");
}

TEST_F(CConfiguration, isTheImageOfTheCaller)
{
    const std::string image = "\x01\x03\xe8\xfd\x06\x11\x94\xfe";
    const auto found = done([&](auto** error) {
        return mxmodule_configure(made.get(), image.data(), image.size(), MXMODULE_RAW, error);
    });
    EXPECT_EQ(
        bytesOf([&](auto** error) { return mxmodule_configuration_image(found.get(), error); }),
        image);
}

TEST_F(CConfiguration, isWrittenAsByCpp)
{
    for (const auto fieldbus : {MXMODULE_RAW, MXMODULE_MODBUS}) {
        const auto found = defaults(fieldbus);
        const auto expected =
            same.defaults(fieldbus == MXMODULE_RAW ? Fieldbus::Raw : Fieldbus::Modbus);
        for (const auto listing : {MXMODULE_ALL, MXMODULE_CHANGED}) {
            const Listing listed = listing == MXMODULE_ALL ? Listing::All : Listing::Changed;
            const auto resultOf = [&](auto function) {
                return bytesOf([&](auto** error) { return function(found.get(), listing, error); });
            };
            EXPECT_EQ(resultOf(mxmodule_configuration_text), expected.text(listed));
            EXPECT_EQ(resultOf(mxmodule_configuration_values), expected.valuesFile(listed));
            EXPECT_EQ(bytesOf([&](auto** error) {
                          return mxmodule_configuration_csv(found.get(), listing, ';', 1, error);
                      }),
                      expected.csv({';', true}, listed));
        }
        EXPECT_THAT(bytesOf([&](auto** error) {
                        return mxmodule_configuration_json(found.get(), MXMODULE_ALL, error);
                    }),
                    HasSubstr(fieldbus == MXMODULE_RAW ? "\"fieldbus\": \"raw\""
                                                       : "\"fieldbus\": \"modbus\""));
    }
}

TEST_F(CConfiguration, hasFindings)
{
    const auto found = defaults(MXMODULE_RAW);
    EXPECT_EQ(
        bytesOf([&](auto** error) { return mxmodule_configuration_findings(found.get(), error); }),
        "{\n  \"schema\": {\n    \"name\": \"mxmodule.findings\",\n    \"version\": 1\n  },\n"
        "  \"findings\": []\n}\n");
}

TEST_F(CConfiguration, isComparedWithAnother)
{
    const auto wanted = defaults(MXMODULE_RAW);
    const std::string image("\x00\x11\x94\xfe\x06\x11\x94\xfd", 8); // Wires of channel 0
    const auto read = done([&](auto** error) {
        return mxmodule_decode(made.get(), image.data(), image.size(), MXMODULE_RAW, "a", error);
    });
    const auto compared = done(
        [&](auto** error) { return mxmodule_compare(wanted.get(), read.get(), nullptr, error); });
    EXPECT_THAT(
        bytesOf([&](auto** error) { return mxmodule_comparison_json(compared.get(), error); }),
        HasSubstr("\"read_shown\": \"-2\""));
    EXPECT_THAT(
        bytesOf([&](auto** error) { return mxmodule_comparison_text(compared.get(), error); }),
        HasSubstr("Wires"));
    EXPECT_THAT(bytesOf([&](auto** error) {
                    return mxmodule_comparison_csv(compared.get(), ';', 0, error);
                }),
                HasSubstr(";Wires;"));
}

TEST_F(CConfiguration, differsInBitsOfNoParameter)
{
    const auto serial = exampleForC("MX0701.bin");
    // Bit 7 of the second byte belongs to no parameter: Parity has bits 0 and 1, Stop bits bit 4.
    const auto configured = [&](const char* second) {
        const std::string image = std::string("\x03") + second +
                                  std::string("\x00\xfa\xee\xdd\xef\x0b\x82\x16\x7e\xeb", 10);
        return done([&](auto** error) {
            return mxmodule_configure(serial.get(), image.data(), image.size(), MXMODULE_RAW,
                                      error);
        });
    };
    const auto wanted = configured("\x01");
    const auto read = configured("\x81");
    const auto compared =
        done([&](auto** error) { return mxmodule_compare(wanted.get(), read.get(), "a", error); });
    EXPECT_THAT(
        bytesOf([&](auto** error) { return mxmodule_comparison_findings(compared.get(), error); }),
        HasSubstr("\"severity\": \"warning\""));
}

TEST_F(CConfiguration, isNotComparedWithThatOfAnotherModule)
{
    const auto wanted = defaults(MXMODULE_RAW);
    const auto other = exampleForC("MX0304.bin");
    const auto read = done([&](auto** error) {
        return mxmodule_configure(other.get(), nullptr, 0, MXMODULE_RAW, error);
    });
    const auto error = errorOf(
        [&](auto** failure) { return mxmodule_compare(wanted.get(), read.get(), "a", failure); });
    EXPECT_NE(mxmodule_error_code(error.get()), MXMODULE_DEFECT);
}

// What is used after the module is freed owns what it needs.
TEST(COwnership, allowsAnyOrderOfFreeing)
{
    auto made = exampleForC("MX0502.bin");
    auto moved = done([&](auto** error) { return mxmodule_at(made.get(), 2, 0, error); });
    auto wanted = done([&](auto** error) {
        return mxmodule_configure(made.get(), nullptr, 0, MXMODULE_MODBUS, error);
    });
    auto composition = done([&](auto** error) {
        return mxmodule_compose(made.get(), nullptr, 0, nullptr, 0, MXMODULE_FULL, error);
    });
    auto compared = done(
        [&](auto** error) { return mxmodule_compare(wanted.get(), wanted.get(), "a", error); });
    made.reset();
    EXPECT_EQ(registersOf(composition).size(), 6U);
    const auto findings =
        done([&](auto** error) { return mxmodule_configuration_findings(wanted.get(), error); });
    EXPECT_THAT(bytesOf([&](auto** error) {
                    return mxmodule_configuration_text(wanted.get(), MXMODULE_ALL, error);
                }),
                HasSubstr("Pt100"));
    wanted.reset();
    EXPECT_THAT(
        bytesOf([&](auto** error) { return mxmodule_comparison_json(compared.get(), error); }),
        HasSubstr("\"same\": true"));
    EXPECT_THAT(bytesOf([&](auto** error) { return mxmodule_channels_text(moved.get(), error); }),
                HasSubstr("IW2"));
    EXPECT_GT(mxmodule_bytes_size(findings.get()), 0U);
}

TEST(COwnership, ofANullPointerIsNothingToFree)
{
    mxmodule_bytes_free(nullptr);
    mxmodule_error_free(nullptr);
    mxmodule_free(nullptr);
    mxmodule_composition_free(nullptr);
    mxmodule_configuration_free(nullptr);
    mxmodule_comparison_free(nullptr);
    mxmodule_catalogue_free(nullptr);
}

} // namespace
