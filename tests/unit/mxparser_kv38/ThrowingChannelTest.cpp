#include "ConfiguredModule.h"
#include "ExampleModule.h"
#include "Failure.h"
#include "TemporaryDirectory.h"

#include <devices/database/DeviceDatabase.h>

#include <Poco/Logger.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <vector>

// The host's channel of the logger fails: at one line after the other, or always. The operation
// throws it like any other failure; the next one is not affected.

namespace {

using devices::database::usedDatabase;
using devices::parser::FieldbusType;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::failureOf;
using testkit::ParserAccess;

// Accepts every line but throws at line `number`, counted from 1, or at each.
class FailingChannel : public Poco::Channel
{
public:
    static constexpr std::size_t always = 0;

    void log(const Poco::Message& message) override
    {
        ++taken;
        if (failAt == always || taken == failAt) {
            failed = true;
            if (throwsNumber) {
                throw 42;
            }
            throw std::runtime_error("log is full");
        }
        lines.push_back(message.getText());
    }

    void startOver(std::size_t number)
    {
        failAt = number;
        taken = 0;
        failed = false;
        lines.clear();
    }

    std::size_t failAt = static_cast<std::size_t>(-1);
    std::size_t taken = 0;
    bool failed = false;
    bool throwsNumber = false; // which is not a std::exception
    std::vector<std::string> lines;
};

class ThrowingChannel : public testing::Test
{
protected:
    ThrowingChannel()
        : channel(new FailingChannel), previousChannel(module.parser.logger.getChannel())
    {
        module.parser.logger.setChannel(channel);
        module.parser.setLoggingLevel("trace");
    }
    ~ThrowingChannel() override
    {
        module.parser.logger.setChannel(previousChannel);
        module.parser.setLoggingLevel("information");
    }

    // Runs `operation` with the first line failing, then the second, until it has no more. Returns
    // how many there were.
    template <class Operation>
    std::size_t failEveryLine(Operation operation)
    {
        for (std::size_t number = 1;; ++number) {
            channel->startOver(number);
            std::string failure;
            try {
                operation();
            } catch (const std::runtime_error& thrown) {
                failure = thrown.what();
            }
            EXPECT_EQ(failure, channel->failed ? "log is full" : "") << number;
            if (!channel->failed || HasFailure()) {
                return number - 1;
            }
        }
    }

    // Without a failing line, everything works as usual.
    void expectNextRunIsGood()
    {
        channel->startOver(static_cast<std::size_t>(-1));
        const auto device = module.parser.parse(module.mxData, nullptr, 0, 0);
        EXPECT_EQ(device->attributes.size(), module.device->attributes.size());
        EXPECT_EQ(module.configuration(FieldbusType::Modbus).size(), 50U);
    }

    ConfiguredModule module = exampleModule("MX0304.bin");
    Poco::AutoPtr<FailingChannel> channel;
    Poco::AutoPtr<Poco::Channel> previousChannel;
};

TEST_F(ThrowingChannel, EndsATranslation)
{
    EXPECT_GT(failEveryLine([&] { module.parser.parse(module.mxData, nullptr, 0, 0); }), 100U);
    expectNextRunIsGood();
}

TEST_F(ThrowingChannel, EndsARawConfiguration)
{
    EXPECT_GT(failEveryLine([&] { module.configuration(FieldbusType::Modbus); }), 10U);
    expectNextRunIsGood();
}

TEST_F(ThrowingChannel, EndsAChannelMapping)
{
    EXPECT_EQ(failEveryLine([&] { module.parser.getChannelMappingInfoList(module.device.get()); }),
              1U);
    expectNextRunIsGood();
}

TEST_F(ThrowingChannel, IsNotAskedAboutLinesBelowTheLevel)
{
    module.parser.setLoggingLevel("information");
    channel->startOver(FailingChannel::always);
    EXPECT_NO_THROW(module.parser.parse(module.mxData, nullptr, 0, 0));
    EXPECT_EQ(channel->taken, 0U);
}

TEST_F(ThrowingChannel, MayThrowWhatIsNoException)
{
    channel->throwsNumber = true;
    channel->startOver(FailingChannel::always);
    EXPECT_THROW(module.parser.parse(module.mxData, nullptr, 0, 0), int);
    expectNextRunIsGood();
}

std::size_t openFiles()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(files, std::filesystem::directory_iterator()));
}

class ThrowingChannelInPopulate : public ThrowingChannel
{
protected:
    ThrowingChannelInPopulate()
    {
        devices::database::useDatabase("sqlite::memory:");
        directory.write("MX1.bin", bufferOf(exampleGroups()).chars());
        files = openFiles();
    }

    unsigned populate() { return module.parser.populateDatabase(directory.path()); }

    testkit::TemporaryDirectory directory;
    std::size_t files = 0;
};

TEST_F(ThrowingChannelInPopulate, SkipsTheFileOrEndsTheWalk)
{
    std::size_t skipped = 0;
    std::size_t ended = 0;
    for (std::size_t number = 1;; ++number) {
        channel->startOver(number);
        unsigned inserted = 0;
        try {
            inserted = populate();
            skipped += channel->failed ? 1U : 0U;
        } catch (const std::runtime_error& failure) {
            EXPECT_STREQ(failure.what(), "log is full");
            ++ended;
        }
        if (!channel->failed) {
            EXPECT_EQ(inserted, 1U);
            break;
        }
        // Within the translation the failure is the file's.
        EXPECT_EQ(inserted, 0U);
        EXPECT_THAT(usedDatabase().list(), IsEmpty());
        EXPECT_EQ(openFiles(), files);
    }
    EXPECT_EQ(ended, 2U); // ">> populateDatabase()." and "Loading mx file ..."
    EXPECT_GT(skipped, 20U);
}

TEST_F(ThrowingChannelInPopulate, EndsTheWalkWhereTheFailureItselfCannotBeLogged)
{
    directory.write("MX1.bin", {0, 5, 0, 6, 0, 0});
    module.parser.setLoggingLevel("error");
    channel->startOver(FailingChannel::always);
    EXPECT_EQ(failureOf([&] { populate(); }), "log is full");
    EXPECT_EQ(openFiles(), files);
    channel->startOver(2);
    EXPECT_EQ(populate(), 0U);
    EXPECT_THAT(channel->lines, ElementsAre("File MX1.bin: Parser::getTavoDatasetFromGroup(): No "
                                            "such group: 0001"));
}

TEST_F(ThrowingChannelInPopulate, WhatIsNoExceptionEndsTheWalk)
{
    channel->throwsNumber = true;
    for (const std::size_t number : {1U, 2U, 3U, 20U}) {
        channel->startOver(number);
        EXPECT_THROW(populate(), int) << number;
        EXPECT_EQ(openFiles(), files) << number;
    }
    EXPECT_THAT(usedDatabase().list(), IsEmpty());
}

} // namespace
