#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"
#include "build/BuildTargets.h"

#include <mxmodule/Build.h>

#include <text/Counted.h>
#include <text/ShownText.h>

#include <fmt/format.h>

#include <optional>

namespace mxtool {

namespace {

constexpr const char* buildFooter =
    R"(The rules of "mxtool check" are applied to the built file; findings are reported at the line and
column of the text. A file that the device parser would refuse is written only with --force; other
findings do not prevent writing.

Example:
  $ mxtool build examples/modules/MX0302.yaml -o /tmp/MX0302.bin
  /tmp/MX0302.bin: 1051 bytes
)";

struct BuildOptions
{
    std::vector<std::string> files;
    std::string output;
    bool force = false; // write files that the device parser rejects
};

// The mx file that a text describes; nothing if it is not to be written.
std::optional<std::string> builtBytes(const std::string& file, bool force, bool quiet)
{
    ToolObserver observer;
    const std::vector<char> content = loadBytes(file);
    const mxmodule::BuiltFile built =
        mxmodule::build({content.begin(), content.end()}, inputName(file), {force, &observer});
    for (const Finding& finding : built.findings) {
        if (!quiet || finding.severity != Severity::Note) {
            report(finding);
        }
    }
    if (built.bytes) {
        return std::string(built.bytes->begin(), built.bytes->end());
    }
    if (built.isRefused) {
        report({Severity::Error, inputName(file),
                "The device parser refuses this module, nothing is written",
                "--force writes it all the same"});
    }
    return std::nullopt;
}

// Reads all texts before writing a file: a text may name the output of another.
std::vector<Output> builtOutputs(const BuildOptions& options, bool quiet)
{
    std::vector<Output> outputs;
    const std::vector<std::string> targets = buildTargets(options.files, options.output);
    for (std::size_t i = 0; i < targets.size(); ++i) {
        std::optional<std::string> bytes;
        readsOrReports([&] { bytes = builtBytes(options.files[i], options.force, quiet); });
        if (bytes) {
            outputs.push_back({targets[i], *bytes});
        }
    }
    return outputs;
}

void writeBuilt(const std::vector<Output>& outputs, const BuildOptions& options, bool quiet)
{
    if (!outputs.empty() && namesDirectory(options.output)) {
        makeDirectory(options.output);
    }
    writeOutputs(outputs);
    std::string lines;
    for (const Output& output : outputs) {
        if (output.path != "-") {
            lines += fmt::format("{}: {}\n", text::forTerminal(output.path),
                                 text::counted(output.content.size(), "byte"));
        }
    }
    if (!quiet && !lines.empty()) {
        writeOutput("-", lines);
    }
}

ExitCode build(const BuildOptions& options, const GlobalOptions& global)
{
    const std::vector<Output> outputs = builtOutputs(options, global.quiet);
    writeBuilt(outputs, options, global.quiet);
    return outputs.size() == options.files.size() ? ExitCode::Done
           : outputs.empty()                      ? ExitCode::Input
                                                  : ExitCode::Findings;
}

} // namespace

void addBuildVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb = program.add_subcommand("build", "Build mx files from their text form");
    auto options = std::make_shared<BuildOptions>();
    verb->add_option("FILE", options->files, "YAML texts, - for standard input")->required();
    verb->add_option("-o,--output", options->output,
                     "The mx file, - for standard output; or a directory for FILE.bin of each text")
        ->required();
    verb->add_flag("--force", options->force, "Also write files that the device parser refuses");
    verb->footer(buildFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return build(*options, global); });
    });
}

} // namespace mxtool
