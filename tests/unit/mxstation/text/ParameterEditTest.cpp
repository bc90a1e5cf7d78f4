// Each form of an entry, with the text that a person would write. What a coupler has is stated as
// the values of another station. Of MX0304, "Mains suppression" is a parameter of the module, the
// others are those of four channels.
#include <mxstation/ParameterEdit.h>

#include "../StatedStation.h"

#include <gmock/gmock.h>

namespace {

using mxstation::Plan;
using mxstation::Station;
using testing::HasSubstr;
using Registers = std::vector<std::vector<std::uint16_t>>;

// The registers of the modules of a station.
Registers registersOf(const std::string& source)
{
    const Plan plan = statedPlan(source);
    EXPECT_TRUE(plan.ok()) << source;
    Registers registers;
    for (const auto& module : plan.modules) {
        registers.push_back(module.registers);
    }
    return registers;
}

std::string edited(const std::string& source, const Registers& registers)
{
    const Station station = statedStation(source);
    return mxstation::withParameters(station, mxstation::plan(station), registers);
}

std::string edited(const std::string& source, const std::string& coupler)
{
    return edited(source, registersOf(coupler));
}

std::vector<mxmodule::Finding> findingsOfEdit(const std::string& source, const Registers& registers)
{
    try {
        edited(source, registers);
    } catch (const mxmodule::Failure& failure) {
        return failure.findings();
    }
    return {};
}

std::vector<mxmodule::Finding> findingsOfEdit(const std::string& source, const std::string& coupler)
{
    return findingsOfEdit(source, registersOf(coupler));
}

TEST(ParameterEdit, ChangesNothingWhereNothingDiffers)
{
    const std::string source = "modules:\r\n- MX0304.bin # a\r\n- {module: MX0304.bin, "
                               "parameters: {Mains suppression: 60}}";
    EXPECT_EQ(edited(source, source), source);
    EXPECT_EQ(edited(source, "modules: [MX0304.bin, {module: MX0304.bin, parameters: "
                             "{Mains suppression: 60 Hz}}]"),
              source);
}

TEST(ParameterEdit, ReplacesOnlyTheValue)
{
    EXPECT_EQ(edited(R"(modules:
- module: MX0304.bin # levels
  parameters: # of the tanks
    Mains suppression: 60 # as in Boston
    AI 1: {Upper limit:   9.9 V, Signal range: "4-20 mA"} # tank 1
    AI 2:
      # tank 2
      Upper limit: '9 V'
      Hysteresis: 2
  name: Levels
)",
                     R"(modules:
- module: MX0304.bin
  parameters:
    Mains suppression: 50
    AI 1: {Upper limit: 1 V, Signal range: 0-10 V}
    AI 2: {Upper limit: -1 V, Hysteresis: 2 %}
)"),
              R"(modules:
- module: MX0304.bin # levels
  parameters: # of the tanks
    Mains suppression: 50 Hz # as in Boston
    AI 1: {Upper limit:   1 V, Signal range: "0-10 V"} # tank 1
    AI 2:
      # tank 2
      Upper limit: "-1 V"
      Hysteresis: 2
  name: Levels
)");
}

TEST(ParameterEdit, AddsSeveralValuesToEmptyBrackets)
{
    EXPECT_EQ(edited(R"(modules:
- {module: MX0304.bin, parameters: {}}
- {module: MX0304.bin, parameters: {AI 1: {}}}
)",
                     R"(modules:
- {module: MX0304.bin, parameters: {Mains suppression: 60, AI 1/Upper limit: 1 V, AI 2/Upper limit: 2 V}}
- {module: MX0304.bin, parameters: {AI 1: {Upper limit: 1 V, Signal range: 0-10 V}}}
)"),
              R"(modules:
- {module: MX0304.bin, parameters: {Mains suppression: 60 Hz, AI 1: {Upper limit: 1 V}, AI 2: {Upper limit: 2 V}}}
- {module: MX0304.bin, parameters: {AI 1: {Signal range: 0-10 V, Upper limit: 1 V}}}
)");
}

// Values that are the defaults now, "Upper limit" of AI 3 and "Mains suppression", are not added,
// but those that are stated stay.
TEST(ParameterEdit, AddsWhatDiffersFromTheDefaults)
{
    EXPECT_EQ(edited(R"(modules:
- module: MX0304.bin
  parameters:
    AI 2:
      Upper limit: 9 V # kept
    AI 1: {Upper limit: 9 V}
    AI 3/Upper limit: 9 V
  # the end
- MX0116.bin
)",
                     R"(modules:
- module: MX0304.bin
  parameters:
    AI 1: {Upper limit: 9 V, Signal range: off, Hysteresis: 3 %}
    AI 2: {Upper limit: 9 V, Hysteresis: 4 %}
    AI 4: {Upper limit: 1 V, Lower limit: -1 V}
- MX0116.bin
)"),
              R"(modules:
- module: MX0304.bin
  parameters:
    AI 2:
      Upper limit: 9 V # kept
      Hysteresis: 4 %
    AI 1: {Upper limit: 9 V, Signal range: "off", Hysteresis: 3 %}
    AI 3/Upper limit: 9.502 V
    AI 4: {Upper limit: 1 V, Lower limit: "-1 V"}
  # the end
- MX0116.bin
)");
}

TEST(ParameterEdit, AddsASectionBelowTheModule)
{
    EXPECT_EQ(edited(R"(modules:
- MX0304.bin # levels
- module: MX0304.bin
  name: Flows # two
  channels:
    AI 1: {alias: FT}
- name: Rest
  module: MX0304.bin
- {module: MX0304.bin, name: Last}
)",
                     R"(modules:
- {module: MX0304.bin, parameters: {Mains suppression: 60, AI 1: {Filter depth: 3}}}
- {module: MX0304.bin, parameters: {AI 2: {Filter depth: 4}}}
- {module: MX0304.bin, parameters: {AI 2: {Filter depth: 5}}}
- {module: MX0304.bin, parameters: {AI 2: {Filter depth: 6}}}
)"),
              R"(modules:
- module: MX0304.bin # levels
  parameters:
    Mains suppression: 60 Hz
    AI 1: {Filter depth: 3}
- module: MX0304.bin
  name: Flows # two
  parameters:
    AI 2: {Filter depth: 4}
  channels:
    AI 1: {alias: FT}
- name: Rest
  module: MX0304.bin
  parameters:
    AI 2: {Filter depth: 5}
- {module: MX0304.bin, name: Last, parameters: {AI 2: {Filter depth: 6}}}
)");
}

TEST(ParameterEdit, BreaksALongChannelIntoLines)
{
    EXPECT_EQ(edited("modules:\r\n  - MX0304.bin\r\n",
                     R"(modules:
- module: MX0304.bin
  parameters:
    AI 1: {Signal range: off, Upper limit: 1 V, Lower limit: -1 V, Hysteresis: 5, Wire break check: 0}
)"),
              "modules:\r\n  - module: MX0304.bin\r\n    parameters:\r\n      AI 1:\r\n"
              "        Signal range: \"off\"\r\n        Upper limit: 1 V\r\n"
              "        Lower limit: \"-1 V\"\r\n        Hysteresis: 5 %\r\n"
              "        Wire break check: 0\r\n");
}

TEST(ParameterEdit, KeepsJson)
{
    EXPECT_EQ(
        edited(R"({"modules": ["MX0304.bin",
  {"module": "MX0304.bin", "parameters": {"Mains suppression": 60, "AI 1": {}}}]}
)",
               R"(modules:
- {module: MX0304.bin, parameters: {AI 1/Filter depth: 3}}
- {module: MX0304.bin, parameters: {AI 1/Filter depth: 4, AI 2/Filter depth: 5}}
)"),
        R"({"modules": [{"module": "MX0304.bin", "parameters": {"AI 1": {"Filter depth": "3"}}},
  {"module": "MX0304.bin", "parameters": {"Mains suppression": "50 Hz", "AI 1": {"Filter depth": "4"}, "AI 2": {"Filter depth": "5"}}}]}
)");
}

// A change of a value that an alias uses would be one in both places.
TEST(ParameterEdit, RejectsWhatAliasesRepeat)
{
    const std::string changed =
        "modules: [{module: MX0304.bin, parameters: {Mains suppression: 55}}, "
        "MX0304.bin]";
    auto findings = findingsOfEdit("modules:\n- &a MX0304.bin\n- *a\n", changed);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:3:3"));
    EXPECT_EQ(findings[0].text,
              "this alias repeats what line 2 states, and the modules have values "
              "of their own");
    findings = findingsOfEdit("modules:\n- module: MX0304.bin\n  parameters: &a\n    Mains "
                              "suppression: 60\n- module: MX0304.bin\n  parameters: *a\n",
                              changed);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:6:15"));
    findings = findingsOfEdit("modules:\n- module: MX0304.bin\n  parameters:\n    Mains "
                              "suppression: &a 60\n- module: MX0304.bin\n  parameters: {Mains "
                              "suppression: *a}\n",
                              changed);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:6:35"));
}

// An alias elsewhere is no obstacle.
TEST(ParameterEdit, KeepsAnchorsAndAliases)
{
    EXPECT_EQ(
        edited("modules:\n- module: &m MX0304.bin\n  parameters:\n    Mains suppression: !!str "
               "&x 60\n- module: *m\n",
               "modules:\n- {module: MX0304.bin, parameters: {Mains suppression: 55}}\n"
               "- {module: MX0304.bin, parameters: {Mains suppression: 54}}\n"),
        "modules:\n- module: &m MX0304.bin\n  parameters:\n    Mains suppression: !!str &x 55 "
        "Hz\n- parameters:\n    Mains suppression: 54 Hz\n  module: *m\n");
}

TEST(ParameterEdit, RejectsWhatItCannotChange)
{
    const std::string changed = "modules: [MX0304.bin, {module: MX0304.bin, parameters: {Mains "
                                "suppression: 55}}]";
    auto findings = findingsOfEdit("modules:\n- MX0304.bin\n- module: MX0304.bin\n  parameters:\n"
                                   "    Mains suppression: >-\n      60\n",
                                   changed);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:5:5"));
    EXPECT_EQ(findings[0].text, "this value cannot be replaced as it is written");
    EXPECT_THAT(findings[0].hint, HasSubstr("\"parameters:\" below it"));
    findings = findingsOfEdit("modules:\n- MX0304.bin\n- ? module\n  : MX0304.bin\n", changed);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:3:3"));
    EXPECT_THAT(findings[0].text,
                HasSubstr("the values cannot be stated in this entry as it is written"));
}

// A station states a value in its range only: 61 Hz is none.
TEST(ParameterEdit, RejectsRegistersThatAStationCannotState)
{
    const std::string source = "modules:\n- MX0304.bin\n- MX0304.bin\n";
    Registers registers = registersOf(source);
    registers[1][0] = 0x3D00;
    auto findings = findingsOfEdit(source, registers);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:3:3"));
    registers[1][0] = 0x3200;
    registers[1][1] = 0x0700; // none of the signal ranges
    findings = findingsOfEdit(source, registers);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].text, HasSubstr("Signal range"));
    registers[1].pop_back();
    EXPECT_EQ(findingsOfEdit(source, registers).size(), 1U);
    registers.pop_back();
    EXPECT_EQ(findingsOfEdit(source, registers)[0].text,
              "found the registers of 1 modules, expected those of 2");
}

TEST(ParameterEdit, RejectsAPlanWithErrorsAndAStationWithoutText)
{
    EXPECT_EQ(findingsOfEdit("modules: [MX9998.bin]", Registers(1)).size(), 1U);
    Station station = statedStation("modules: [MX0304.bin]");
    const Plan plan = mxstation::plan(station);
    station.source.clear();
    EXPECT_THROW(mxstation::withParameters(station, plan, {plan.modules[0].registers}),
                 mxmodule::Failure);
}

} // namespace
