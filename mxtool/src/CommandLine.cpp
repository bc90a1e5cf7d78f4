#include "CommandLine.h"

#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "FilesInUse.h"
#include "OutputFile.h"
#include "Verbs.h"

#include <mxmodule/Observer.h>

#include <fmt/format.h>

#include <algorithm>
#include <iostream>

namespace mxtool {

namespace {

constexpr const char* description =
    "Reads and writes the device descriptions (mx files) of kv38 modules.";

constexpr const char* footer =
    R"(mxtool VERB --help, or mxtool help VERB, lists what a verb accepts.

Exit codes:
  0  done
  1  done, with findings, or some files failed
  2  invalid command line
  3  an input cannot be read or is malformed
  4  an output, the database or a coupler failed

Environment:
  DEVICE_DATABASE_URL  database if --db is not given
  NO_COLOR             no colours, not even on a terminal

Example:
  $ mxtool groups examples/modules/MX0001.bin
  Group  Name             Payload at      Size
  0000   header           0x000004 (4)    4
  0001   module identity  0x00000e (14)   17
  0020   catalogue        0x000025 (37)   168
  0040   component        0x0000d3 (211)  48
  0011   data sizes       0x000109 (265)  40
)";

const std::vector<std::string> loggingLevels = {
    "none", "fatal", "critical", "error", "warning", "notice", "information", "debug", "trace"};

void addGlobalOptions(CLI::App& program, GlobalOptions& options)
{
    program.name("mxtool");
    program.description(description);
    program.set_version_flag("--version", "mxtool " MXTOOL_VERSION);
    program.add_flag("-q,--quiet", options.quiet, "Print results only, no closing lines");
    program.add_flag(
        "--overwrite", options.overwrite,
        "Allow an output to replace an mx file, a text form, a file of values, a station "
        "or a database by a file of another kind, or a text whose comments and repeats "
        "would be lost");
    auto* const level = program.add_option("--log-level", options.logLevel,
                                           "Lowest priority of the parser's log lines shown");
    level->check(CLI::Validator( // numbers and upper case are accepted as well
        [](const std::string& word) {
            return mxmodule::isLogLevel(word) ? "" : notAccepted(word, loggingLevels);
        },
        fmt::format("{{{}}}", fmt::join(loggingLevels, ","))));
    program.fallthrough();
    program.require_subcommand(1);
    program.footer(footer);
}

} // namespace

void defineProgram(CLI::App& program, GlobalOptions& options, const VerbChoice& choose)
{
    addGlobalOptions(program, options);
    addGroupsVerb(program, options, choose);
    addShowVerb(program, options, choose);
    addConfigVerb(program, options, choose);
    addChannelsVerb(program, options, choose);
    addDatasheetVerb(program, options, choose);
    addPopulateVerb(program, options, choose);
    addDevicesVerb(program, options, choose);
    addCheckVerb(program, options, choose);
    addExplainVerb(program, options, choose);
    addDiffVerb(program, options, choose);
    addNewVerb(program, options, choose);
    addBuildVerb(program, options, choose);
    addDumpVerb(program, options, choose);
    addStationVerb(program, options, choose);
    addSimulateVerb(program, options, choose);
    addServeVerb(program, options, choose);
}

namespace {

// Parses the command line and runs the verb. Failures are thrown.
ExitCode runVerb(CLI::App& program, std::vector<std::string> arguments)
{
    GlobalOptions options;
    VerbAction action;
    defineProgram(program, options, [&action](VerbAction chosen) { action = std::move(chosen); });
    std::reverse(arguments.begin(), arguments.end()); // CLI11 expects them in this order
    program.parse(arguments);
    filesInUse() = FilesInUse(options.overwrite);
    return action();
}

bool isOneOf(int code, std::initializer_list<CLI::ExitCodes> codes)
{
    return std::any_of(codes.begin(), codes.end(),
                       [code](CLI::ExitCodes other) { return code == static_cast<int>(other); });
}

// Reports unknown arguments instead of the parser's error that follows from them.
ExitCode reportWrongWords(const CLI::App& program, const CLI::ParseError& end,
                          std::vector<Finding> wrong)
{
    const int code = end.get_exit_code();
    const bool isMissing = isOneOf(code, {CLI::ExitCodes::RequiredError});
    if (wrong.empty() && isMissing && needsVerb(program)) {
        wrong.push_back(missingVerb(program));
    } else if (wrong.empty() ||
               !isOneOf(code, {CLI::ExitCodes::Success, CLI::ExitCodes::ExtrasError,
                               CLI::ExitCodes::RequiredError})) {
        wrong.push_back({Severity::Error, "", end.what()});
    }
    if (wrong.back().hint.empty()) {
        wrong.back().hint = helpHint(program);
    }
    for (const Finding& diagnostic : wrong) {
        report(diagnostic);
    }
    return ExitCode::Usage;
}

// Help and version are results; any other end of the parsing is an invalid command line.
ExitCode endOfParsing(const CLI::App& program, const CLI::ParseError& end,
                      const std::vector<std::string>& words)
{
    const std::vector<Finding> unknown = unknownArguments(program, words);
    if (end.get_exit_code() != 0 || (needsVerb(program) && !unknown.empty())) {
        return reportWrongWords(program, end, unknown);
    }
    std::ostringstream text;
    program.exit(end, text, text);
    writeOutput("-", text.str());
    return ExitCode::Done;
}

ExitCode runReporting(const std::vector<std::string>& words)
{
    CLI::App program;
    try {
        try {
            return runVerb(program, words);
        } catch (const CLI::ParseError& end) {
            return endOfParsing(program, end, words);
        }
    } catch (const ReaderLeft&) {
        return ExitCode::Output;
    } catch (const Failure& failure) {
        report(failure.findings());
        return exitCodeFor(failure);
    }
}

} // namespace

int run(std::vector<std::string> arguments)
{
    try {
        return static_cast<int>(runReporting(withHelpAsOption(std::move(arguments))));
    } catch (const std::bad_alloc&) {
        report({Severity::Error, "", "Out of memory"});
    } catch (const std::exception& failure) {
        report({Severity::Error, "", failure.what()});
    }
    return static_cast<int>(ExitCode::Output);
}

} // namespace mxtool
