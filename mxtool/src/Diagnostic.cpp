#include "Diagnostic.h"

#include "Progress.h"

#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace mxtool {

namespace {

using mxmodule::Advice;

const char* colourOf(Severity severity)
{
    if (severity == Severity::Error) {
        return "1;31";
    }
    return severity == Severity::Warning ? "1;33" : "1;36";
}

// A finding combines texts from several sources: an invalid byte must not change the others.
std::string shown(const std::string& text)
{
    return text::forTerminal(text::repairedUtf8(text));
}

// The hint of `finding`; where the library gives advice, with the options of this program.
std::string hintOf(const Finding& finding)
{
    switch (finding.advice) {
    case Advice::ReadAsRaw:
        return finding.hint + ": leave out --fieldbus modbus";
    case Advice::ReadAsModbus:
        return finding.hint + ": add --fieldbus modbus";
    case Advice::ReadAsValues:
        return "--values takes a file of values";
    case Advice::ReadAsImage:
        return "--decode shows the values in bytes, --param-block sets values in them";
    default:
        return finding.hint;
    }
}

} // namespace

std::string painted(const std::string& text, const char* colour, bool coloured)
{
    return coloured ? fmt::format("\033[{}m{}\033[0m", colour, text) : text;
}

std::string toText(const Finding& finding, bool coloured)
{
    const std::string severity = std::string(severityName(finding.severity)) + ":";
    const std::string hint = hintOf(finding);
    std::string text = finding.place.empty() ? "" : shown(finding.place) + ": ";
    text +=
        painted(severity, colourOf(finding.severity), coloured) + " " + shown(finding.text) + "\n";
    if (!hint.empty()) {
        text += painted("hint:", "1;36", coloured) + " " + shown(hint) + "\n";
    }
    return text + finding.excerpt;
}

void report(const Finding& finding)
{
    clearProgressLine();
    std::cerr << toText(finding, takesColour(STDERR_FILENO)) << std::flush;
}

void report(const std::vector<Finding>& findings)
{
    for (const Finding& finding : findings) {
        report(finding);
    }
}

ExitCode exitCodeFor(const Failure& failure)
{
    const auto& findings = failure.findings();
    const auto error = std::find_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.severity == Severity::Error;
    });
    switch ((error == findings.end() ? failure.reason() : *error).origin) {
    case Origin::Request:
        return ExitCode::Usage;
    case Origin::Input:
        return ExitCode::Input;
    default:
        return ExitCode::Output;
    }
}

bool takesColour(int descriptor)
{
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(descriptor) == 1 && (noColour == nullptr || *noColour == '\0');
}

} // namespace mxtool
