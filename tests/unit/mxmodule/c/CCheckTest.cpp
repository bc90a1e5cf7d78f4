// The rules of check through the C interface.
#include "CallsOfC.h"

#include "TemporaryDirectory.h"

#include <mxmodule/Check.h>
#include <mxmodule/ModuleFile.h>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class CCheck : public testing::Test
{
protected:
    // Group 5 states a length of 5 bytes, below the minimum.
    const testkit::TemporaryDirectory directory;
    const std::string broken =
        directory.write("broken.bin", {0x20, '\xd3', 0, 8, 0, 2, 0, 0, 0, 5, 0, 5, 0, 0, 0, 0});
    const std::string good = examplePath("MX0001.bin");
    const char* const paths[2] = {broken.c_str(), good.c_str()};
    const std::vector<mxmodule::CheckedFile> same = {mxmodule::ModuleFile::read(broken).check(),
                                                     mxmodule::ModuleFile::read(good).check()};
};

TEST_F(CCheck, findsWhatCppFinds)
{
    const std::string json = bytesOf([&](auto** error) { return mxmodule_check(paths, 2, error); });
    EXPECT_EQ(json, mxmodule::checkJson(same));
    EXPECT_THAT(json, HasSubstr("\"rule\": \"framing\""));
    EXPECT_EQ(bytesOf([&](auto** error) { return mxmodule_check_sarif(paths, 2, error); }),
              mxmodule::checkSarif(same));
}

TEST_F(CCheck, findsNothingInNoFiles)
{
    EXPECT_THAT(bytesOf([](auto** error) { return mxmodule_check(nullptr, 0, error); }),
                HasSubstr("\"errors\": 0"));
}

TEST_F(CCheck, namesAFileThatCannotBeRead)
{
    const std::string missing = directory.path("none.bin");
    const char* const files[] = {paths[1], missing.c_str()};
    const auto error = errorOf([&](auto** failure) { return mxmodule_check(files, 2, failure); });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_INPUT);
    EXPECT_EQ(mxmodule_error_place(error.get()), missing);
}

TEST_F(CCheck, listsTheRules)
{
    EXPECT_EQ(bytesOf(mxmodule_check_rules), mxmodule::checkRulesJson());
}

} // namespace
