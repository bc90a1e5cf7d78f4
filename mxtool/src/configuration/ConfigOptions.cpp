#include "configuration/ConfigOptions.h"

#include "FormatOfName.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace mxtool {

namespace {

const std::vector<std::string> configFormats = {"text", "json", "csv", "values", "binary"};
const std::vector<std::string> comparisonFormats = {"text", "json", "csv"};

void rejectIf(bool isInvalid, const char* option, const std::string& reason)
{
    if (isInvalid) {
        throw CLI::ValidationError(option, reason);
    }
}

void addValueOptions(CLI::App& verb, ConfigOptions& options)
{
    verb.add_option(
            "--set", options.set,
            "NAME=VALUE, repeatable. NAME: the parameter's name, CHANNEL/NAME or #ID; VALUE: the "
            "text of an option or a number, in physical units where the parameter has some, #N for "
            "the option of number N")
        ->expected(1)
        ->take_all()
        ->type_name("NAME=VALUE");
    verb.add_option("--values", options.valuesFiles,
                    "YAML, JSON or CSV file of names and values, repeatable: later values "
                    "replace earlier ones")
        ->expected(1)
        ->take_all()
        ->type_name("FILE");
    verb.add_flag("--force", options.force, "Accept numbers outside the range or option list");
}

void addImageOptions(CLI::App& verb, ConfigOptions& options)
{
    auto* const decode = verb.add_option(
        "--decode", options.decode,
        "Show the values in these bytes instead of composing: in hexadecimal, Modbus registers "
        "also in decimal, or a file of bytes, JSON or CSV; with --values the same as --compare");
    decode->excludes("--set")->excludes("--force")->excludes("--param-block");
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
}

void addOutputOptions(CLI::App& verb, ConfigOptions& options)
{
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

std::string ConfigOptions::imageOption() const
{
    return decode.empty() ? "--compare " + compare : "--decode " + decode;
}

std::string ConfigOptions::formatOfOutput() const
{
    const std::vector<std::string>& accepted = compares() ? comparisonFormats : configFormats;
    const bool bytes = output != "-" && !compares();
    return format.empty() ? formatOfName(output, accepted, bytes ? "binary" : "text") : format;
}

mxmodule::Fieldbus ConfigOptions::fieldbusOfBytes() const
{
    return fieldbus == "modbus" ? mxmodule::Fieldbus::Modbus : mxmodule::Fieldbus::Raw;
}

mxmodule::ValueCheck ConfigOptions::check() const
{
    return force ? mxmodule::ValueCheck::NumberOnly : mxmodule::ValueCheck::Full;
}

mxmodule::Listing ConfigOptions::listing() const
{
    return changed ? mxmodule::Listing::Changed : mxmodule::Listing::All;
}

void addConfigOptions(CLI::App& verb, ConfigOptions& options)
{
    addModuleChoice(verb, options.module);
    addValueOptions(verb, options);
    addImageOptions(verb, options);
    addOutputOptions(verb, options);
}

void checkWords(const ConfigOptions& options)
{
    const std::string format = options.formatOfOutput();
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

} // namespace mxtool
