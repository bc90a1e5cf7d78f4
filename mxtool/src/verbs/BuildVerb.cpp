#include "Counted.h"
#include "Diagnostic.h"
#include "FileKind.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "Verbs.h"

#include <mxauthor/CheckText.h>
#include <text/ShownText.h>

#include <fmt/format.h>

#include <filesystem>
#include <optional>
#include <set>

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

constexpr const char* expectedText = "the text form of an mx file";

struct BuildOptions
{
    std::vector<std::string> files;
    std::string output;
    bool force = false; // write files that the device parser rejects
};

[[noreturn]] void failUsage(const std::string& place, const std::string& text,
                            const std::string& hint)
{
    throw Failure(ExitCode::Usage, place, text, hint);
}

bool isDirectory(const std::string& output)
{
    std::error_code ignored;
    return std::filesystem::is_directory(output, ignored) ||
           (!output.empty() && output.back() == '/');
}

// The output path for each text: the output itself, or in a directory a file with the text's name.
std::vector<std::string> targetsOf(const BuildOptions& options)
{
    if (!isDirectory(options.output)) {
        if (options.files.size() > 1) {
            failUsage(options.output, "More than one text, and the output is not a directory",
                      "name a directory, with / at its end when there is none yet");
        }
        return {options.output};
    }
    std::vector<std::string> targets;
    std::set<std::string> names;
    for (const std::string& file : options.files) {
        if (file == "-") {
            failUsage(options.output, "Standard input has no name for a file in this directory",
                      "name the output file");
        }
        const std::string name = std::filesystem::path(file).stem().string() + ".bin";
        if (!names.insert(name).second) {
            failUsage(file, "A second text for " + name, "build them one by one");
        }
        targets.push_back((std::filesystem::path(options.output) / name).string());
    }
    return targets;
}

void reportFindings(const std::string& file, const std::string& source,
                    const std::vector<mxauthor::TextFinding>& findings, bool quiet)
{
    for (const mxauthor::TextFinding& finding : findings) {
        const mxauthor::Severity severity = finding.rule->severity;
        if (quiet && severity == mxauthor::Severity::Note) {
            continue;
        }
        mxauthor::SourceError where = finding.where;
        where.text = fmt::format("[{}] {}", finding.rule->name, where.text);
        reportAt(inputName(file), source, where, mxauthor::severityName(severity), finding.hint);
    }
}

// Returns whether the file is to be written: the text has no errors and the device parser accepts
// it.
bool isAccepted(const std::string& file, const std::string& source,
                const mxauthor::BuildResult& built, bool force, bool quiet)
{
    for (const mxauthor::SourceError& error : built.errors) {
        reportAt(inputName(file), source, error, "error", "");
    }
    if (!built.errors.empty()) {
        return false;
    }
    const auto findings = mxauthor::checkText(source, built);
    reportFindings(file, source, findings, quiet);
    if (!mxauthor::isRefused(findings) || force) {
        return true;
    }
    report({"error", inputName(file), "The device parser refuses this module, nothing is written",
            "--force writes it all the same"});
    return false;
}

// The mx file that a text describes; nothing if it is not to be written.
std::optional<std::string> builtBytes(const std::string& file, bool force, bool quiet)
{
    const std::vector<char> chars = loadBytes(file);
    const std::string source(chars.begin(), chars.end());
    if (kindOf(source) == FileKind::MxFile) {
        throw Failure(ExitCode::Input, inputName(file),
                      "This is an mx file already, expected its text form",
                      "mxtool dump FILE -o FILE.yaml writes the text form of an mx file");
    }
    if (source.empty()) {
        throw Failure(ExitCode::Input, inputName(file),
                      std::string("The file is empty, expected ") + expectedText,
                      "mxtool new writes the text of a new module");
    }
    requireModule(file, source, expectedText);
    const mxauthor::BuildResult result = buildInput(source, file);
    if (result.errors.size() > 1) {
        requireKeyOfTextForm(file, source, expectedText);
    }
    if (!isAccepted(file, source, result, force, quiet)) {
        return std::nullopt;
    }
    const mxauthor::Bytes bytes = mxauthor::writeMxFile(result.file);
    return std::string(bytes.begin(), bytes.end());
}

// An input that cannot be read does not stop the build of the others.
std::optional<std::string> builtReporting(const std::string& file, bool force, bool quiet)
{
    try {
        return builtBytes(file, force, quiet);
    } catch (const Failure& failure) {
        if (failure.code != ExitCode::Input) {
            throw;
        }
        report(failure.diagnostic);
        return std::nullopt;
    }
}

// Reads all texts before writing a file: a text may name the output of another.
std::vector<Output> builtOutputs(const BuildOptions& options, bool quiet)
{
    std::vector<Output> outputs;
    const std::vector<std::string> targets = targetsOf(options);
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (const auto bytes = builtReporting(options.files[i], options.force, quiet)) {
            outputs.push_back({targets[i], *bytes});
        }
    }
    return outputs;
}

void writeBuilt(const std::vector<Output>& outputs, const BuildOptions& options, bool quiet)
{
    if (!outputs.empty() && isDirectory(options.output)) {
        makeDirectory(options.output);
    }
    writeOutputs(outputs);
    std::string lines;
    for (const Output& output : outputs) {
        if (output.path != "-") {
            lines += fmt::format("{}: {}\n", text::forTerminal(output.path),
                                 counted(output.content.size(), "byte"));
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
    if (outputs.size() == options.files.size()) {
        return ExitCode::Done;
    }
    return outputs.empty() ? ExitCode::Input : ExitCode::Findings;
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
