// The channels of two modules as columns: MX0502 with two inputs of 16 bits, from byte 4 on, and
// MX0108 with eight of 1 bit.
#include "CallsOfC.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::StartsWith;

class CColumns : public testing::Test
{
protected:
    CColumns()
    {
        auto meter = done([](auto** error) {
            return mxmodule_load(examplePath("MX0502.bin").c_str(), 4, 0, error);
        });
        auto switches = exampleForC("MX0108.bin");
        const mxmodule_module* const modules[] = {meter.get(), switches.get()};
        columns = done([&](auto** error) { return mxmodule_columns_of(modules, 2, error); });
    }

    // The first three numbers of a column.
    std::vector<std::uint32_t> firstOf(mxmodule_number_column column) const
    {
        const std::uint32_t* numbers = mxmodule_columns_numbers(columns.get(), column);
        return {numbers, numbers + 3};
    }

    std::string textsOf(mxmodule_text_column column) const
    {
        return mxmodule_columns_texts(columns.get(), column);
    }

    OwnedByC<mxmodule_columns> columns; // its modules are freed
};

TEST_F(CColumns, haveARowForEachChannel)
{
    EXPECT_EQ(mxmodule_columns_rows(columns.get()), 10U);
    EXPECT_THAT(firstOf(MXMODULE_COLUMN_MODULE), ElementsAre(0, 0, 1));
    EXPECT_THAT(firstOf(MXMODULE_COLUMN_NUMBER), ElementsAre(0, 1, 0));
    EXPECT_THAT(firstOf(MXMODULE_COLUMN_AREA), ElementsAre('I', 'I', 'I'));
    EXPECT_THAT(firstOf(MXMODULE_COLUMN_KIND), ElementsAre('W', 'W', 'X'));
    EXPECT_THAT(firstOf(MXMODULE_COLUMN_BYTE), ElementsAre(4, 6, 0));
    EXPECT_THAT(firstOf(MXMODULE_COLUMN_BIT_LENGTH), ElementsAre(16, 16, 1));
    EXPECT_THAT(firstOf(MXMODULE_COLUMN_MASK), ElementsAre(255, 255, 1));
    EXPECT_EQ(mxmodule_columns_numbers(columns.get(), MXMODULE_COLUMN_BIT_OFFSET)[9], 7U);
}

TEST_F(CColumns, haveTextsAsJson)
{
    EXPECT_THAT(textsOf(MXMODULE_COLUMN_ID), StartsWith(R"(["24","25","28",)"));
    EXPECT_THAT(textsOf(MXMODULE_COLUMN_NAME),
                StartsWith(R"(["Temperature 1","channel_1","DI 1")"));
    EXPECT_THAT(textsOf(MXMODULE_COLUMN_SYMBOL), StartsWith(R"(["IW4","IW6","IX0_0",)"));
    EXPECT_EQ(textsOf(MXMODULE_COLUMN_MODULE_ID), R"(["5a050502","5a010108"])");
    EXPECT_EQ(textsOf(MXMODULE_COLUMN_LABEL), R"(["2 AI RTD Pt100","8 DI 24 V DC 3 ms"])");
}

TEST_F(CColumns, areNoneWhereThereIsNoSuchColumn)
{
    EXPECT_EQ(mxmodule_columns_numbers(columns.get(), static_cast<mxmodule_number_column>(8)),
              nullptr);
    EXPECT_EQ(mxmodule_columns_numbers(columns.get(), static_cast<mxmodule_number_column>(-1)),
              nullptr);
    EXPECT_EQ(mxmodule_columns_texts(columns.get(), static_cast<mxmodule_text_column>(5)), nullptr);
    EXPECT_EQ(mxmodule_columns_rows(nullptr), 0U);
    EXPECT_EQ(mxmodule_columns_numbers(nullptr, MXMODULE_COLUMN_BYTE), nullptr);
    EXPECT_EQ(mxmodule_columns_texts(nullptr, MXMODULE_COLUMN_ID), nullptr);
    mxmodule_columns_free(nullptr);
}

TEST_F(CColumns, ofNoModulesHaveNoRows)
{
    const auto none = done([](auto** error) { return mxmodule_columns_of(nullptr, 0, error); });
    EXPECT_EQ(mxmodule_columns_rows(none.get()), 0U);
    EXPECT_STREQ(mxmodule_columns_texts(none.get(), MXMODULE_COLUMN_ID), "[]");
}

TEST_F(CColumns, areNotMadeOfNullPointers)
{
    const mxmodule_module* const modules[] = {nullptr};
    for (const auto* given : {static_cast<const mxmodule_module* const*>(nullptr), &modules[0]}) {
        const auto error =
            errorOf([&](auto** failure) { return mxmodule_columns_of(given, 1, failure); });
        EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_MISUSE);
        EXPECT_THAT(mxmodule_error_text(error.get()),
                    StartsWith("Found a null pointer, expected "));
    }
}

} // namespace
