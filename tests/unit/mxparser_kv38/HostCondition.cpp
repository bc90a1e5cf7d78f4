#include "LostMemoryExpected.h"
#include "ParserAccess.h"

#include "devices/parser/mx/LoadFile.h"

#include <Poco/Logger.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <string>

// Runs the whole program under a condition that a host may create, named by HOST_CONDITION:
// "locale", "two-parsers" or "level-" and a level. Without it nothing is changed.

namespace {

using testkit::ParserAccess;

// Groups every digit and writes a comma for the decimal point.
struct GroupedDigits : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

// The locale that the environment names, for C and for C++, with grouped digits.
void useLocaleOfTheHost()
{
    const testkit::LostMemoryExpected lost; // the C library's own, where LOCPATH is set
    const char* const name = std::setlocale(LC_ALL, "");
    ASSERT_STREQ(name, "de_DE.UTF-8") << "LC_ALL and LOCPATH name no such locale";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    const std::locale host(std::locale(""), new GroupedDigits);
    std::locale::global(host);
    ASSERT_STREQ(std::setlocale(LC_ALL, name), name);
    for (std::ostream* stream : {&std::cout, &std::cerr, &std::clog}) {
        stream->imbue(host);
    }
}

// A parser in addition to those of the tests, which translates and configures a module of its own.
class OtherParser
{
public:
    OtherParser()
    {
        devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/MX0304.bin", module);
    }

    void work()
    {
        const auto device = parser.parse(module, nullptr, 1000, 2000);
        datamodel::ParamDevice user;
        user.deviceTypeId = device->deviceTypeId;
        parser.getCalculatedRawConfig(devices::parser::FieldbusType::Modbus, module, device.get(),
                                      &user);
        parser.getChannelMappingInfoList(device.get());
    }

private:
    std::vector<char> module;
    devices::parser::mx::Parser_kv38 parser;
};

// Runs the other parser without log lines: tests examine those of their own.
void letOtherParserWork()
{
    Poco::Logger& logger = Poco::Logger::get("mxparser-kv38");
    const int level = logger.getLevel();
    static OtherParser other;
    logger.setLevel(0);
    other.work();
    logger.setLevel(level);
}

class HostCondition : public testing::Environment
{
public:
    void SetUp() override
    {
        const char* const variable = std::getenv("HOST_CONDITION");
        const std::string condition = variable == nullptr ? "" : variable;
        const std::string level = "level-";
        if (condition == "locale") {
            useLocaleOfTheHost();
        } else if (condition == "two-parsers") {
            ParserAccess::beforeOperation = letOtherParserWork;
        } else if (condition.compare(0, level.size(), level) == 0) {
            ParserAccess::levelOfNewParsers = condition.substr(level.size());
        } else {
            ASSERT_EQ(condition, "") << "no such condition";
        }
    }
};

const testing::Environment* const hostCondition =
    testing::AddGlobalTestEnvironment(new HostCondition);

} // namespace
