#pragma once

#include "ExitCode.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

namespace mxtool {

/// The options that every verb accepts.
struct GlobalOptions
{
    bool quiet = false;     ///< Print no closing lines and no notes.
    bool overwrite = false; ///< An output may replace a file of another kind, or comments.
    std::string logLevel = "information"; ///< Lowest priority of log lines shown.
};

/// Runs a verb after the command line was parsed. May throw a `Failure`.
using VerbAction = std::function<ExitCode()>;

/// Sets the action of the verb to run; the last verb in the command line counts.
using VerbChoice = std::function<void(VerbAction)>;

/// Adds every option and verb to the program; the only list of them. `options` must outlive the
/// program.
void defineProgram(CLI::App& program, GlobalOptions& options, const VerbChoice& choose);

// Each adds its verb to the program. `options` must outlive the action.

void addGroupsVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addShowVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addConfigVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addChannelsVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addDatasheetVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addPopulateVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addDevicesVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addCheckVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addExplainVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addDiffVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addNewVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addBuildVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addDumpVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addServeVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addSimulateVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);

/// Adds the verb `station` with its own verbs.
void addStationVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);

// Each adds its verb to the verb `station`.

void addStationShowVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationChannelsVerb(CLI::App& station, const GlobalOptions& options,
                            const VerbChoice& choose);
void addStationConfigVerb(CLI::App& station, const GlobalOptions& options,
                          const VerbChoice& choose);
void addStationCheckVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationDiffVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationPlanVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationApplyVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationVerifyVerb(CLI::App& station, const GlobalOptions& options,
                          const VerbChoice& choose);
void addStationReadVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationWatchVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationSetVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);
void addStationPinVerb(CLI::App& station, const GlobalOptions& options, const VerbChoice& choose);

} // namespace mxtool
