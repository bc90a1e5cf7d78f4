#include "CsvOptions.h"
#include "FormatOfName.h"
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
#include "config/ValuesFile.h"
#include "config/ValuesOutput.h"
#include "config/WantedValues.h"

#include <filesystem>
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

const std::vector<std::string> configFormats = {"text", "json", "csv", "values", "binary"};

struct ConfigOptions
{
    ModuleOptions module;
    std::vector<std::string> set;
    std::vector<std::string> valuesFiles;
    std::string decode;
    bool force = false;
    bool changed = false;
    std::string fieldbus = "raw";
    std::string format;
    CsvOptions csv;
    std::string output = "-";
};

FieldbusType fieldbusOf(const ConfigOptions& options)
{
    return options.fieldbus == "modbus" ? FieldbusType::Modbus : FieldbusType::Raw;
}

ValueCheck checkOf(const ConfigOptions& options)
{
    return options.force ? ValueCheck::NumberOnly : ValueCheck::Full;
}

std::string textOfFile(const std::string& path)
{
    const std::vector<char> bytes = loadBytes(path);
    return {bytes.begin(), bytes.end()};
}

WantedValues wantedValues(const ConfigOptions& options, const DeviceReport& device)
{
    WantedValues wanted(device, inputName(options.module.file));
    for (const std::string& file : options.valuesFiles) {
        wanted.add(readValues(textOfFile(file), inputName(file)), inputName(file));
    }
    wanted.add(options.set, checkOf(options));
    return wanted;
}

// The image into which values are written.
std::vector<char> baseImage(const ConfigOptions& options, const WantedValues& wanted,
                            const DeviceReport& device)
{
    if (!options.module.parameterBlockFile.empty()) {
        return loadBytes(options.module.parameterBlockFile);
    }
    return wanted.image().value_or(device.parameterBlock);
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
    const std::string otherwise = options.output == "-" ? "text" : "binary";
    return options.format.empty() ? formatOfName(options.output, configFormats, otherwise)
                                  : options.format;
}

void writeConfiguration(const Configuration& configuration, const ConfigOptions& options)
{
    const std::string format = formatOf(options);
    std::string content;
    if (format == "binary") {
        content.assign(configuration.bytes.begin(), configuration.bytes.end());
    } else if (format == "json") {
        content = configurationJson(configuration, inputName(options.module.file));
    } else if (format == "csv") {
        content = configurationCsv(configuration, options.csv.style());
    } else {
        content = format == "values" ? configurationValues(configuration)
                                     : configurationText(configuration);
    }
    writeOutput(options.output, content);
}

std::string placeOfBase(const ConfigOptions& options, const WantedValues& wanted)
{
    if (!options.module.parameterBlockFile.empty()) {
        return inputName(options.module.parameterBlockFile);
    }
    return wanted.image() ? wanted.imageFile() : inputName(options.module.file);
}

ExitCode composeImage(const ConfigOptions& options, TranslatedModule& module)
{
    const DeviceReport device = makeReport(module.device());
    const WantedValues wanted = wantedValues(options, device);
    const std::vector<char> image = baseImage(options, wanted, device);
    const std::string place = placeOfBase(options, wanted);
    requireImageSize(image, device, place);
    const auto base = module.withParameterBlock(image);
    const Composition composition = compose(module, *base, wanted.assignments(), checkOf(options));
    if (composition.code != ExitCode::Done) {
        return reportAll(composition.findings, composition.code);
    }
    Configuration configuration = configurationOf(module, composition.image, fieldbusOf(options));
    configuration.changedOnly = options.changed;
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
    Configuration configuration = configurationOf(module, image, FieldbusType::Raw);
    configuration.changedOnly = options.changed;
    reportAll(notesOf(configuration, place), ExitCode::Done);
    writeConfiguration(configuration, options);
    return ExitCode::Done;
}

void checkWords(const ConfigOptions& options)
{
    requireCsv(options.csv, formatOf(options));
    if (options.changed && formatOf(options) == "binary") {
        throw CLI::ValidationError("--changed", "lists parameters, not with --format binary");
    }
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
        verb.add_option("--values", options.valuesFiles,
                        "YAML, JSON or CSV file of names and values, repeatable: a later one goes "
                        "before an earlier one")
            ->expected(1)
            ->take_all()
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
                    "text, json, csv, values (a commented values file) or binary; without it "
                    "the end of the name of -o says it, or else it is binary")
        ->check(CLI::IsMember(configFormats));
    verb.add_flag("--changed", options.changed, "List only what differs from the defaults");
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
        checkWords(*options);
        choose([options, &global] { return config(*options, global.logLevel); });
    });
}

} // namespace mxtool
