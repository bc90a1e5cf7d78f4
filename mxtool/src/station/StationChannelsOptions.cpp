#include "station/StationChannelsOptions.h"

#include "FormatOfName.h"

#include <CLI/CLI.hpp>

namespace mxtool {

void addStationChannelsOptions(CLI::App& verb, StationChannelsOptions& options)
{
    addStationChoice(verb, options.station);
    acceptOneOf(*verb.add_option("--format", options.format,
                                 "table, json, csv, st (Structured Text), plcopen (PLCopen XML) or "
                                 "c (header for C and C++)"),
                {"table", "json", "csv", "st", "plcopen", "c"});
    acceptOneOf(*verb.add_option("--address", options.address,
                                 "How addresses of declarations count: in bytes (the default), in "
                                 "units of their own size, or each size separately from 0"),
                {"byte", "index", "separate"});
    acceptOneOf(*verb.add_option("--scope", options.scope,
                                 "Declare global variables (the default) or those of a program"),
                {"global", "program"});
    addCsvOptions(verb, options.csv);
    addOutputOption(verb, options.output);
    verb.add_option("--picture", options.picture,
                    "Draw the process images to this SVG file as well; - for standard output, in "
                    "place of the list")
        ->type_name("FILE");
}

void checkWords(const StationChannelsOptions& options)
{
    requireCsv(options.csv, options.format);
    if (isOtherPicture(options.picture)) {
        throw CLI::ValidationError("--picture", "draws SVG, expected a name that ends in .svg, "
                                                "not " +
                                                    options.picture);
    }
    if (!options.declares() && !(options.address.empty() && options.scope.empty())) {
        throw CLI::ValidationError(options.address.empty() ? "--scope" : "--address",
                                   "goes with --format st or plcopen only, not with " +
                                       options.format);
    }
}

} // namespace mxtool
