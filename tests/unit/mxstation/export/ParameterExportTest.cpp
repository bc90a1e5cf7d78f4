// Worked out by hand. MX0208: byte 0 is the behaviour, an option list whose options have their
// positions as numbers; bit c of byte 1, by default 0xAA, is the substitute value of channel c. On
// Modbus each is a register with the value in its high byte. MX0502 has twice 0x1194 and 0xfd.
#include <mxstation/ParameterExport.h>

#include "../StatedStation.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using mxmodule::Fieldbus;
using mxstation::parameterFiles;
using mxstation::parametersJson;
using mxstation::parametersText;
using nlohmann::json;
using testing::HasSubstr;
using testing::SizeIs;

const char* const configuredValves = R"(station: Dosing
modules:
  - module: MX0208.bin
    name: Valves / 1
    parameters:
      Behaviour on bus fault: Hold last value
      DO 2: {Substitute value: 0}
  - MX0502.bin
  - MX0003.bin
)";

std::string hexOfFile(const mxstation::ParameterFile& file)
{
    std::string hex;
    for (const char byte : file.bytes) {
        hex += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    }
    return hex;
}

TEST(ParameterExport, showsImagesAsATable)
{
    EXPECT_EQ(parametersText(statedPlan(configuredValves), Fieldbus::Raw), R"(Dosing

Position  Name        Module    Bytes  From byte  Parameter image
1         Valves / 1  5a020208  2      0          01 a8
2         MX0502      5a050502  8      0          00 11 94 fd 06 11 94 fd
3         MX0003      5a000003  0

Position  Name        Parameter               Value            Default
1         Valves / 1  Behaviour on bus fault  Hold last value  Switch off
1         Valves / 1  DO 2/Substitute value   0                1
)");
}

TEST(ParameterExport, showsRegistersAsATable)
{
    EXPECT_THAT(parametersText(statedPlan(configuredValves), Fieldbus::Modbus), HasSubstr(R"(
Position  Name        Module    Registers  From register  Modbus registers
1         Valves / 1  5a020208  9          0              0100 0000 0000 0000 0100 0000 0100 0000
                                           8              0100
2         MX0502 )"));
}

TEST(ParameterExport, saysThatEveryParameterHasItsDefault)
{
    EXPECT_THAT(parametersText(statedPlan("modules: [MX0208.bin]"), Fieldbus::Raw),
                HasSubstr("02 aa\n\nEvery parameter has its default.\n"));
}

TEST(ParameterExport, givesImagesAndChangesAsJson)
{
    const json exported =
        json::parse(parametersJson(statedPlan(configuredValves), Fieldbus::Modbus));
    EXPECT_EQ(exported["schema"], json::parse(R"({"name": "mxtool.station-config",
                                                  "version": 1})"));
    EXPECT_EQ(exported["station"], "Dosing");
    EXPECT_EQ(exported["fieldbus"], "modbus");
    EXPECT_EQ(exported["station_sha256"].get<std::string>().size(), 64U);
    ASSERT_THAT(exported["modules"], SizeIs(3));
    EXPECT_EQ(exported["modules"][0], json::parse(R"({
        "position": 1, "name": "Valves / 1", "module_id": "5a020208", "label": "8 DO 24 V DC 0.5 A",
        "file": null, "size": 18,
        "bytes": "01 00 00 00 00 00 00 00 01 00 00 00 01 00 00 00 01 00",
        "image": "01 a8",
        "registers": [256, 0, 0, 0, 256, 0, 256, 0, 256],
        "changed": [
            {"name": "Behaviour on bus fault", "value": "#1", "shown": "Hold last value",
             "default_shown": "Switch off"},
            {"name": "DO 2/Substitute value", "value": "0", "shown": "0", "default_shown": "1"}]})"));
    const json raw = json::parse(parametersJson(statedPlan(configuredValves), Fieldbus::Raw));
    EXPECT_EQ(raw["modules"][0]["bytes"], "01 a8");
    EXPECT_EQ(raw["modules"][0]["size"], 2);
    EXPECT_EQ(raw["modules"][2]["bytes"], "");
}

// What `value` states can be stated in a station.
TEST(ParameterExport, givesValuesThatAStationTakes)
{
    const json exported = json::parse(parametersJson(statedPlan(configuredValves), Fieldbus::Raw));
    json parameters;
    for (const json& changed : exported["modules"][0]["changed"]) {
        parameters[changed["name"].get<std::string>()] = changed["value"];
    }
    const json station = {{"modules", {{{"module", "MX0208.bin"}, {"parameters", parameters}}}}};
    const auto plan = statedPlan(station.dump());
    ASSERT_TRUE(plan.ok()) << plan.findings.front().text;
    EXPECT_EQ(plan.modules[0].image, (std::vector<char>{'\x01', '\xA8'}));
}

TEST(ParameterExport, givesAFilePerModule)
{
    const auto files = parameterFiles(statedPlan(configuredValves), Fieldbus::Raw);
    ASSERT_THAT(files, SizeIs(4));
    EXPECT_EQ(files[0].name, "1-Valves%20%2f%201.bin");
    EXPECT_EQ(hexOfFile(files[0]), "01a8");
    EXPECT_EQ(files[1].name, "2-MX0502.bin");
    EXPECT_EQ(hexOfFile(files[1]), "001194fd061194fd");
    EXPECT_EQ(files[2].name, "3-MX0003.bin");
    EXPECT_EQ(hexOfFile(files[2]), "");
    EXPECT_EQ(files[3].name, "station.json");
    const json manifest = json::parse(files[3].bytes);
    EXPECT_EQ(manifest["modules"][0]["file"], "1-Valves%20%2f%201.bin");
    EXPECT_EQ(manifest["modules"][0]["bytes"], "01 a8");
    EXPECT_EQ(manifest["mx_files"][1]["reference"], "MX0502.bin");
}

TEST(ParameterExport, givesRegistersAsFiles)
{
    const auto files = parameterFiles(statedPlan(configuredValves), Fieldbus::Modbus);
    EXPECT_EQ(hexOfFile(files[0]), "010000000000000001000000010000000100");
}

// File systems have names of at most 255 bytes.
TEST(ParameterExport, cutsLongNamesAndPadsPositions)
{
    const std::string name(300, 'n');
    std::string source = "modules:\n- {module: MX0108.bin, name: " + name + "a}\n" +
                         "- {module: MX0108.bin, name: " + name + "b}\n";
    for (int i = 3; i <= 10; ++i) {
        source += "- MX0108.bin\n";
    }
    const auto files = parameterFiles(statedPlan(source), Fieldbus::Raw);
    ASSERT_THAT(files, SizeIs(11));
    EXPECT_EQ(files[0].name, "01-" + std::string(100, 'n') + ".bin");
    EXPECT_EQ(files[1].name, "02-" + std::string(100, 'n') + ".bin");
    EXPECT_EQ(files[9].name, "10-MX0108_8.bin");
}

// Found for all modules at once, each at its line, before anything is written.
TEST(ParameterExport, rejectsModulesWithoutModbusForm)
{
    auto plan = statedPlan(configuredValves);
    plan.modules[0].noRegisters = mxmodule::Finding{{}, "", "a field leaves its byte"};
    plan.modules[1].noRegisters = plan.modules[0].noRegisters;
    EXPECT_NO_THROW(parametersText(plan, Fieldbus::Raw));
    EXPECT_TRUE(
        json::parse(parametersJson(plan, Fieldbus::Raw))["modules"][0]["registers"].is_null());
    try {
        parameterFiles(plan, Fieldbus::Modbus);
        FAIL() << "Failure expected";
    } catch (const mxmodule::Failure& failure) {
        ASSERT_THAT(failure.findings(), SizeIs(2));
        EXPECT_THAT(failure.findings()[0].place, HasSubstr("line.yaml:3:5"));
        EXPECT_EQ(failure.findings()[0].text,
                  "the parameters of \"Valves / 1\" have no Modbus form: a field leaves its byte");
        EXPECT_THAT(failure.findings()[1].place, HasSubstr("line.yaml:8:5"));
    }
}

TEST(ParameterExport, rejectsAPlanWithErrors)
{
    EXPECT_THROW(parametersText(statedPlan("modules: [MX9999.bin]"), Fieldbus::Raw),
                 mxmodule::Failure);
}

} // namespace
