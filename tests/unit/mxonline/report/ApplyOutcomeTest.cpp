// How a report is filled: what was found, planned and read back, and what to do.
#include "coupler/CouplerFixture.h"
#include "coupler/RegisterPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mxonline {

namespace {

using Words = std::vector<std::uint16_t>;

// Registers 1000 and 1008.
constexpr const char* station = R"(
modbus: {parameters: {address: 1000}COMMIT}
modules:
  - {module: MX0304.bin, parameters: {Mains suppression: 60, AI 2/Upper limit: 9 V}}
)";

std::string stationWith(const std::string& commit)
{
    std::string source = station;
    return source.replace(source.find("COMMIT"), 6, commit);
}

ApplyReport applied(RegisterPeer& peer, const std::string& commit = "")
{
    Coupler coupler(onlinePlan(stationWith(commit)), peer.target());
    return coupler.apply(coupler.difference());
}

TEST(ApplyOutcome, HasTheRegisters)
{
    RegisterPeer peer;
    peer.put(1000, defaultsOf0304);
    peer.afterWrite = [](auto& registers) { registers[1008] = 0x251C; };
    const AppliedParameter one = applied(peer).modules[0].parameters[1];
    EXPECT_EQ(one.found, Words{0x251D});
    EXPECT_EQ(one.planned, Words{9000});
    EXPECT_EQ(one.now, Words{0x251C});
}

TEST(ApplyOutcome, SaysWhatToDoWithAValueThatDoesNotStick)
{
    RegisterPeer peer;
    peer.put(1000, defaultsOf0304);
    peer.afterWrite = [](auto& registers) { registers[1008] = 0x251D; };
    const ApplyReport report = applied(peer);
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].hint.substr(0, 30), "the module keeps another value");
}

TEST(ApplyOutcome, SaysWhatToDoWithWhatWasNotWritten)
{
    RegisterPeer peer;
    peer.put(1000, defaultsOf0304);
    peer.onWrite = [](unsigned address, unsigned) { return address == 1008 ? 3 : 0; };
    const ApplyReport report = applied(peer);
    ASSERT_EQ(report.findings.size(), 2U); // the refused request, and the value
    EXPECT_EQ(report.findings[1].hint.substr(0, 21), "it was not written: c");
    EXPECT_EQ(report.reasons(), std::vector<std::string>{"1 parameter is not as planned"});
}

TEST(ApplyOutcome, SaysThatAnotherOneChangedAValue)
{
    RegisterPeer peer;
    peer.put(1000, defaultsOf0304);
    peer.afterWrite = [](auto& registers) { registers[1004] = 0x003D; };
    const ApplyReport report = applied(peer);
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].hint.substr(0, 24), "it was as planned before");
    EXPECT_TRUE(report.modules[0].parameters[1].found.empty());
}

// A coupler that does not answer the commit: it is not done, though
// all parameters were written.
TEST(ApplyOutcome, IsNotDoneWithoutTheCommit)
{
    RegisterPeer peer;
    peer.put(1000, defaultsOf0304);
    peer.onWrite = [](unsigned address, unsigned) { return address == 5 ? 4 : 0; };
    const ApplyReport report = applied(peer, ", commit: {address: 5}");
    EXPECT_FALSE(report.isDone());
    EXPECT_TRUE(report.isReadBack);
    EXPECT_EQ(report.reasons(),
              std::vector<std::string>{
                  "the commit was not confirmed: what was written may not be active"});
}

// 25 parameters, of which two differed.
TEST(ApplyOutcome, CountsWhatWasWrittenAgain)
{
    RegisterPeer peer;
    peer.put(1000, defaultsOf0304);
    EXPECT_EQ(applied(peer).modules[0].writtenAgain, 0U);
    peer.put(1000, defaultsOf0304);
    peer.put(5, {0});
    const ApplyReport report = applied(peer, ", commit: {address: 5, reads: active}");
    EXPECT_TRUE(report.isDone());
    EXPECT_EQ(report.modules[0].writtenAgain, 23U);
}

} // namespace

} // namespace mxonline
