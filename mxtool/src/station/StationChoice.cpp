#include "station/StationChoice.h"

#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "FilesInUse.h"
#include "InputFile.h"
#include "ToolObserver.h"

#include <mxmodule/Catalogue.h>

#include <CLI/CLI.hpp>

namespace mxtool {

void addStationChoice(CLI::App& verb, StationChoice& choice)
{
    verb.add_option("FILE", choice.file, "The station file, - for standard input")->required();
    addStationDatabase(verb, choice);
}

void addStationDatabase(CLI::App& verb, StationChoice& choice)
{
    addDatabaseOption(verb, choice.databaseUrl);
}

mxstation::Station loadStation(const StationChoice& choice, StationUse use)
{
    const bool isInput = use == StationUse::Read || choice.file == "-";
    return stationOfBytes(choice,
                          isInput ? loadBytes(choice.file) : loadBytesToReplace(choice.file));
}

mxstation::Station stationOfBytes(const StationChoice& choice, const std::vector<char>& source)
{
    mxstation::StationOptions options;
    options.catalogueUrl =
        choice.databaseUrl.empty() ? mxmodule::Catalogue::defaultUrl() : choice.databaseUrl;
    filesInUse().addInputDatabase(options.catalogueUrl);
    ToolObserver observer;
    options.observer = &observer;
    return mxstation::stationOf({source.begin(), source.end()}, inputName(choice.file), options);
}

mxstation::Plan loadPlan(const StationChoice& choice)
{
    return planOf(loadStation(choice));
}

mxstation::Plan planOf(const mxstation::Station& station)
{
    mxstation::Plan plan = mxstation::plan(station);
    if (!plan.ok()) {
        throw Failure(plan.findings);
    }
    report(plan.findings);
    return plan;
}

} // namespace mxtool
