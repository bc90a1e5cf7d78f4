#include "CommandLineOptions.h"
#include "ModuleChoice.h"
#include "OutputFile.h"
#include "Verbs.h"

#include <text/JsonText.h>

namespace mxtool {

namespace {

constexpr const char* showFooter = R"(Example:
  $ mxtool show examples/modules/MX0001.bin
  Field supply 24 V (kv38.0bc1e800)

  Property           Value
  moduleId           0bc1e800
  moduleType         09
  brandVersion       2.1
  brandId            41
  brandSerialNumber  0
  productVersion     01.02.03
  brandOrderCode     K38-001
  brandLabelName     Field supply 24 V
  brandHwRevision    05
  mxVersion          kv38-0001 01.02.03

  Data
    input      0 bytes, from byte 0
    output     0 bytes, from byte 0
    parameters 0 bytes
    diagnosis  1 byte

  Set or role       Id  Members
  basicInformation  16  0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15
  default (role)    17  16
)";

struct ShowOptions
{
    ModuleChoice module;
    std::string format = "text";
    std::string output = "-";
};

ExitCode show(const ShowOptions& options, const std::string& logLevel)
{
    const mxmodule::Module module = loadModule(options.module, logLevel);
    writeOutput(options.output, options.format == "json" ? module.json() : module.text());
    return ExitCode::Done;
}

} // namespace

void addShowVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb = program.add_subcommand("show", "Show the device that an mx file describes");
    auto options = std::make_shared<ShowOptions>();
    addPlacedModuleChoice(*verb, options->module);
    acceptOneOf(*verb->add_option("--format", options->format, "text or json"), {"text", "json"});
    verb->add_option("-o,--output", options->output, "Write to this file, - for standard output")
        ->type_name("FILE");
    verb->footer(showFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return show(*options, global.logLevel); });
    });
}

} // namespace mxtool
