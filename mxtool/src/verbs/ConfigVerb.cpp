#include "CommandLineOptions.h"
#include "FormatOfName.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "TranslatedModule.h"
#include "Verbs.h"
#include "config/Composition.h"
#include "config/Configuration.h"
#include "config/ConfigurationOutput.h"
#include "config/DecodedImage.h"
#include "config/ReadImage.h"
#include "config/ValuesFile.h"
#include "config/WantedValues.h"

#include <algorithm>
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

  Byte  Bits  Bytes  Parameter of  Name               Value   Default
  0           01     module        Wiring             Delta   Star
  1-2         00 c8  module        Transformer ratio  100 A
  3-4         00 0f  10 L1 U       Demand interval    15 min
  5-6         00 0f  11 L1 I       Demand interval    15 min
  7-8         00 0f  12 L1 P       Demand interval    15 min

  1 of 5 parameters differ from the default
)";

const std::vector<std::string> configFormats = {"text", "json", "csv", "values", "binary"};
const std::vector<std::string> comparisonFormats = {"text", "json", "csv"};

struct ConfigOptions
{
    ModuleOptions module;
    std::vector<std::string> set;
    std::vector<std::string> valuesFiles;
    std::string decode;
    std::string compare;
    bool force = false;
    bool changed = false;
    std::string fieldbus = "raw";
    std::string format;
    CsvOptions csv;
    std::string output = "-";

    bool compares() const { return !compare.empty() || (!decode.empty() && !valuesFiles.empty()); }
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
    const std::string& blockFile = options.module.parameterBlockFile;
    if (!blockFile.empty() && wanted.image()) {
        throw Failure(ExitCode::Usage, "--param-block " + blockFile,
                      wanted.imageFile() + " also has an image to write values into",
                      "leave one of them out; a file of --format values has no image");
    }
    if (!blockFile.empty()) {
        return loadBytes(blockFile);
    }
    return wanted.image().value_or(device.parameterBlock);
}

void reportAll(const std::vector<Diagnostic>& findings)
{
    for (const Diagnostic& finding : findings) {
        report(finding);
    }
}

std::string formatOf(const ConfigOptions& options)
{
    const std::vector<std::string>& accepted =
        options.compares() ? comparisonFormats : configFormats;
    const bool bytes = options.output != "-" && !options.compares();
    return options.format.empty()
               ? formatOfName(options.output, accepted, bytes ? "binary" : "text")
               : options.format;
}

// No note if --format is given: the user chose the form. A file with another extension may later be
// mistaken for the image of another module.
void noteMissingIdentity(const ConfigOptions& options, const DeviceReport& device)
{
    report({"note", options.output,
            "The bytes carry no identity: nothing in the file identifies them as those of a " +
                device.deviceTypeId,
            "-o NAME.json or NAME.csv keeps it; --format binary or -q leaves out this note"});
}

void writeConfiguration(const Configuration& configuration, const ConfigOptions& options,
                        bool quiet)
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
    if (format == "binary" && options.format.empty() && !quiet) {
        noteMissingIdentity(options, configuration.device);
    }
}

std::string placeOfBase(const ConfigOptions& options, const WantedValues& wanted)
{
    if (!options.module.parameterBlockFile.empty()) {
        return inputName(options.module.parameterBlockFile);
    }
    return wanted.image() ? wanted.imageFile() : inputName(options.module.file);
}

// The configuration to be written; nothing if values were rejected, which is reported.
std::optional<Configuration> composed(const ConfigOptions& options, TranslatedModule& module,
                                      ExitCode& code)
{
    const DeviceReport device = module.report();
    const WantedValues wanted = wantedValues(options, device);
    const std::vector<char> image = baseImage(options, wanted, device);
    const std::string place = placeOfBase(options, wanted);
    requireImageSize(image, device, place);
    const auto base = module.withParameterBlock(image);
    const Composition composition = compose(module, *base, wanted.assignments(), checkOf(options));
    code = composition.code;
    if (code != ExitCode::Done) {
        reportAll(composition.findings);
        return std::nullopt;
    }
    Configuration configuration = configurationOf(module, composition.image, fieldbusOf(options));
    reportAll(composition.findings);
    reportAll(notesOf(configuration, place));
    return configuration;
}

ExitCode composeImage(const ConfigOptions& options, TranslatedModule& module, bool quiet)
{
    ExitCode code = ExitCode::Done;
    if (auto configuration = composed(options, module, code)) {
        configuration->changedOnly = options.changed;
        writeConfiguration(*configuration, options, quiet);
    }
    return code;
}

// The value of --decode or --compare, and the name of the option for diagnostics.
ReadImage imageRead(const ConfigOptions& options, TranslatedModule& module, bool quiet)
{
    const bool compares = options.decode.empty();
    ReadImage read = readImage(compares ? options.compare : options.decode,
                               compares ? "--compare" : "--decode", fieldbusOf(options), module);
    if (!quiet) {
        reportAll(read.notes);
    }
    return read;
}

ExitCode decodeImage(const ConfigOptions& options, TranslatedModule& module, bool quiet)
{
    const ReadImage read = imageRead(options, module, quiet);
    Configuration configuration = configurationOf(module, read.image, FieldbusType::Raw);
    configuration.changedOnly = options.changed;
    reportAll(notesOf(configuration, "--decode " + options.decode));
    writeConfiguration(configuration, options, quiet);
    return ExitCode::Done;
}

ExitCode compareImages(const ConfigOptions& options, TranslatedModule& module, bool quiet)
{
    ExitCode code = ExitCode::Done;
    const auto wanted = composed(options, module, code);
    if (!wanted) {
        return code;
    }
    const ReadImage read = imageRead(options, module, quiet);
    const ImageComparison comparison =
        compared(*wanted, configurationOf(module, read.image, fieldbusOf(options)));
    reportAll(notesOf(comparison, options.decode.empty() ? "--compare " + options.compare
                                                         : "--decode " + options.decode));
    const std::string format = formatOf(options);
    writeOutput(options.output, format == "json"
                                    ? comparisonJson(comparison, inputName(options.module.file))
                                : format == "csv" ? comparisonCsv(comparison, options.csv.style())
                                                  : comparisonText(comparison));
    return comparison.isSame() ? ExitCode::Done : ExitCode::Findings;
}

void rejectIf(bool isInvalid, const char* option, const std::string& reason)
{
    if (isInvalid) {
        throw CLI::ValidationError(option, reason);
    }
}

// Rejects options that would be ignored; options that contradict each other exclude each other by
// definition.
void checkWords(const ConfigOptions& options)
{
    const std::string format = formatOf(options);
    requireCsv(options.csv, format);
    rejectIf(options.compares() && std::find(comparisonFormats.begin(), comparisonFormats.end(),
                                             format) == comparisonFormats.end(),
             "--format", "A comparison is text, json or csv, not " + format);
    rejectIf(options.changed && options.compares(), "--changed",
             "does not apply to a comparison, which lists only deviations");
    rejectIf(options.changed && format == "binary", "--changed",
             "applies to lists of parameters, not to --format binary");
    rejectIf(
        options.force && options.set.empty() && options.valuesFiles.empty(), "--force",
        "applies to values of --set and --values, and there are none; to replace another file, "
        "add --overwrite");
}

ExitCode config(ConfigOptions options, const GlobalOptions& global)
{
    // The module with its default block; the block is replaced where values are written.
    const std::string blockFile = std::exchange(options.module.parameterBlockFile, "");
    TranslatedModule module(options.module, global.logLevel);
    options.module.parameterBlockFile = blockFile;
    if (options.compares()) {
        return compareImages(options, module, global.quiet);
    }
    return options.decode.empty() ? composeImage(options, module, global.quiet)
                                  : decodeImage(options, module, global.quiet);
}

void addOptions(CLI::App& verb, ConfigOptions& options)
{
    addModuleFile(verb, options.module);
    auto* const set = verb.add_option(
        "--set", options.set,
        "NAME=VALUE, repeatable. NAME: the parameter's name, CHANNEL/NAME or #ID; VALUE: the text "
        "of an option or a number, in physical units where the parameter has some, #N for the "
        "option of number N");
    set->expected(1)->take_all()->type_name("NAME=VALUE");
    verb.add_option("--values", options.valuesFiles,
                    "YAML, JSON or CSV file of names and values, repeatable: later values "
                    "replace earlier ones")
        ->expected(1)
        ->take_all()
        ->type_name("FILE");
    auto* const force =
        verb.add_flag("--force", options.force, "Accept numbers outside the range or option list");
    auto* const decode = verb.add_option(
        "--decode", options.decode,
        "Show the values in these bytes instead of composing: in hexadecimal, Modbus registers "
        "also in decimal, or a file of bytes, JSON or CSV; with --values the same as --compare");
    decode->excludes(set)->excludes(force)->excludes("--param-block");
    rejectEmptyValue(*decode);
    auto* const compare =
        verb.add_option("--compare", options.compare,
                        "Compare these bytes, given as for --decode, with the composed ones; "
                        "exit code 1 if they differ");
    compare->excludes(decode);
    rejectEmptyValue(*compare);
    acceptOneOf(*verb.add_option("--fieldbus", options.fieldbus,
                                 "raw (parameter image) or modbus (registers), also of the bytes "
                                 "to decode"),
                {"raw", "modbus"});
    acceptOneOf(
        *verb.add_option("--format", options.format,
                         "text, json, csv, values (a commented values file) or binary; a "
                         "comparison is text, json or csv. Without it: what the name of -o "
                         "ends in (.txt, .json, .csv, .yaml or .yml for values, .bin), else "
                         "binary; text for standard output and for a comparison"),
        configFormats);
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
        choose([options, &global] { return config(*options, global); });
    });
}

} // namespace mxtool
