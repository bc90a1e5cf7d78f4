#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "configuration/ConfigInput.h"
#include "configuration/ConfigOptions.h"

namespace mxtool {

namespace {

using mxmodule::Configuration;
using mxmodule::Module;

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
        return configuration.json(options.listing());
    }
    if (format == "csv") {
        return configuration.csv(options.csv.style(), options.listing());
    }
    return format == "values" ? configuration.valuesFile(options.listing())
                              : configuration.text(options.listing());
}

void writeConfiguration(const Configuration& configuration, const ConfigOptions& options,
                        const Module& module, bool quiet)
{
    const std::string format = options.formatOfOutput();
    writeOutput(options.output, formatted(configuration, options, format));
    if (format == "binary" && options.format.empty() && !quiet) {
        noteMissingIdentity(options, module);
    }
}

ExitCode decodeImage(const ConfigOptions& options, const Module& module, bool quiet)
{
    const Configuration configuration = module.configuration(
        imageOfCall(options, module, quiet), mxmodule::Fieldbus::Raw, options.imageOption());
    report(configuration.findings());
    writeConfiguration(configuration, options, module, quiet);
    return ExitCode::Done;
}

ExitCode compareImages(const ConfigOptions& options, const Module& module, bool quiet)
{
    const Configuration wanted = composedConfiguration(options, module);
    const Configuration read =
        module.configuration(imageOfCall(options, module, quiet), options.fieldbusOfBytes());
    const mxmodule::Comparison comparison(wanted, read, options.imageOption());
    report(comparison.findings());
    const std::string format = options.formatOfOutput();
    writeOutput(options.output, format == "json"  ? comparison.json()
                                : format == "csv" ? comparison.csv(options.csv.style())
                                                  : comparison.text());
    return comparison.isSame() ? ExitCode::Done : ExitCode::Findings;
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
    writeConfiguration(composedConfiguration(options, module), options, module, global.quiet);
    return ExitCode::Done;
}

} // namespace

void addConfigVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("config", "Compose or decode the parameter image of a module");
    auto options = std::make_shared<ConfigOptions>();
    addConfigOptions(*verb, *options);
    verb->footer(configFooter);
    verb->callback([options, choose, &global] {
        checkWords(*options);
        choose([options, &global] { return config(*options, global); });
    });
}

} // namespace mxtool
