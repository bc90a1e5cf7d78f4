#pragma once

#include <string>

namespace CLI {
class App;
}

namespace mxtool {

/// Adds --yes to `verb`, which writes to a coupler. `isGiven` must outlive the parsing.
void addConsentOption(CLI::App& verb, bool& isGiven);

/// Throws a `Failure` of exit code 2 unless --yes is given or a person can be asked: standard input
/// and standard error are terminals. To be called before anything is sent.
void requireConsentPossible(bool isGiven);

/// Returns whether a person agrees: --yes is given, or `question` on standard error was answered by
/// the word "yes". Tells of any other answer.
bool hasConsent(bool isGiven, const std::string& question);

} // namespace mxtool
