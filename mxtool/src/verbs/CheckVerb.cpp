#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "check/CheckReport.h"
#include "database/MxDirectory.h"

#include <text/NearestWords.h>

#include <unistd.h>

namespace mxtool {

namespace {

constexpr const char* checkFooter =
    R"(Exit codes: 1 on findings of severity error, with --strict on any; 3 when a file cannot be read.

Example:
  $ mxtool check examples/modules/MX0901.bin -W no-unknown-group
  examples/modules/MX0901.bin:0x000165: warning: [channel-name-repeated] group 20d7, channel 1: is named here again, only the first name is read
  1 file checked: 0 errors, 1 warning, 0 notes
)";

struct CheckOptions
{
    std::vector<std::string> paths;
    std::vector<std::string> warnings; // values of -W: no-RULE
    RuleSettings rules;
    std::string explained; // a rule; empty: none
    std::string format = "text";
    std::string output = "-";
    bool strict = false;
    bool listRules = false;
};

void requireRule(const std::string& option, const std::string& name)
{
    if (mxauthor::findRule(name) != nullptr) {
        return;
    }
    std::vector<std::string> names;
    for (const mxauthor::CheckRule* rule : mxauthor::checkRules()) {
        names.emplace_back(rule->name);
    }
    const std::string guess = text::didYouMean(name, names);
    throw CLI::ValidationError(option, "there is no rule \"" + name + "\"" + guess +
                                           (guess.empty() ? ", " : " ") +
                                           "mxtool check --list-rules names them");
}

void takeWarnings(CheckOptions& options)
{
    const std::string no = "no-";
    for (const std::string& word : options.warnings) {
        if (word.compare(0, no.size(), no) != 0) {
            throw CLI::ValidationError("-W", "takes no-RULE, not \"" + word + "\"");
        }
        options.rules.silenced.push_back(word.substr(no.size()));
    }
}

void checkWords(CheckOptions& options)
{
    takeWarnings(options);
    for (const std::string& rule : options.rules.silenced) {
        requireRule("-W", rule);
    }
    for (const std::string& rule : options.rules.raised) {
        requireRule("-E", rule);
    }
    if (!options.explained.empty()) {
        requireRule("--explain", options.explained);
    } else if (options.paths.empty() && !options.listRules) {
        throw CLI::RequiredError("FILE");
    }
}

// Runs `action`; an input that cannot be read is reported, and the run continues.
template <typename Action>
bool succeeds(const Action& action)
{
    try {
        action();
        return true;
    } catch (const Failure& failure) {
        if (failure.code != ExitCode::Input) {
            throw;
        }
        report(failure.diagnostic);
        return false;
    }
}

// Checks every file that can be read. Returns whether all were read.
bool checkFiles(const CheckOptions& options, CheckReport& found)
{
    std::vector<std::string> files;
    bool allRead = true;
    for (const std::string& path : options.paths) {
        allRead &= succeeds([&] {
            const std::vector<std::string> more = mxFilesOf(path);
            files.insert(files.end(), more.begin(), more.end());
        });
    }
    for (const std::string& file : files) {
        allRead &=
            succeeds([&] { found.files.push_back(checkedFile(ModuleFile(file), options.rules)); });
    }
    return allRead;
}

std::string formatted(const CheckReport& found, const CheckOptions& options, bool quiet)
{
    if (options.format == "json") {
        return jsonText(checkJson(found));
    }
    if (options.format == "sarif") {
        return jsonText(checkSarif(found));
    }
    return checkText(found, options.output == "-" && takesColour(STDOUT_FILENO), quiet);
}

ExitCode checkAll(const CheckOptions& options, bool quiet)
{
    CheckReport found;
    const bool allRead = checkFiles(options, found);
    writeOutput(options.output, formatted(found, options, quiet));
    if (!allRead) {
        return ExitCode::Input;
    }
    unsigned counted = found.count(mxauthor::Severity::Error);
    if (options.strict) {
        counted += found.count(mxauthor::Severity::Warning) + found.count(mxauthor::Severity::Note);
    }
    return counted == 0 ? ExitCode::Done : ExitCode::Findings;
}

ExitCode runCheck(const CheckOptions& options, bool quiet)
{
    if (!options.explained.empty()) {
        writeOutput(options.output, ruleText(*mxauthor::findRule(options.explained)));
        return ExitCode::Done;
    }
    if (options.listRules) {
        writeOutput(options.output,
                    options.format == "json" ? jsonText(ruleListJson()) : ruleListText());
        return ExitCode::Done;
    }
    return checkAll(options, quiet);
}

void addOptions(CLI::App& verb, CheckOptions& options)
{
    verb.add_option(
        "FILE", options.paths,
        "mx files, their text forms, or directories whose files MX*.bin are checked; - for "
        "standard input");
    verb.add_option("-W", options.warnings, "Leave out a rule: -W no-RULE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    verb.add_option("-E", options.rules.raised, "Report the findings of RULE as errors")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    verb.add_flag("--strict", options.strict, "Exit with 1 on any finding");
    verb.add_flag("--list-rules", options.listRules, "List the rules (text or json)");
    verb.add_option("--explain", options.explained, "Describe RULE, with an example");
    acceptOneOf(*verb.add_option("--format", options.format, "text, json or sarif (SARIF 2.1.0)"),
                {"text", "json", "sarif"});
    verb.add_option("-o,--output", options.output, "Write to this file, - for standard output");
}

} // namespace

void addCheckVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("check", "Check mx files against the rules of the format");
    auto options = std::make_shared<CheckOptions>();
    addOptions(*verb, *options);
    verb->footer(checkFooter);
    verb->callback([options, choose, &global] {
        checkWords(*options);
        choose([options, &global] { return runCheck(*options, global.quiet); });
    });
}

} // namespace mxtool
