// The errors of the C interface: what each is about.
#include "CallsOfC.h"

#include "TemporaryDirectory.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

TEST(CError, isAboutARequest)
{
    const auto made = exampleForC("MX0502.bin");
    std::size_t position = 0;
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_parameter_called(made.get(), "Wires", &position, failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
    EXPECT_STREQ(mxmodule_error_place(error.get()), "Wires");
    EXPECT_STREQ(mxmodule_error_text(error.get()),
                 "2 parameters are called \"Wires\", expected one of \"Temperature 1/Wires\", "
                 "\"channel_1/Wires\"");
}

TEST(CError, isAboutAnInput)
{
    const auto error = errorOf([](auto** failure) {
        return mxmodule_load(examplePath("MX9999.bin").c_str(), 0, 0, failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_INPUT);
    EXPECT_EQ(mxmodule_error_place(error.get()), examplePath("MX9999.bin"));
    EXPECT_STREQ(mxmodule_error_text(error.get()), "Parser::parse(): Truncated mx buffer");
}

TEST(CError, isAboutAnOutput)
{
    const testkit::TemporaryDirectory directory;
    const std::string url = "sqlite:" + directory.path("none/devices.sqlite");
    const auto error =
        errorOf([&](auto** failure) { return mxmodule_catalogue_open(url.c_str(), 1, failure); });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_OUTPUT);
    EXPECT_THAT(mxmodule_error_text(error.get()), HasSubstr("none/devices.sqlite"));
}

TEST(CError, hasAHint)
{
    const auto made = exampleForC("MX0502.bin");
    const mxmodule_assignment value = {"Wire", "-2"};
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_compose(made.get(), &value, 1, nullptr, 0, MXMODULE_FULL, failure);
    });
    EXPECT_STREQ(mxmodule_error_hint(error.get()),
                 "mxtool config FILE without further arguments lists the parameters");
}

TEST(CError, isUtf8WhateverTheCallerPasses)
{
    const auto made = exampleForC("MX0502.bin");
    std::size_t position = 0;
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_parameter_called(made.get(), "Wires\xb1", &position, failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
    EXPECT_STREQ(mxmodule_error_place(error.get()), "Wires±");
    EXPECT_THAT(mxmodule_error_text(error.get()), HasSubstr("\"Wires±\""));
    EXPECT_THAT(mxmodule_error_findings(error.get()), HasSubstr("\"place\": \"Wires±\""));
}

TEST(CError, ofANullPointerIsEmpty)
{
    EXPECT_EQ(mxmodule_error_code(nullptr), 0);
    EXPECT_STREQ(mxmodule_error_text(nullptr), "");
    EXPECT_STREQ(mxmodule_error_place(nullptr), "");
    EXPECT_STREQ(mxmodule_error_hint(nullptr), "");
    EXPECT_STREQ(mxmodule_error_findings(nullptr), "");
}

TEST(CNothing, isTakenWhereThereAreNoBytes)
{
    const auto error = errorOf([](auto** failure) {
        return mxmodule_from_bytes(nullptr, 0, "a.bin", 0, 0, failure) != nullptr;
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_INPUT);
    EXPECT_STREQ(mxmodule_error_place(error.get()), "a.bin");
}

} // namespace
