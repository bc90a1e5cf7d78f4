#include "check/CheckOptions.h"

#include "CommandLineOptions.h"

#include <text/NearestWords.h>

#include <algorithm>

namespace mxtool {

namespace {

void requireRule(const std::string& option, const std::string& name)
{
    std::vector<std::string> names;
    for (const mxmodule::CheckRule& rule : mxmodule::checkRules()) {
        names.push_back(rule.name);
    }
    if (std::find(names.begin(), names.end(), name) != names.end()) {
        return;
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

} // namespace

void addCheckOptions(CLI::App& verb, CheckOptions& options)
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

} // namespace mxtool
