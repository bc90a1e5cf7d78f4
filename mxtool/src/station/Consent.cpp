#include "station/Consent.h"

#include "Diagnostic.h"

#include <text/ShownText.h>

#include <CLI/CLI.hpp>

#include <unistd.h>

#include <cerrno>
#include <iostream>

namespace mxtool {

namespace {

constexpr std::size_t longestAnswer = 100;

// Not by std::cin, which may be at its end when the station came from there.
std::string lineOfStandardInput()
{
    std::string line;
    while (line.size() < longestAnswer) {
        char c = '\n';
        const ssize_t count = read(STDIN_FILENO, &c, 1);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count != 1 || c == '\n') {
            break;
        }
        line += c;
    }
    return line;
}

} // namespace

void addConsentOption(CLI::App& verb, bool& isGiven)
{
    verb.add_flag("--yes", isGiven, "Write without a question, also without a terminal");
}

void requireConsentPossible(bool isGiven)
{
    if (!isGiven && (isatty(STDIN_FILENO) != 1 || isatty(STDERR_FILENO) != 1)) {
        throw Failure(Origin::Request, "",
                      "Consent cannot be asked for: standard input and standard error are not both "
                      "terminals; nothing was sent to the coupler",
                      "look at the plan first, then add --yes to write without a question");
    }
}

bool hasConsent(bool isGiven, const std::string& question)
{
    if (isGiven) {
        return true;
    }
    std::cerr << text::forTerminal(question) << " Type \"yes\" to write: " << std::flush;
    if (lineOfStandardInput() == "yes") {
        return true;
    }
    report({Severity::Note, "", "Not agreed to by \"yes\": nothing was written."});
    return false;
}

} // namespace mxtool
