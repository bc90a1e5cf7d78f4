#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "FormatOfName.h"
#include "InputFile.h"
#include "ModuleChoice.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"

#include <mxmodule/WantedValues.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

namespace mxtool {

namespace {

using mxmodule::Configuration;
using mxmodule::Fieldbus;
using mxmodule::Module;
using mxmodule::WantedValues;

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
    ModuleChoice module;
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

Fieldbus fieldbusOf(const ConfigOptions& options)
{
    return options.fieldbus == "modbus" ? Fieldbus::Modbus : Fieldbus::Raw;
}

mxmodule::ValueCheck checkOf(const ConfigOptions& options)
{
    return options.force ? mxmodule::ValueCheck::NumberOnly : mxmodule::ValueCheck::Full;
}

mxmodule::Listing listingOf(const ConfigOptions& options)
{
    return options.changed ? mxmodule::Listing::Changed : mxmodule::Listing::All;
}

std::string textOfFile(const std::string& path)
{
    const std::vector<char> bytes = loadBytes(path);
    return {bytes.begin(), bytes.end()};
}

WantedValues wantedValues(const ConfigOptions& options, const Module& module)
{
    WantedValues wanted(module);
    for (const std::string& file : options.valuesFiles) {
        wanted.add(mxmodule::readValues(textOfFile(file), inputName(file)), inputName(file));
    }
    wanted.add(options.set, "--set", checkOf(options));
    return wanted;
}

// How values are written: into which image, how strictly.
mxmodule::ComposeOptions composeOptions(const ConfigOptions& options, const WantedValues& wanted,
                                        const Module& module)
{
    const std::string& blockFile = options.module.parameterBlockFile;
    if (!blockFile.empty() && wanted.image()) {
        throw Failure(Origin::Request, "--param-block " + blockFile,
                      wanted.imageFile() + " also has an image to write values into",
                      "leave one of them out; a file of --format values has no image");
    }
    if (!blockFile.empty()) {
        return {checkOf(options), loadBytes(blockFile), inputName(blockFile)};
    }
    return {checkOf(options), wanted.image(), wanted.image() ? wanted.imageFile() : module.name()};
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
void noteMissingIdentity(const ConfigOptions& options, const Module& module)
{
    report({Severity::Note, options.output,
            "The bytes carry no identity: nothing in the file identifies them as those of a " +
                module.deviceTypeId(),
            "-o NAME.json or NAME.csv keeps it; --format binary or -q leaves out this note"});
}

std::string formatted(const Configuration& configuration, const ConfigOptions& options,
                      const std::string& format)
{
    if (format == "binary") {
        return {configuration.bytes().begin(), configuration.bytes().end()};
    }
    if (format == "json") {
        return configuration.json(listingOf(options));
    }
    if (format == "csv") {
        return configuration.csv(options.csv.style(), listingOf(options));
    }
    return format == "values" ? configuration.valuesFile(listingOf(options))
                              : configuration.text(listingOf(options));
}

void writeConfiguration(const Configuration& configuration, const ConfigOptions& options,
                        const Module& module, bool quiet)
{
    const std::string format = formatOf(options);
    writeOutput(options.output, formatted(configuration, options, format));
    if (format == "binary" && options.format.empty() && !quiet) {
        noteMissingIdentity(options, module);
    }
}

// The configuration to be written. Throws a `Failure` with the rejected values.
Configuration composed(const ConfigOptions& options, const Module& module)
{
    const WantedValues wanted = wantedValues(options, module);
    const mxmodule::ComposeOptions how = composeOptions(options, wanted, module);
    const mxmodule::Composition made = module.compose(wanted.assignments(), how);
    if (!made.ok()) {
        throw Failure(made.findings);
    }
    const Configuration configuration =
        module.configuration(made.image, fieldbusOf(options), how.imagePlace);
    report(made.findings);
    report(configuration.findings());
    return configuration;
}

// The image that `words` state: bytes, or the name of a file.
mxmodule::ReadImage imageIn(const std::string& words, const std::string& place, Fieldbus fieldbus,
                            const Module& module)
{
    std::error_code ignored;
    if (words == "-" || std::filesystem::exists(words, ignored)) {
        return module.imageOfFile(loadBytes(words), inputName(words), fieldbus, place);
    }
    try {
        return module.imageOfWords(words, fieldbus, place);
    } catch (const Failure& failure) {
        Finding reason = failure.reason();
        if (reason.origin == Origin::Request && reason.hint.empty()) {
            reason.text += ", or the name of an existing file";
        }
        throw Failure(reason);
    }
}

// The option --decode or --compare with its value, as findings name it.
std::string imageOption(const ConfigOptions& options)
{
    return options.decode.empty() ? "--compare " + options.compare : "--decode " + options.decode;
}

std::vector<char> imageRead(const ConfigOptions& options, const Module& module, bool quiet)
{
    mxmodule::ReadImage read = imageIn(options.decode.empty() ? options.compare : options.decode,
                                       imageOption(options), fieldbusOf(options), module);
    if (!quiet) {
        report(read.findings);
    }
    return std::move(read.image);
}

ExitCode decodeImage(const ConfigOptions& options, const Module& module, bool quiet)
{
    const Configuration configuration = module.configuration(imageRead(options, module, quiet),
                                                             Fieldbus::Raw, imageOption(options));
    report(configuration.findings());
    writeConfiguration(configuration, options, module, quiet);
    return ExitCode::Done;
}

ExitCode compareImages(const ConfigOptions& options, const Module& module, bool quiet)
{
    const Configuration wanted = composed(options, module);
    const Configuration read =
        module.configuration(imageRead(options, module, quiet), fieldbusOf(options));
    const mxmodule::Comparison comparison(wanted, read, imageOption(options));
    report(comparison.findings());
    const std::string format = formatOf(options);
    writeOutput(options.output, format == "json"  ? comparison.json()
                                : format == "csv" ? comparison.csv(options.csv.style())
                                                  : comparison.text());
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

ExitCode config(const ConfigOptions& options, const GlobalOptions& global)
{
    // With its default block: values are written into another one where one is given.
    const Module module = loadModule({options.module.file, "", {}}, global.logLevel);
    if (options.compares()) {
        return compareImages(options, module, global.quiet);
    }
    if (!options.decode.empty()) {
        return decodeImage(options, module, global.quiet);
    }
    writeConfiguration(composed(options, module), options, module, global.quiet);
    return ExitCode::Done;
}

void addOptions(CLI::App& verb, ConfigOptions& options)
{
    addModuleChoice(verb, options.module);
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
