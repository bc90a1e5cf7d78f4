#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "check/CheckOptions.h"
#include "check/CheckText.h"

#include <mxmodule/ModuleFile.h>
#include <mxmodule/Population.h>

#include <unistd.h>

#include <algorithm>

namespace mxtool {

namespace {

using mxmodule::CheckedFile;

constexpr const char* checkFooter =
    R"(Exit codes: 1 on findings of severity error, with --strict on any; 3 when a file cannot be read.

Example:
  $ mxtool check examples/modules/MX0901.bin -W no-unknown-group
  examples/modules/MX0901.bin:0x000165: warning: [channel-name-repeated] group 20d7, channel 1: is named here again, only the first name is read
  1 file checked: 0 errors, 1 warning, 0 notes
)";

// Checks every file that can be read. Returns whether all were read.
bool checkFiles(const CheckOptions& options, std::vector<CheckedFile>& checked)
{
    std::vector<std::string> files;
    bool allRead = true;
    for (const std::string& path : options.paths) {
        allRead &= readsOrReports([&] {
            const std::vector<std::string> more = mxmodule::mxFilesOf(path);
            files.insert(files.end(), more.begin(), more.end());
        });
    }
    for (const std::string& file : files) {
        allRead &=
            readsOrReports([&] { checked.push_back(loadModuleFile(file).check(options.rules)); });
    }
    return allRead;
}

std::string formatted(const std::vector<CheckedFile>& checked, const CheckOptions& options,
                      bool quiet)
{
    if (options.format == "json") {
        return checkJson(checked);
    }
    if (options.format == "sarif") {
        return checkSarif(checked);
    }
    return checkText(checked, options.output == "-" && takesColour(STDOUT_FILENO), quiet);
}

ExitCode checkAll(const CheckOptions& options, bool quiet)
{
    std::vector<CheckedFile> checked;
    const bool allRead = checkFiles(options, checked);
    if (!allRead && checked.empty() && options.format == "text") {
        return ExitCode::Input; // the counts of no file would look like a result
    }
    writeOutput(options.output, formatted(checked, options, quiet));
    if (!allRead) {
        return ExitCode::Input;
    }
    std::size_t counted = countOf(Severity::Error, checked);
    if (options.strict) {
        counted += countOf(Severity::Warning, checked) + countOf(Severity::Note, checked);
    }
    return counted == 0 ? ExitCode::Done : ExitCode::Findings;
}

std::string ruleExplained(const std::string& name)
{
    const auto rules = mxmodule::checkRules();
    return ruleText(*std::find_if(rules.begin(), rules.end(),
                                  [&](const auto& rule) { return rule.name == name; }));
}

ExitCode runCheck(const CheckOptions& options, bool quiet)
{
    if (!options.explained.empty()) {
        writeOutput(options.output, ruleExplained(options.explained));
        return ExitCode::Done;
    }
    if (options.listRules) {
        writeOutput(options.output,
                    options.format == "json" ? mxmodule::checkRulesJson() : ruleListText());
        return ExitCode::Done;
    }
    return checkAll(options, quiet);
}

} // namespace

void addCheckVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("check", "Check mx files against the rules of the format");
    auto options = std::make_shared<CheckOptions>();
    addCheckOptions(*verb, *options);
    verb->footer(checkFooter);
    verb->callback([options, choose, &global] {
        checkWords(*options);
        choose([options, &global] { return runCheck(*options, global.quiet); });
    });
}

} // namespace mxtool
