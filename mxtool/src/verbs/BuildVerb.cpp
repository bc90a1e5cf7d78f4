#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "ShownText.h"
#include "Verbs.h"

#include <mxauthor/CheckText.h>

#include <fmt/format.h>

#include <filesystem>
#include <iostream>
#include <set>

namespace mxtool {

namespace {

constexpr const char* buildFooter =
    R"(The rules of "mxtool check" are applied to what is built; what they find is told at the line and
column of the text. A file that the device parser would refuse is not written, unless --force asks
for it; other findings do not keep a file from being written.

Example:
  $ mxtool build examples/modules/MX0302.yaml -o /tmp/MX0302.bin
  /tmp/MX0302.bin: 1051 bytes
)";

struct BuildOptions
{
    std::vector<std::string> files;
    std::string output;
    bool force = false; // a file that the device parser refuses is written too
};

[[noreturn]] void failUsage(const std::string& place, const std::string& text,
                            const std::string& hint)
{
    throw Failure(ExitCode::Usage, {"error", place, text, hint});
}

bool isDirectory(const std::string& output)
{
    std::error_code ignored;
    return std::filesystem::is_directory(output, ignored) ||
           (!output.empty() && output.back() == '/');
}

// Where the mx file of each text goes: the output itself, or a file of the text's name in it.
std::vector<std::string> targetsOf(const BuildOptions& options)
{
    if (!isDirectory(options.output)) {
        if (options.files.size() > 1) {
            failUsage(options.output, "More than one text, and the output is no directory",
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

void makeDirectory(const std::string& output)
{
    std::error_code error;
    std::filesystem::create_directories(output, error);
    if (error) {
        throw Failure(ExitCode::Output,
                      {"error", output, "Cannot make the directory: " + error.message(), ""});
    }
}

void reportAt(const std::string& file, const std::string& source,
              const mxauthor::SourceError& error, const std::string& severity,
              const std::string& hint)
{
    report({severity, fmt::format("{}:{}:{}", inputName(file), error.line, error.column),
            error.text, hint});
    const auto excerpt = mxauthor::sourceExcerpt(source, error);
    std::cerr << forTerminal(excerpt.line) << '\n' << excerpt.caret << '\n';
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
        reportAt(file, source, where, mxauthor::severityName(severity), finding.hint);
    }
}

// Returns whether the text is to be written: it has no errors, and the device parser takes it.
bool isAccepted(const std::string& file, const std::string& source,
                const mxauthor::BuildResult& built, bool force, bool quiet)
{
    for (const mxauthor::SourceError& error : built.errors) {
        reportAt(file, source, error, "error", "");
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

// Returns whether the mx file was written. Failures of the output come out as exceptions.
bool buildOne(const std::string& file, const std::string& target, bool force, bool quiet)
{
    const std::vector<char> chars = loadBytes(file);
    const std::string source(chars.begin(), chars.end());
    const std::filesystem::path directory =
        file == "-" ? std::filesystem::path() : std::filesystem::path(file).parent_path();
    const mxauthor::BuildResult result = mxauthor::buildFromText(source, directory);
    if (!isAccepted(file, source, result, force, quiet)) {
        return false;
    }
    const mxauthor::Bytes bytes = mxauthor::writeMxFile(result.file);
    writeOutput(target, std::string(bytes.begin(), bytes.end()));
    if (!quiet && target != "-") {
        writeOutput("-", fmt::format("{}: {} bytes\n", forTerminal(target), bytes.size()));
    }
    return true;
}

// An input that cannot be read does not keep the others from being built.
bool buildReporting(const std::string& file, const std::string& target, bool force, bool quiet)
{
    try {
        return buildOne(file, target, force, quiet);
    } catch (const Failure& failure) {
        if (failure.code != ExitCode::Input) {
            throw;
        }
        report(failure.diagnostic);
        return false;
    }
}

ExitCode build(const BuildOptions& options, const GlobalOptions& global)
{
    const std::vector<std::string> targets = targetsOf(options);
    if (isDirectory(options.output)) {
        makeDirectory(options.output);
    }
    std::size_t built = 0;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        built += buildReporting(options.files[i], targets[i], options.force, global.quiet) ? 1 : 0;
    }
    if (built == targets.size()) {
        return ExitCode::Done;
    }
    return built == 0 ? ExitCode::Input : ExitCode::Findings;
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
    verb->add_flag("--force", options->force, "Write what the device parser refuses as well");
    verb->footer(buildFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return build(*options, global); });
    });
}

} // namespace mxtool
