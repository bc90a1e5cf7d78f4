#include "CsvOptions.h"
#include "HexBytes.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "Refusal.h"
#include "TranslatedModule.h"
#include "Verbs.h"
#include "config/Composition.h"
#include "config/Configuration.h"
#include "config/ConfigurationOutput.h"
#include "config/DecodedImage.h"
#include "config/ParameterNames.h"
#include "config/ValuesFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;

constexpr const char* configFooter = R"(Example:
  $ mxtool config examples/modules/MX0803.bin --set Wiring=Delta
  3-phase power measurement (kv38.5a080803)

  Raw parameter image: 9 bytes
    0000  01 00 c8 00 0f 00 0f 00 0f

  Byte  Bits  Bytes  Parameter of  Name               Value         Default
  0           01     module        Wiring             Delta         Star
  1-2         00 c8  module        Transformer ratio  100.000000 A
  3-4         00 0f  10 L1 U       Demand interval    15 min
  5-6         00 0f  11 L1 I       Demand interval    15 min
  7-8         00 0f  12 L1 P       Demand interval    15 min

  1 of 5 parameters differ from the default
)";

struct ConfigOptions
{
    ModuleOptions module;
    std::vector<std::string> set;
    std::string valuesFile;
    std::string decode;
    bool force = false;
    std::string fieldbus = "raw";
    std::string format;
    CsvOptions csv;
    std::string output = "-";
};

FieldbusType fieldbusOf(const ConfigOptions& options)
{
    return options.fieldbus == "modbus" ? FieldbusType::Modbus : FieldbusType::Raw;
}

// What the call asks for, in the order in which it is written: a value of the call goes before one
// of the file.
struct Wishes
{
    std::optional<std::vector<char>> image; // to write into, instead of the default block
    std::vector<Assignment> assignments;
};

void checkDevice(const Values& values, const DeviceReport& device, const ConfigOptions& options)
{
    if (!values.deviceTypeId.empty() && values.deviceTypeId != device.deviceTypeId) {
        throw Failure(
            ExitCode::Input,
            {"error", inputName(options.valuesFile),
             fmt::format("The values are those of a {}, expected a {} as {} is",
                         values.deviceTypeId, device.deviceTypeId, inputName(options.module.file)),
             ""});
    }
}

std::string textOfFile(const std::string& path)
{
    const std::vector<char> bytes = loadBytes(path);
    return {bytes.begin(), bytes.end()};
}

Wishes wishesOfFile(const ConfigOptions& options, const DeviceReport& device)
{
    if (options.valuesFile.empty()) {
        return {};
    }
    Values values = readValues(textOfFile(options.valuesFile), inputName(options.valuesFile));
    checkDevice(values, device, options);
    return {std::move(values.image), std::move(values.assignments)};
}

ValueCheck checkOf(const ConfigOptions& options)
{
    return options.force ? ValueCheck::NumberOnly : ValueCheck::Full;
}

Assignment assignmentOf(const std::string& words, const DeviceReport& device, ValueCheck check)
{
    const std::string place = "--set " + words;
    try {
        auto [name, value] = splitAssignment(words, device, check);
        return {place, std::move(name), std::move(value), ExitCode::Usage};
    } catch (const Refusal& refusal) {
        throw Failure(ExitCode::Usage, {"error", place, refusal.what(), refusal.hint});
    }
}

bool meanTheSame(const Assignment& a, const Assignment& b, const DeviceReport& device)
{
    const auto found = parametersCalled(a.name, device);
    return found.size() == 1 && found == parametersCalled(b.name, device);
}

Wishes wishesOf(const ConfigOptions& options, const DeviceReport& device)
{
    Wishes wishes = wishesOfFile(options, device);
    std::vector<Assignment>& all = wishes.assignments;
    std::vector<Assignment> ofCall;
    for (const std::string& words : options.set) {
        ofCall.push_back(assignmentOf(words, device, checkOf(options)));
    }
    for (const Assignment& assignment : ofCall) {
        all.erase(std::remove_if(all.begin(), all.end(),
                                 [&](const Assignment& other) {
                                     return meanTheSame(assignment, other, device);
                                 }),
                  all.end());
    }
    all.insert(all.end(), ofCall.begin(), ofCall.end());
    return wishes;
}

// The image into which values are written.
std::vector<char> baseImage(const ConfigOptions& options, const Wishes& wishes,
                            const DeviceReport& device)
{
    if (!options.module.parameterBlockFile.empty()) {
        return loadBytes(options.module.parameterBlockFile);
    }
    return wishes.image ? *wishes.image : device.parameterBlock;
}

ExitCode reportAll(const std::vector<Diagnostic>& findings, ExitCode code)
{
    for (const Diagnostic& finding : findings) {
        report(finding);
    }
    return code;
}

std::string formatOf(const ConfigOptions& options)
{
    if (!options.format.empty()) {
        return options.format;
    }
    return options.output == "-" ? "text" : "binary";
}

void writeConfiguration(const Configuration& configuration, const ConfigOptions& options)
{
    const std::string format = formatOf(options);
    std::string content;
    if (format == "binary") {
        content.assign(configuration.bytes.begin(), configuration.bytes.end());
    } else if (format == "json") {
        content = configurationJson(configuration, inputName(options.module.file));
    } else {
        content = format == "csv" ? configurationCsv(configuration, options.csv.style())
                                  : configurationText(configuration);
    }
    writeOutput(options.output, content);
}

std::string placeOfBase(const ConfigOptions& options, const Wishes& wishes)
{
    if (!options.module.parameterBlockFile.empty()) {
        return inputName(options.module.parameterBlockFile);
    }
    return wishes.image ? inputName(options.valuesFile) : inputName(options.module.file);
}

ExitCode composeImage(const ConfigOptions& options, TranslatedModule& module)
{
    const DeviceReport device = makeReport(module.device());
    const Wishes wishes = wishesOf(options, device);
    const std::vector<char> image = baseImage(options, wishes, device);
    const std::string place = placeOfBase(options, wishes);
    requireImageSize(image, device, place);
    const auto base = module.withParameterBlock(image);
    const Composition composition = compose(module, *base, wishes.assignments, checkOf(options));
    if (composition.code != ExitCode::Done) {
        return reportAll(composition.findings, composition.code);
    }
    const Configuration configuration =
        configurationOf(module, composition.image, fieldbusOf(options));
    reportAll(composition.findings, ExitCode::Done);
    reportAll(notesOf(configuration, place), ExitCode::Done);
    writeConfiguration(configuration, options);
    return ExitCode::Done;
}

// The bytes to decode: of a file where there is one of that name, else spelled in the call itself.
std::vector<char> bytesToDecode(const std::string& words)
{
    std::error_code ignored;
    if (words == "-" || std::filesystem::exists(words, ignored)) {
        return loadBytes(words);
    }
    try {
        return bytesOfHex(words);
    } catch (const Refusal& refusal) {
        throw Failure(ExitCode::Usage,
                      {"error", "--decode " + words,
                       std::string(refusal.what()) + ", or the name of an existing file", ""});
    }
}

ExitCode decodeImage(const ConfigOptions& options, TranslatedModule& module)
{
    const std::string place = "--decode " + options.decode;
    const std::vector<char> image =
        decodedImage(bytesToDecode(options.decode), fieldbusOf(options), module, place);
    const Configuration configuration = configurationOf(module, image, FieldbusType::Raw);
    reportAll(notesOf(configuration, place), ExitCode::Done);
    writeConfiguration(configuration, options);
    return ExitCode::Done;
}

ExitCode config(ConfigOptions options, const std::string& logLevel)
{
    // The module as its file describes it; the block is put in where values are written.
    const std::string blockFile = std::exchange(options.module.parameterBlockFile, "");
    TranslatedModule module(options.module, logLevel);
    options.module.parameterBlockFile = blockFile;
    return options.decode.empty() ? composeImage(options, module) : decodeImage(options, module);
}

void addOptions(CLI::App& verb, ConfigOptions& options)
{
    addModuleOptions(verb, options.module);
    auto* const set = verb.add_option(
        "--set", options.set,
        "NAME=VALUE, repeatable. NAME: the parameter's name, CHANNEL/NAME or #ID; VALUE: the text "
        "of an option or a number, in physical units where the parameter has some, #N for the "
        "option of number N");
    set->expected(1)->take_all()->type_name("NAME=VALUE");
    auto* const values =
        verb.add_option("--values", options.valuesFile, "YAML or JSON file of names and values")
            ->type_name("FILE");
    auto* const force =
        verb.add_flag("--force", options.force, "Accept numbers outside the range or option list");
    verb.add_option("--decode", options.decode,
                    "Show the values in these bytes (hexadecimal, or a file) instead of composing")
        ->excludes(set)
        ->excludes(values)
        ->excludes(force)
        ->excludes("--param-block");
    verb.add_option("--fieldbus", options.fieldbus,
                    "raw (parameter image) or modbus (registers); of the bytes to decode as well")
        ->check(CLI::IsMember({"raw", "modbus"}));
    verb.add_option("--format", options.format,
                    "text, json, csv or binary; binary is the default with -o FILE")
        ->check(CLI::IsMember({"text", "json", "csv", "binary"}));
    addCsvOptions(verb, options.csv);
    verb.add_option("-o,--output", options.output, "Write to this file, - for standard output")
        ->type_name("FILE");
}

} // namespace

void addConfigVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("config", "Compose or decode the parameter image of a module");
    auto options = std::make_shared<ConfigOptions>();
    addOptions(*verb, *options);
    verb->footer(configFooter);
    verb->callback([options, choose, &global] {
        requireCsv(options->csv, formatOf(*options));
        choose([options, &global] { return config(*options, global.logLevel); });
    });
}

} // namespace mxtool
