#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "Verbs.h"

#include <mxmodule/Explanation.h>

#include <unistd.h>

namespace mxtool {

namespace {

constexpr const char* explainFooter = R"(Example:
  $ mxtool explain examples/modules/MX0304.bin --at 0x128
  byte     0x25 (37) at 0x000128 (296)
  group    0010, parameter block: 46 bytes at 0x00011b (283)
  field    block, byte 0 of 2 from 0x000128
  bytes    25 1c
  meaning  default of parameter 3 "Upper limit": 9500
  read     yes
)";

struct ExplainOptions
{
    std::string file;
    std::string at;   // an offset; empty: none
    std::string name; // of a parameter, channel or text; empty: none
    std::string format = "text";
    std::string output = "-";
};

std::uint64_t offsetOf(const ExplainOptions& options, const mxmodule::ModuleFile& file)
{
    const auto offset = numberOfWord(options.at);
    if (!offset) {
        throw Failure(Origin::Request, file.name(), "\"" + options.at + "\" is not an offset",
                      "a number in decimal, or in hexadecimal after 0x");
    }
    return *offset;
}

std::string formatted(const mxmodule::Explanation& explanation, const ExplainOptions& options)
{
    if (!options.at.empty()) {
        return explanation.at(offsetOf(options, explanation.file()));
    }
    if (!options.name.empty()) {
        return explanation.where(options.name);
    }
    if (options.format == "json") {
        return explanation.json();
    }
    if (options.format == "html") {
        return explanation.html();
    }
    return explanation.text(options.output == "-" && takesColour(STDOUT_FILENO));
}

ExitCode explainFile(const ExplainOptions& options)
{
    const mxmodule::Explanation explanation(loadModuleFile(options.file));
    writeOutput(options.output, formatted(explanation, options));
    if (const auto& failure = explanation.failure()) {
        report(*failure);
        return ExitCode::Input;
    }
    return ExitCode::Done;
}

void addOptions(CLI::App& verb, ExplainOptions& options)
{
    verb.add_option("FILE", options.file, "The mx file or its text form, - for standard input")
        ->required();
    CLI::Option* const at =
        verb.add_option("--at", options.at, "Explain the byte at this offset (419 or 0x1a3)");
    CLI::Option* const where = verb.add_option(
        "--where", options.name, "Show where the parameters, channels and texts of this name are");
    at->excludes(where);
    rejectEmptyValue(*at);
    rejectEmptyValue(*where);
    CLI::Option* const format =
        verb.add_option("--format", options.format, "text, json or html (a self-contained page)");
    acceptOneOf(*format, {"text", "json", "html"});
    format->excludes(at);
    format->excludes(where);
    verb.add_option("-o,--output", options.output, "Write to this file, - for standard output");
}

} // namespace

void addExplainVerb(CLI::App& program, const GlobalOptions& /*global*/, const VerbChoice& choose)
{
    CLI::App* verb = program.add_subcommand("explain", "Explain every byte of an mx file");
    auto options = std::make_shared<ExplainOptions>();
    addOptions(*verb, *options);
    verb->footer(explainFooter);
    verb->callback([options, choose] { choose([options] { return explainFile(*options); }); });
}

} // namespace mxtool
