#pragma once

#include "CommandLineOptions.h"
#include "ModuleChoice.h"

#include <mxmodule/Assignment.h>
#include <mxmodule/Configuration.h>

#include <string>
#include <vector>

namespace mxtool {

/// The words of a call of `config`.
struct ConfigOptions
{
    ModuleChoice module;
    std::vector<std::string> set;
    std::vector<std::string> valuesFiles;
    std::string decode;  ///< Bytes or the name of a file; empty: not given.
    std::string compare; ///< Bytes or the name of a file; empty: not given.
    bool force = false;
    bool changed = false;
    std::string fieldbus = "raw";
    std::string format; ///< Empty: not given.
    CsvOptions csv;
    std::string output = "-";

    /// Returns whether the bytes given are compared with the composed ones.
    bool compares() const { return !compare.empty() || (!decode.empty() && !valuesFiles.empty()); }

    /// Returns the option --decode or --compare with its value, as findings name it.
    std::string imageOption() const;

    /// Returns the bytes of --decode or --compare, or the name of a file of them.
    const std::string& imageWords() const { return decode.empty() ? compare : decode; }

    /// Returns the format of the output: the one given, else what the name of the output means.
    std::string formatOfOutput() const;

    mxmodule::Fieldbus fieldbusOfBytes() const;
    mxmodule::ValueCheck check() const;
    mxmodule::Listing listing() const;
};

/// Adds the options of `config` to `verb`. `options` must outlive the parsing.
void addConfigOptions(CLI::App& verb, ConfigOptions& options);

/// Throws a `CLI::ParseError` naming an option that would be ignored. Options that contradict each
/// other exclude each other by definition.
void checkWords(const ConfigOptions& options);

} // namespace mxtool
