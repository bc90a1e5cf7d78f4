#include "Reports.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace mxonline {

namespace {

using Texts = std::vector<std::string>;

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST(Report, OfEverythingReadBackIsDone)
{
    EXPECT_TRUE(doneReport().isDone());
    EXPECT_EQ(doneReport().text(), R"(Done: read back and equal to the station; 2 parameters changed

Station          Pump house
Coupler          tcp:127.0.0.1:1502 unit 9
Started          2026-01-31T08:15:00.123Z
Finished         2026-01-31T08:15:01.456Z
Commit           none: parameters are active when written
SHA-256 station  aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa
SHA-256 now      bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb
mxtool           3.1.4

Module  Parameter          Registers      Before  Planned  Now    Result
Levels  Mains suppression  1000 (0x03e8)  50 Hz   60 Hz    60 Hz  written and read back
Levels  AI 1/Filter        1006 (0x03ee)  50 Hz   60 Hz    60 Hz  written and read back

Position  Name    Module    On the coupler  SHA-256 of parameters
1         Levels  5a030304  identified      1111111111111111111111111111111111111111111111111111111111111111
2         Flows   5a030304  identified      2222222222222222222222222222222222222222222222222222222222222222
)");
}

// Each of what is missing alone.
TEST(Report, IsNotDoneWithoutEverything)
{
    ApplyReport report = doneReport();
    report.isReadBack = false;
    EXPECT_EQ(report.reasons(),
              Texts{"the parameters were not read back: what the coupler has now is not known"});
    report = doneReport();
    report.modules[0].parameters[0].outcome = WriteOutcome::Different;
    EXPECT_EQ(report.reasons(), Texts{"1 parameter is not as planned"});
    report = doneReport();
    report.modules[0].parameters[0].outcome = WriteOutcome::NotReadBack;
    EXPECT_FALSE(report.isDone());
    report = doneReport();
    report.map.commit = mxstation::ModbusCommit{};
    EXPECT_EQ(report.reasons(),
              Texts{"the commit was not confirmed: what was written may not be active"});
    report.isCommitted = true;
    EXPECT_TRUE(report.isDone());
    report.findings.emplace_back();
    EXPECT_EQ(report.reasons(), Texts{"a request failed, see the faults"});
    report.findings[0].severity = mxmodule::Severity::Warning;
    EXPECT_TRUE(report.isDone());
}

TEST(Report, SaysAtItsTopWhatIsNotKnown)
{
    const std::string text = reportOfBrokenConnection().text();
    EXPECT_EQ(text.substr(0, text.find('\n')),
              "NOT DONE: the parameters were not read back: what the coupler has now is not known; "
              "the commit was not confirmed: what was written may not be active");
    EXPECT_TRUE(contains(text, "60 Hz    not known  written, not read back\n"));
    EXPECT_TRUE(contains(text, "60 Hz    not known  not known\n"));
    EXPECT_TRUE(contains(text, "Commit           register 8192 (0x2000): NOT confirmed\n"));
    EXPECT_TRUE(contains(text, "SHA-256 now      not known\n"));
    EXPECT_TRUE(contains(text, "\nerror: no answer\nhint: see the cable\n"));
}

TEST(Report, NamesAValueThatIsNotAsPlanned)
{
    const std::string text = reportOfAnotherValue().text();
    EXPECT_EQ(text.substr(0, text.find('\n')), "NOT DONE: 1 parameter is not as planned");
    EXPECT_TRUE(contains(text, "50 Hz   60 Hz    50 Hz  written, but read back otherwise\n"));
}

TEST(Report, TellsWhatWasNotWritten)
{
    ApplyReport report = reportOfAnotherValue();
    report.modules[0].parameters[1].isWritten = false;
    EXPECT_TRUE(contains(report.text(), "50 Hz  not written\n"));
    report.modules[0].parameters[1].found.clear();
    report.modules[0].parameters[1].foundShown.clear();
    EXPECT_TRUE(
        contains(report.text(), "60 Hz   60 Hz    50 Hz  not written, changed by itself\n"));
    report = doneReport();
    report.modules[0].parameters[1].isWritten = false;
    EXPECT_TRUE(contains(report.text(), "as planned, but the write was not confirmed\n"));
}

TEST(Report, NotesWhatLimitsIt)
{
    ApplyReport report = doneReport();
    report.map.identity.reset();
    report.map.commit = mxstation::ModbusCommit{8192, 1, true};
    report.isCommitted = true;
    report.modules[0].writtenAgain = 3;
    report.modules[1].withoutRegisters = {"Label"};
    EXPECT_TRUE(contains(
        report.text(),
        "\nNote: No module is identified: \"modbus\" of the station states no identity registers "
        "of the coupler\n"
        "Note: The coupler reads parameters as last written: that they are active is known from "
        "the confirmed commit alone\n"
        "Note: 3 parameters that did not differ were written too: reads do not show what an "
        "interrupted run left without a commit\n"
        "Note: Module 2 \"Flows\": the parameter \"Label\" is in no register, its value is neither "
        "read nor written\n"));
    EXPECT_EQ(report.verdict(), "Done: read back and equal to the station, but for 1 parameter in "
                                "no register; 2 parameters changed");
}

TEST(Report, JsonHasEveryMember)
{
    ApplyReport report = doneReport();
    report.map.commit = mxstation::ModbusCommit{8192, 1, true};
    report.isCommitted = true;
    report.modules = {report.modules[0], appliedModule(2, "Flows")};
    report.modules[0].parameters.erase(report.modules[0].parameters.begin());
    report.modules[1].identification = Identification::Other;
    report.modules[1].foundId = "5a030302";
    report.modules[1].writtenAgain = 3;
    report.modules[1].withoutRegisters = {"Label"};
    report.modules[1].sum.clear();
    const auto expected = nlohmann::json::parse(R"({
        "schema": {"name": "mxtool.apply-report", "version": 1},
        "mxtool": "3.1.4",
        "done": true,
        "verdict": "Done: read back and equal to the station, but for 1 parameter in no register; 1 parameter changed",
        "reasons": [],
        "station": "Pump house",
        "station_sha256": "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
        "target": "tcp:127.0.0.1:1502",
        "unit": 9,
        "started": "2026-01-31T08:15:00.123Z",
        "finished": "2026-01-31T08:15:01.456Z",
        "identity": true,
        "committed": true,
        "read_back": true,
        "sha256": "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb",
        "modules": [
            {"position": 1, "name": "Levels", "module_id": "5a030304", "identification": "same",
             "found_id": "5a030304", "written_again": 0, "without_registers": [],
             "sha256": "1111111111111111111111111111111111111111111111111111111111111111",
             "parameters": [
                 {"name": "AI 1/Filter", "address": 1006, "before": "50 Hz", "planned": "60 Hz",
                  "now": "60 Hz", "before_registers": [12800], "planned_registers": [15360],
                  "now_registers": [15360], "written": true, "outcome": "verified"}]},
            {"position": 2, "name": "Flows", "module_id": "5a030304", "identification": "other",
             "found_id": "5a030302", "written_again": 3, "without_registers": ["Label"],
             "sha256": null, "parameters": []}],
        "findings": []})");
    auto json = nlohmann::json::parse(report.json());
    EXPECT_EQ(json["notes"].size(), 3U); // staged reads, written again, without registers
    json.erase("notes");
    EXPECT_EQ(json, expected);
}

TEST(Report, JsonHasValuesBesideRegisters)
{
    const auto json = nlohmann::json::parse(reportOfBrokenConnection().json());
    EXPECT_EQ(json["schema"]["name"], "mxtool.apply-report");
    EXPECT_EQ(json["done"], false);
    EXPECT_EQ(json["reasons"].size(), 2U);
    EXPECT_EQ(json["committed"], false);
    EXPECT_TRUE(json["sha256"].is_null());
    EXPECT_EQ(json["modules"][0]["parameters"][0].dump(),
              R"({"address":1000,"before":"50 Hz","before_registers":[12800],)"
              R"("name":"Mains suppression","now":null,"now_registers":null,"outcome":)"
              R"("not read back","planned":"60 Hz","planned_registers":[15360],"written":true})");
    EXPECT_EQ(json["findings"][0]["hint"], "see the cable");
    EXPECT_TRUE(nlohmann::json::parse(doneReport().json())["committed"].is_null());
}

} // namespace

} // namespace mxonline
