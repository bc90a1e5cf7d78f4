#include "coupler/CouplerFixture.h"
#include "coupler/RegisterPeer.h"

#include <mxstation/ParameterExport.h>

#include <gtest/gtest.h>

#include <Poco/DigestEngine.h>
#include <Poco/SHA2Engine.h>

#include <algorithm>
#include <string>
#include <vector>

namespace mxonline {

namespace {

using Words = std::vector<std::uint16_t>;
using Texts = std::vector<std::string>;

constexpr const char* twoModules = R"(
modbus: {unit: 9, parameters: {address: 1000, stride: 25}, identity: {address: 500}}
modules:
  - {module: MX0304.bin, name: Levels, parameters: {Mains suppression: 60, AI 2/Upper limit: 9 V}}
  - {module: MX0304.bin, name: Flows, parameters: {AI 1: {Upper limit: 1 V, Lower limit: -1 V}}}
)";

std::string withCommit(const std::string& commit)
{
    std::string source = twoModules;
    return source.replace(source.find(", identity"), 0, ", commit: " + commit);
}

void putModules(RegisterPeer& peer)
{
    peer.put(500, {0x5A03, 0x0304, 0x5A03, 0x0304});
    peer.put(1000, defaultsOf0304);
    peer.put(1025, defaultsOf0304);
}

ApplyReport applied(Coupler& coupler)
{
    return coupler.apply(coupler.difference());
}

// As "MODULE PARAMETER FOUND -> PLANNED, now NOW: OUTCOME", with "unwritten" where it is.
Texts shown(const ApplyReport& report)
{
    Texts lines;
    for (const AppliedModule& module : report.modules) {
        for (const AppliedParameter& one : module.parameters) {
            lines.push_back(module.name + " " + one.parameter + " " + one.foundShown + " -> " +
                            one.plannedShown + ", now " + one.nowShown + ": " +
                            writeOutcomeName(one.outcome) + (one.isWritten ? "" : " unwritten"));
        }
    }
    return lines;
}

Texts requestedWrites(const RegisterPeer& peer)
{
    Texts writes;
    for (const std::string& request : peer.requests()) {
        if (request.compare(0, 3, "16 ") == 0) {
            writes.push_back(request.substr(3));
        }
    }
    return writes;
}

std::string sumOf(const std::vector<char>& bytes)
{
    Poco::SHA2Engine engine(Poco::SHA2Engine::SHA_256);
    engine.update(bytes.data(), bytes.size());
    return Poco::DigestEngine::digestToHex(engine.digest());
}

// The limits of "Flows" follow each other: one request.
TEST(Apply, WritesWholeParametersThatDiffer)
{
    RegisterPeer peer;
    putModules(peer);
    Coupler coupler(onlinePlan(twoModules), peer.target());
    const ApplyReport report = applied(coupler);
    EXPECT_TRUE(report.isDone());
    EXPECT_TRUE(report.findings.empty());
    EXPECT_EQ(requestedWrites(peer), (Texts{"1000 1", "1008 1", "1027 2"}));
    EXPECT_EQ(peer.at(1000, 1), (Words{0x3C00}));
    EXPECT_EQ(peer.at(1008, 1), (Words{9000}));
    EXPECT_EQ(peer.at(1027, 2), (Words{1000, static_cast<std::uint16_t>(-1000)}));
    EXPECT_EQ(shown(report), (Texts{"Levels Mains suppression 50 Hz -> 60 Hz, now 60 Hz: verified",
                                    "Levels AI 2/Upper limit 9.501 V -> 9 V, now 9 V: verified",
                                    "Flows AI 1/Upper limit 9.5 V -> 1 V, now 1 V: verified",
                                    "Flows AI 1/Lower limit -9.5 V -> -1 V, now -1 V: verified"}));
    EXPECT_TRUE(coupler.difference().isSame());
}

// The sums are those of the files that a master would be given.
TEST(Apply, TheReportHasTheSumsOfWhatIsThere)
{
    RegisterPeer peer;
    putModules(peer);
    const mxstation::Plan plan = onlinePlan(twoModules);
    Coupler coupler(plan, peer.target());
    const ApplyReport report = applied(coupler);
    const auto files = parameterFiles(plan, mxmodule::Fieldbus::Modbus);
    std::vector<char> all = files[0].bytes;
    all.insert(all.end(), files[1].bytes.begin(), files[1].bytes.end());
    EXPECT_EQ(report.modules[0].sum, sumOf(files[0].bytes));
    EXPECT_EQ(report.modules[1].sum, sumOf(files[1].bytes));
    EXPECT_EQ(report.sum, sumOf(all));
    EXPECT_EQ(report.stationSum, sumOf({plan.source.begin(), plan.source.end()}));
    EXPECT_EQ(report.started.size(), std::string("2026-01-31T08:15:00.123Z").size());
    EXPECT_LE(report.started, report.finished);
}

TEST(Apply, WritesNothingWhereNothingDiffers)
{
    RegisterPeer peer;
    putModules(peer);
    Coupler coupler(onlinePlan(twoModules), peer.target());
    EXPECT_TRUE(applied(coupler).isDone());
    const auto before = requestedWrites(peer).size();
    const ApplyReport again = applied(coupler);
    EXPECT_TRUE(again.isDone());
    EXPECT_TRUE(shown(again).empty());
    EXPECT_EQ(requestedWrites(peer).size(), before);
}

TEST(Apply, EndsWithTheCommitEvenIfNothingIsWritten)
{
    RegisterPeer peer;
    putModules(peer);
    Coupler coupler(onlinePlan(withCommit("{address: 999, value: 42}")), peer.target());
    EXPECT_TRUE(applied(coupler).isDone());
    EXPECT_EQ(requestedWrites(peer), (Texts{"1000 1", "1008 1", "1027 2", "999 1"}));
    EXPECT_EQ(peer.at(999, 1), (Words{42}));
    const ApplyReport again = applied(coupler);
    EXPECT_TRUE(again.isDone());
    EXPECT_TRUE(again.isCommitted);
    EXPECT_EQ(requestedWrites(peer), (Texts{"1000 1", "1008 1", "1027 2", "999 1", "999 1"}));
}

// What an interrupted run staged cannot be read: 50 registers, all written.
TEST(Apply, WritesEverythingWhereReadsAreActive)
{
    RegisterPeer peer;
    putModules(peer);
    Coupler coupler(onlinePlan(withCommit("{address: 999, reads: active}")), peer.target());
    EXPECT_TRUE(applied(coupler).isDone());
    EXPECT_EQ(requestedWrites(peer), (Texts{"1000 50", "999 1"}));
}

TEST(Apply, AWriteIsNeverLargerThanTheMapAllows)
{
    RegisterPeer peer;
    putModules(peer);
    std::string source = withCommit("{address: 999, reads: active}");
    source.replace(source.find(", identity"), 0, ", most_written: 20");
    Coupler coupler(onlinePlan(source), peer.target());
    EXPECT_TRUE(applied(coupler).isDone());
    EXPECT_EQ(requestedWrites(peer), (Texts{"1000 20", "1020 20", "1040 10", "999 1"}));
}

TEST(Apply, AnotherModuleStopsItBeforeTheFirstWrite)
{
    RegisterPeer peer;
    putModules(peer);
    peer.put(502, {0x5A03, 0x0302});
    Coupler coupler(onlinePlan(twoModules), peer.target());
    EXPECT_EQ(failureOf([&coupler] { static_cast<void>(applied(coupler)); }),
              "module 2 \"Flows\" is 5a030304 in the station, the coupler has 5a030302");
    EXPECT_TRUE(requestedWrites(peer).empty());
}

TEST(Apply, WhatWasNotConfirmedIsNotWritten)
{
    RegisterPeer peer;
    putModules(peer);
    Coupler coupler(onlinePlan(twoModules), peer.target());
    CouplerDifference confirmed = coupler.difference();
    confirmed.modules[0].parameters[0].found = {0x2800};
    EXPECT_EQ(failureOf([&] { static_cast<void>(coupler.apply(confirmed)); }),
              "the coupler no longer has the parameters that were shown; nothing was written");
    EXPECT_TRUE(requestedWrites(peer).empty());
}

TEST(Apply, WhatWasConfirmedForAnotherCouplerIsNotWritten)
{
    RegisterPeer peer;
    putModules(peer);
    Coupler coupler(onlinePlan(twoModules), peer.target());
    CouplerDifference confirmed = coupler.difference();
    confirmed.map.unit = 8; // behind the same gateway
    EXPECT_EQ(failureOf([&] { static_cast<void>(coupler.apply(confirmed)); }),
              "what was agreed to is for " + confirmed.target + " unit 8; nothing was written");
    confirmed.target = "tcp:10.0.0.7:502";
    EXPECT_EQ(failureOf([&] { static_cast<void>(coupler.apply(confirmed)); }),
              "what was agreed to is for tcp:10.0.0.7:502 unit 8; nothing was written");
    EXPECT_TRUE(requestedWrites(peer).empty());
}

// "Flows" becomes an MX0302 after the first write.
TEST(Apply, AModuleThatIsExchangedMeanwhileIsReported)
{
    RegisterPeer peer;
    putModules(peer);
    peer.afterWrite = [](std::map<unsigned, std::uint16_t>& registers) { registers[503] = 0x0302; };
    Coupler coupler(onlinePlan(twoModules), peer.target());
    const ApplyReport report = applied(coupler);
    EXPECT_FALSE(report.isDone());
    EXPECT_FALSE(report.isReadBack);
    EXPECT_EQ(report.modules[0].identification, Identification::Same);
    EXPECT_EQ(report.modules[1].identification, Identification::Other);
    EXPECT_EQ(report.modules[1].foundId, "5a030302");
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].text,
              "module 2 \"Flows\" is 5a030304 in the station, the coupler has 5a030302");
    EXPECT_EQ(report.findings[0].hint.find("written"), std::string::npos); // something was
}

// Ends the writing before the second request.
class EndingObserver : public mxmodule::Observer
{
public:
    void progress(std::size_t done, std::size_t /*total*/, const char* /*things*/) override
    {
        if (done == 1) {
            throw mxmodule::Failure(mxmodule::Origin::Output, "", "ended by the host");
        }
    }
};

TEST(Apply, IsEndedByItsObserverWithoutACommit)
{
    RegisterPeer peer;
    putModules(peer);
    peer.put(999, {0});
    EndingObserver observer;
    Coupler coupler(onlinePlan(withCommit("{address: 999, reads: staged}")), peer.target(),
                    &observer);
    const ApplyReport report = applied(coupler);
    EXPECT_EQ(requestedWrites(peer), Texts{"1000 1"});
    EXPECT_TRUE(report.isReadBack);
    EXPECT_FALSE(report.isCommitted);
    EXPECT_FALSE(report.isDone());
    EXPECT_EQ(report.findings.front().text, "ended by the host");
}

// Without registers that identify modules a report says so, and goes on.
TEST(Apply, WithoutIdentityNoModuleIsIdentified)
{
    RegisterPeer peer;
    putModules(peer);
    std::string source = twoModules;
    source.replace(source.find(", identity: {address: 500}"), 26, "");
    Coupler coupler(onlinePlan(source), peer.target());
    const ApplyReport report = applied(coupler);
    EXPECT_TRUE(report.isDone());
    EXPECT_EQ(report.modules[0].identification, Identification::NotPossible);
}

TEST(Apply, AValueThatDoesNotStickIsNeverDone)
{
    RegisterPeer peer;
    putModules(peer);
    peer.afterWrite = [](auto& registers) { registers[1008] = 0x251D; };
    Coupler coupler(onlinePlan(twoModules), peer.target());
    const ApplyReport report = applied(coupler);
    EXPECT_FALSE(report.isDone());
    EXPECT_TRUE(report.isReadBack);
    EXPECT_EQ(shown(report)[1], "Levels AI 2/Upper limit 9.501 V -> 9 V, now 9.501 V: different");
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].text, "module 1 \"Levels\", parameter \"AI 2/Upper limit\": "
                                       "register 1008 (0x03f0): read back 9.501 V, planned 9 V");
}

// Writing one parameter changes another one, which was as planned.
TEST(Apply, AParameterThatChangesByItselfIsReported)
{
    RegisterPeer peer;
    putModules(peer);
    peer.afterWrite = [](auto& registers) { registers[1004] = 0x003D; };
    Coupler coupler(onlinePlan(twoModules), peer.target());
    const ApplyReport report = applied(coupler);
    EXPECT_FALSE(report.isDone());
    EXPECT_EQ(shown(report)[1], "Levels AI 1/Hysteresis  -> 1 %, now 1.1 %: different unwritten");
}

TEST(Apply, ARefusedWriteEndsItAndTheRestIsReadBack)
{
    RegisterPeer peer;
    putModules(peer);
    peer.onWrite = [](unsigned address, unsigned) { return address == 1008 ? 3 : 0; };
    Coupler coupler(onlinePlan(withCommit("{address: 999}")), peer.target());
    const ApplyReport report = applied(coupler);
    EXPECT_FALSE(report.isDone());
    EXPECT_FALSE(report.isCommitted);
    EXPECT_TRUE(report.isReadBack);
    EXPECT_EQ(requestedWrites(peer), (Texts{"1000 1", "1008 1"}));
    EXPECT_EQ(shown(report),
              (Texts{"Levels Mains suppression 50 Hz -> 60 Hz, now 60 Hz: verified",
                     "Levels AI 2/Upper limit 9.501 V -> 9 V, now 9.501 V: different unwritten",
                     "Flows AI 1/Upper limit 9.5 V -> 1 V, now 9.5 V: different unwritten",
                     "Flows AI 1/Lower limit -9.5 V -> -1 V, now -9.5 V: different unwritten"}));
    const std::string text = report.findings.front().text;
    EXPECT_EQ(text.substr(0, text.find(';')),
              "module 1 \"Levels\", parameter \"AI 2/Upper limit\": register 1008 (0x03f0) cannot "
              "be written: exception 3 \"illegal data value\"");
}

// An apply takes eight requests: identity, parameters, three writes, the commit, and both again.
// After each number of answers the coupler closes connections: no report is done, and the next run,
// with a coupler that answers again, ends as planned.
TEST(Apply, AfterEveryFaultTheNextRunFinishesTheWork)
{
    for (int answers = 0; answers < 8; ++answers) {
        RegisterPeer peer;
        putModules(peer);
        Coupler coupler(onlinePlan(withCommit("{address: 999}")), peer.target());
        const CouplerDifference difference = coupler.difference();
        peer.answersUntilSilence = answers;
        bool isDone = false;
        std::string fault = failureOf([&] {
            const ApplyReport report = coupler.apply(difference);
            isDone = report.isDone();
            EXPECT_FALSE(report.isReadBack);
            const Texts lines = shown(report);
            EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                                    [](const std::string& line) {
                                        return line.find("not read back") != std::string::npos;
                                    }),
                      4);
        });
        EXPECT_FALSE(isDone) << answers;
        EXPECT_EQ(fault == "no failure", answers >= 2)
            << answers << fault; // from the first write on
        peer.answersUntilSilence = -1;
        Coupler again(onlinePlan(withCommit("{address: 999}")), peer.target());
        EXPECT_TRUE(applied(again).isDone()) << answers;
        EXPECT_TRUE(again.difference().isSame());
    }
}

} // namespace

} // namespace mxonline
