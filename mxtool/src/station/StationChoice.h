#pragma once

#include <mxstation/Plan.h>

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mxtool {

/// The options of a verb that reads a station.
struct StationChoice
{
    std::string file;        ///< The station file, "-" for standard input.
    std::string databaseUrl; ///< Of the catalogue; empty: the default.
};

/// Adds FILE and --db to `verb`. `choice` must outlive the parsing.
void addStationChoice(CLI::App& verb, StationChoice& choice);

/// Adds --db alone.
void addStationDatabase(CLI::App& verb, StationChoice& choice);

/// What becomes of the station file.
enum class StationUse
{
    Read,           ///< It is an input: no output may replace it.
    ReadAndReplaced ///< It is the output as well.
};

/// Reads the station of `choice`, and the mx files that it names. Throws a `Failure`.
mxstation::Station loadStation(const StationChoice& choice, StationUse use = StationUse::Read);

/// The same with the bytes `source` of the file, which are read already.
mxstation::Station stationOfBytes(const StationChoice& choice, const std::vector<char>& source);

/// Reads and plans the station of `choice`. Reports warnings and notes; throws a `Failure` with all
/// findings when it cannot be planned.
mxstation::Plan loadPlan(const StationChoice& choice);

/// Returns the plan of `station` in the same way.
mxstation::Plan planOf(const mxstation::Station& station);

} // namespace mxtool
