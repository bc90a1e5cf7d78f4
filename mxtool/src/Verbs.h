#pragma once

#include "ExitCode.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

namespace mxtool {

/// What every verb is told.
struct GlobalOptions
{
    bool quiet = false;                   ///< No closing lines, no notes.
    bool overwrite = false;               ///< An output may replace another kind, or comments.
    std::string logLevel = "information"; ///< Of the device parser's log lines.
};

/// How a verb runs once the command line is understood. May throw a `Failure`.
using VerbAction = std::function<ExitCode()>;

/// Says how a verb runs; the last verb found in the command line is the one that is run.
using VerbChoice = std::function<void(VerbAction)>;

/// Adds every option and verb to the program: what can be called, and the one list of it. `options`
/// outlives the program.
void defineProgram(CLI::App& program, GlobalOptions& options, const VerbChoice& choose);

// Each adds its verb to the program. `options` outlives the action.

void addGroupsVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addShowVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addConfigVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addChannelsVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addPopulateVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addDevicesVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addCheckVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addExplainVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addDiffVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addNewVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addBuildVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);
void addDumpVerb(CLI::App& program, const GlobalOptions& options, const VerbChoice& choose);

} // namespace mxtool
