#pragma once

#include <mxmodule/Check.h>

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mxtool {

/// The words of a call of `check`.
struct CheckOptions
{
    std::vector<std::string> paths;
    std::vector<std::string> warnings; ///< Values of -W: no-RULE.
    mxmodule::RuleSettings rules;
    std::string explained; ///< A rule; empty: none.
    std::string format = "text";
    std::string output = "-";
    bool strict = false;
    bool listRules = false;
};

/// Adds the options of `check` to `verb`. `options` must outlive the parsing.
void addCheckOptions(CLI::App& verb, CheckOptions& options);

/// Takes the rules out of the parsed words. Throws a `CLI::ParseError` naming a word that is not
/// accepted.
void checkWords(CheckOptions& options);

} // namespace mxtool
