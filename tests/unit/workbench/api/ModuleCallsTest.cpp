#include "api/ApiFixture.h"

#include <gmock/gmock.h>
#include <mxmodule/Module.h>

#include <algorithm>
#include <chrono>

namespace {

using mxmodule::Fieldbus;
using mxmodule::Module;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using text::Json;

class ModuleCalls : public ApiTest
{
protected:
    ModuleCalls() { open(""); }

    Module example() const { return Module::fromFile(path("MX0304.bin")); }
};

// The analog inputs have their upper limit, 0x2328 = 9000 thousandths of a volt, at byte 13.
TEST_F(ModuleCalls, GiveWhatTheLibrariesGive)
{
    const Json module = call("POST", "/module", {{"reference", "MX0304.bin"}});
    EXPECT_EQ(module.at("device"), Json::parse(example().json()));
    EXPECT_EQ(module.at("channels"), Json::parse(example().channelMap().json()));
    EXPECT_EQ(module.at("processImage"), example().channelMap().svg());
    const Json& configured = module.at("configured");
    auto raw = Json::parse(example().defaults(Fieldbus::Raw).json());
    auto modbus = Json::parse(example().defaults(Fieldbus::Modbus).json());
    raw["file"] = configured.at("raw").at("file"); // the name of the file in the folder
    modbus["file"] = raw["file"];
    EXPECT_EQ(configured.at("raw"), raw);
    EXPECT_EQ(configured.at("modbus"), modbus);
    EXPECT_TRUE(configured.at("noRegisters").is_null());
    EXPECT_EQ(module.at("sizes").at("input"), 8);
}

TEST_F(ModuleCalls, GiveCallNamesThatSetTheParameters)
{
    const Json names =
        call("POST", "/module", {{"reference", "MX0304.bin"}}).at("configured").at("callNames");
    for (const auto& [id, name] : names.items()) {
        EXPECT_EQ(example().parametersCalled(name), example().parametersCalled(id)) << id;
    }
    EXPECT_EQ(names.size(), example().parameters().size());
}

TEST_F(ModuleCalls, GiveCallTextsThatSelectTheOptions)
{
    const Json texts = call("POST", "/module", {{"reference", "MX0304.bin"}}).at("callTexts");
    const auto parameters = example().parameters();
    EXPECT_EQ(texts.size(), parameters.size());
    std::size_t options = 0;
    for (const auto& parameter : parameters) {
        const Json& ofParameter = texts.at("#" + parameter.id);
        ASSERT_EQ(ofParameter.size(), parameter.options.size()) << parameter.name;
        for (std::size_t i = 0; i < ofParameter.size(); ++i, ++options) {
            const auto set = example().compose({{"#" + parameter.id, ofParameter[i]}});
            const auto decoded = example().configuration(set.image, Fieldbus::Raw).parameters();
            const auto found = std::find_if(decoded.begin(), decoded.end(), [&](const auto& one) {
                return one.id == parameter.id;
            });
            ASSERT_NE(found, decoded.end());
            EXPECT_EQ(found->value, parameter.options[i].value) << parameter.name;
        }
    }
    EXPECT_GT(options, 0U);
}

TEST_F(ModuleCalls, SetValues)
{
    const Json made = call("POST", "/module/configuration",
                           {{"reference", "MX0304.bin"},
                            {"values", {{{"name", "AI 1/Upper limit"}, {"value", "9.9 V"}}}}});
    const auto expected = example().compose({{"AI 1/Upper limit", "9.9 V"}});
    const auto bytes = example().configuration(expected.image, Fieldbus::Modbus);
    EXPECT_EQ(made.at("configured").at("modbus").at("bytes"),
              Json::parse(bytes.json()).at("bytes"));
    EXPECT_NE(made.at("configured").at("modbus").at("bytes"),
              Json::parse(example().defaults(Fieldbus::Modbus).json()).at("bytes"));
    EXPECT_TRUE(made.at("findings").empty());
}

TEST_F(ModuleCalls, SayWhatIsAcceptedInPlaceOfARefusedValue)
{
    const Json made = call("POST", "/module/configuration",
                           {{"reference", "MX0304.bin"},
                            {"values", {{{"name", "Mains suppression"}, {"value", "70 Hz"}}}}});
    EXPECT_TRUE(made.at("configured").is_null());
    const auto expected = example().compose({{"Mains suppression", "70 Hz"}}).findings;
    EXPECT_EQ(made.at("findings")[0].at("text"), expected[0].text);
    EXPECT_EQ(made.at("findings")[0].at("accepted"), expected[0].accepted);
    EXPECT_FALSE(expected[0].accepted.empty());
}

TEST_F(ModuleCalls, TakeTheOpenedFileWithoutAReference)
{
    open("MX0304.bin");
    EXPECT_EQ(call("POST", "/module", {{"reference", ""}}).at("device").at("device_type_id"),
              "kv38.5a030304");
}

TEST_F(ModuleCalls, NeedAReferenceWithoutAnOpenedFile)
{
    for (const char* const path : {"/module", "/module/configuration", "/module/explanation"}) {
        EXPECT_EQ(failure("POST", path, {{"reference", ""}}, 404)[0],
                  "reference: found \"\", but no mx file is open")
            << path;
    }
}

TEST_F(ModuleCalls, ExplainTheBytes)
{
    const Json explained = call("POST", "/module/explanation", {{"reference", "MX0304.bin"}});
    EXPECT_EQ(explained.at("schema").at("name"), "mxtool.explain");
    std::size_t next = 0;
    for (const auto& part : explained.at("parts")) {
        EXPECT_EQ(part.at("offset"), next);
        next += part.at("length").get<std::size_t>();
    }
    EXPECT_EQ(next, std::filesystem::file_size(path("MX0304.bin")));
}

TEST_F(ModuleCalls, ExportWhatTheLibrariesWrite)
{
    const Json values = {{{"name", "AI 1/Upper limit"}, {"value", "9.9 V"}}};
    const auto exported = [&](const std::string& format) {
        return answer(
                   "POST", "/module/export",
                   Json{{"reference", "MX0304.bin"}, {"values", values}, {"format", format}}.dump())
            .body;
    };
    const auto image = example().compose({{"AI 1/Upper limit", "9.9 V"}}).image;
    const auto raw = example().configuration(image, Fieldbus::Raw);
    const auto modbus = example().configuration(image, Fieldbus::Modbus);
    EXPECT_EQ(exported("image-raw"), std::string(raw.bytes().begin(), raw.bytes().end()));
    EXPECT_EQ(exported("image-modbus"), std::string(modbus.bytes().begin(), modbus.bytes().end()));
    EXPECT_EQ(exported("parameters-modbus-csv"), modbus.csv());
    EXPECT_EQ(exported("channels-csv"), example().channelMap().csv());
    EXPECT_EQ(exported("channels-svg"), example().channelMap().svg());
    EXPECT_EQ(exported("mx-file").size(), std::filesystem::file_size(path("MX0304.bin")));
}

TEST_F(ModuleCalls, ExportCsvAsItIsWanted)
{
    Json body = {{"reference", "MX0304.bin"},
                 {"format", "channels-csv"},
                 {"separator", "tab"},
                 {"byteOrderMark", true}};
    EXPECT_EQ(answer("POST", "/module/export", body.dump()).body,
              example().channelMap().csv({'\t', true}));
    body["format"] = "parameters-modbus-csv";
    EXPECT_EQ(answer("POST", "/module/export", body.dump()).body,
              example().defaults(Fieldbus::Modbus).csv({'\t', true}));
    body["separator"] = ";";
    EXPECT_EQ(failure("POST", "/module/export", body, 400)[0],
              "separator: found \";\", expected one of comma, semicolon, tab");
}

TEST_F(ModuleCalls, ExportEachListedForm)
{
    const Json start = call("GET", "/start");
    for (const auto& format : start.at("exports").at("module")) {
        const auto response =
            answer("POST", "/module/export",
                   Json{{"reference", "MX0304.bin"}, {"format", format.at("format")}}.dump());
        EXPECT_EQ(response.status, 200U) << format;
        EXPECT_FALSE(response.body.empty()) << format;
        EXPECT_THAT(response.fileName, testing::StartsWith("MX5a030304")) << format;
    }
    EXPECT_THAT(
        failure("POST", "/module/export", {{"reference", "MX0304.bin"}, {"format", "pdf"}}, 400)[0],
        HasSubstr("format: found \"pdf\", expected one of image-raw, "));
}

TEST_F(ModuleCalls, ReadNothingOutsideTheFolder)
{
    for (const char* outside : {"../etc/passwd", "/etc/passwd", "/proc/self/environ"}) {
        const auto texts = failure("POST", "/module", {{"reference", outside}}, 422);
        ASSERT_EQ(texts.size(), 1U);
        EXPECT_THAT(texts[0], Not(HasSubstr("root:")));
    }
}

TEST_F(ModuleCalls, ListTheFolderWithLabels)
{
    write("damaged.bin", std::string("\x5a\x03", 2) + std::string(60, '\0'));
    const auto listed = place->moduleFiles(std::chrono::hours(1));
    for (const auto& [reference, label] : listed) {
        EXPECT_EQ(label,
                  reference == "damaged.bin" ? "" : Module::fromFile(path(reference)).label())
            << reference;
    }
    const Json answered = call("GET", "/modules").at("modules");
    ASSERT_EQ(answered.size(), listed.size());
    EXPECT_EQ(answered[0].at("reference"), listed[0].reference);
    EXPECT_THAT(answered[0].at("label"), AnyOf(listed[0].label, "")); // on a slow machine
}

TEST_F(ModuleCalls, ReadNoFileOfTheFolderAfterTheTime)
{
    const auto listed = place->moduleFiles(std::chrono::hours(0));
    ASSERT_FALSE(listed.empty());
    for (const auto& module : listed) {
        EXPECT_EQ(module.label, "") << module.reference;
    }
}

TEST_F(ModuleCalls, NameAModuleThatIsMissing)
{
    EXPECT_THAT(failure("POST", "/module", {{"reference", "MX0305.bin"}}, 422)[0],
                HasSubstr("did you mean \"MX0304.bin\""));
    const Json answered = call("POST", "/module", {{"reference", "MX0305.bin"}}, 422);
    EXPECT_EQ(answered.at("findings")[0].at("place"), "MX0305.bin");
    EXPECT_THAT(answered.at("findings")[0].at("text").get<std::string>(),
                testing::StartsWith("Cannot read the file: "));
}

} // namespace
