#include "station/ApplyRun.h"

#include "Diagnostic.h"
#include "FormatOfName.h"
#include "Interruption.h"
#include "OutputFile.h"
#include "station/Consent.h"

#include <text/ShownText.h>

#include <iostream>

namespace mxtool {

namespace {

using mxonline::ApplyReport;
using mxonline::CouplerDifference;

std::string reportIn(const std::string& format, const ApplyReport& report)
{
    if (format == "json") {
        return report.json();
    }
    return format == "html" ? report.html() : report.text();
}

// What happened on the coupler is never lost: without the file it goes to standard error.
void writeReport(OutputFiles& files, const ApplyOptions& options, const ApplyReport& applied)
{
    try {
        files.write(options.output, reportIn(options.reportFormat(), applied));
    } catch (const Failure&) {
        std::cerr << applied.text() << std::flush;
        throw;
    }
}

// A text on standard output says it.
void tellResult(const ApplyOptions& options, const ApplyReport& applied, bool quiet)
{
    if (options.output == "-" && options.reportFormat() == "text") {
        return;
    }
    report(applied.findings);
    if (!applied.isDone()) {
        report({Severity::Error, "", applied.verdict()});
    } else if (!quiet) {
        std::cerr << text::forTerminal(applied.verdict()) << '\n';
    }
}

// Shows the plan; returns whether it may be applied.
bool isAgreedTo(const ApplyOptions& options, const CouplerDifference& difference)
{
    std::cerr << difference.text(mxonline::DifferenceUse::Apply) << '\n' << std::flush;
    const auto errors = difference.identityErrors();
    if (!errors.empty()) {
        throw Failure(errors);
    }
    return difference.writes.requests == 0 || hasConsent(options.hasConsent, difference.question());
}

} // namespace

std::string ApplyOptions::reportFormat() const
{
    return format.empty() ? formatOfName(output, {"json", "html"}, "text") : format;
}

ExitCode applyStation(const ApplyOptions& options, bool quiet)
{
    requireConsentPossible(options.hasConsent);
    const bool isJson = options.reportFormat() == "json";
    OutputFiles files({options.output},
                      isJson ? mxmodule::FileKind::Result : mxmodule::FileKind::Other);
    StationCoupler station(options.coupler);
    files.requireWritable(options.output);
    const CouplerDifference difference = station.coupler().difference();
    if (!isAgreedTo(options, difference)) {
        return ExitCode::Findings;
    }
    const Interruption finishesItsStep;
    const ApplyReport applied = station.coupler().apply(difference);
    writeReport(files, options, applied);
    tellResult(options, applied, quiet);
    return applied.isDone() ? ExitCode::Done : ExitCode::Output;
}

} // namespace mxtool
