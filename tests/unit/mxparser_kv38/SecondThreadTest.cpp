// A second thread inside the library gets an exception. The first one is held where a host's own
// code is called, and continues normally afterwards.

#include "ExampleModule.h"
#include "LogCapture.h"
#include "ParserAccess.h"
#include "TemporaryDirectory.h"

#include <devices/database/DeviceDatabase.h>

#include <gmock/gmock.h>

#include <sys/wait.h>
#include <unistd.h>

#include <thread>

namespace {

using devices::parser::FieldbusType;
using devices::parser::mx::Parser_kv38;
using testing::ElementsAre;

std::string refusal(const std::string& operation)
{
    return operation + "(): Another thread is inside the library: put one mutex around its "
                       "operations, see docs/guide/threads.md";
}

// The text of the std::logic_error that `operation` throws on a thread of its own, empty without.
std::string refusalOnAnotherThread(const std::function<void()>& operation)
{
    std::string text;
    std::thread([&text, &operation] {
        try {
            operation();
        } catch (const std::logic_error& refused) {
            text = refused.what();
        }
    }).join();
    return text;
}

// A host's parser, which calls `meanwhile` during each translation.
class HeldParser : public Parser_kv38
{
public:
    std::function<void()> meanwhile;

protected:
    void parseContent() override
    {
        meanwhile();
        Parser_kv38::parseContent();
    }
};

class SecondThread : public testing::Test
{
protected:
    SecondThread() { device = other.parse(mxData, nullptr, 0, 0); }
    ~SecondThread() override { devices::database::insertThrough({}); }

    // The message of each operation on another thread; after `NAME: ` nothing if it works.
    std::vector<std::string> refusals()
    {
        const testkit::TemporaryDirectory directory;
        directory.write("MX1.bin", mxData);
        datamodel::ParamDevice values;
        values.deviceTypeId = device->deviceTypeId;
        return {
            refusalOnAnotherThread([&] { other.parse(mxData, nullptr, 0, 0); }),
            refusalOnAnotherThread([&] { other.populateDatabase(directory.path()); }),
            refusalOnAnotherThread([&] {
                other.getCalculatedRawConfig(FieldbusType::Raw, mxData, device.get(), &values);
            }),
            refusalOnAnotherThread([&] { other.getChannelMappingInfoList(device.get()); }),
        };
    }

    const std::vector<char> mxData = bufferOf(exampleGroups()).chars();
    Parser_kv38 other;
    std::shared_ptr<Parser_kv38::DeviceP> device;
    HeldParser held;
};

const auto everyOperationIsRefused =
    ElementsAre(refusal("Parser_kv38::parse"), refusal("Parser_kv38::populateDatabase"),
                refusal("Parser_kv38::getCalculatedRawConfig"),
                refusal("Parser_kv38::getChannelMappingInfoList"));
const auto noneIsRefused = ElementsAre("", "", "", "");

TEST_F(SecondThread, IsRefusedByEveryOperationDuringATranslation)
{
    std::vector<std::string> texts;
    held.meanwhile = [&] { texts = refusals(); };
    const auto translated = held.parse(mxData, nullptr, 0, 0);
    EXPECT_THAT(texts, everyOperationIsRefused);
    EXPECT_EQ(translated->attributes.size(), device->attributes.size());
}

TEST_F(SecondThread, IsRefusedWhileARecordIsInserted)
{
    std::vector<std::string> texts;
    devices::database::insertThrough([&](auto&) { texts = refusals(); });
    const testkit::TemporaryDirectory directory;
    directory.write("MX2.bin", mxData);
    EXPECT_EQ(Parser_kv38().populateDatabase(directory.path()), 1U);
    EXPECT_THAT(texts, everyOperationIsRefused);
}

TEST_F(SecondThread, WorksWhereTheFirstIsDone)
{
    devices::database::insertThrough([](auto&) {});
    EXPECT_THAT(refusals(), noneIsRefused);
}

TEST_F(SecondThread, WorksWhereTheFirstHasFailed)
{
    devices::database::insertThrough([](auto&) {});
    EXPECT_THROW(other.parse({'x'}, nullptr, 0, 0), std::runtime_error);
    EXPECT_THAT(refusals(), noneIsRefused);
}

TEST_F(SecondThread, LogsItsOperationAndNothingElse)
{
    std::vector<std::string> lines;
    held.meanwhile = [&] {
        const testkit::LogCapture log;
        refusals();
        lines = log.texts(Poco::Message::PRIO_TRACE);
        EXPECT_EQ(log.lines().size(), lines.size());
    };
    held.parse(mxData, nullptr, 0, 0);
    EXPECT_THAT(lines,
                ElementsAre(">> parse().", ">> populateDatabase().", ">> getCalculatedRawConfig().",
                            ">> getChannelMappingInfoList()."));
}

TEST_F(SecondThread, IsRefusedTheTextThatTheProcessHasOnce)
{
    testkit::ParserAccess container;
    container.index(mxData);
    held.meanwhile = [&] {
        EXPECT_EQ(
            refusalOnAnotherThread([&] { container.getGroupEntry(0x0020, "BrandLabelName"); }),
            refusal("Parser::getGroupEntry"));
    };
    held.parse(mxData, nullptr, 0, 0);
    EXPECT_EQ(refusalOnAnotherThread([&] { container.getGroupEntry(0x0020, "BrandLabelName"); }),
              "");
}

// A host's code that is called from an operation may call others.
TEST_F(SecondThread, IsNotTheSameThreadAgain)
{
    std::size_t attributes = 0;
    held.meanwhile = [&] {
        attributes = Parser_kv38().parse(mxData, nullptr, 0, 0)->attributes.size();
        // The end of the inner operation does not end the outer one.
        EXPECT_THAT(refusals(), everyOperationIsRefused);
        EXPECT_EQ(other.getChannelMappingInfoList(device.get()).size(), 4U);
    };
    held.parse(mxData, nullptr, 0, 0);
    EXPECT_EQ(attributes, device->attributes.size());
}

// The exit code of a child process in which `operation` returns (0) or is rejected (1).
int endOfChild(const std::function<void()>& operation)
{
    const pid_t child = fork();
    if (child == 0) {
        try {
            operation();
            _exit(0);
        } catch (const std::logic_error&) {
            _exit(1);
        }
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(SecondThread, ThatForksDuringATranslationLeavesTheLibraryInUseInTheChild)
{
    int ofOther = -1;
    int ofSame = -1;
    const auto operation = [this] { other.getChannelMappingInfoList(device.get()); };
    held.meanwhile = [&] {
        std::thread([&] { ofOther = endOfChild(operation); }).join();
        ofSame = endOfChild(operation);
    };
    held.parse(mxData, nullptr, 0, 0);
    EXPECT_EQ(ofOther, 1);
    EXPECT_EQ(ofSame, 0); // the thread that is inside continues in the child
    EXPECT_EQ(endOfChild(operation), 0);
}

} // namespace
