#pragma once

#include "CommandLineOptions.h"
#include "station/StationChoice.h"

#include <string>

namespace mxtool {

/// The options of `station channels`.
struct StationChannelsOptions
{
    StationChoice station;
    std::string format = "table";
    CsvOptions csv;
    std::string address; // empty: byte
    std::string scope;   // empty: global
    std::string output = "-";
    std::string picture; // empty: none

    /// Whether the list consists of declarations for a program.
    bool declares() const { return format == "st" || format == "plcopen"; }
};

/// Adds the options to `verb`. `options` must outlive the parsing.
void addStationChannelsOptions(CLI::App& verb, StationChannelsOptions& options);

/// Throws `CLI::ValidationError` for options that do not go together.
void checkWords(const StationChannelsOptions& options);

} // namespace mxtool
