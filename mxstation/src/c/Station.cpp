#include "c/StationHandles.h"

#include <mxstation/Pin.h>

namespace {

using mxmodule::requireText;
using mxstation::Station;

mxstation::StationOptions stationOptions(const char* catalogueUrl)
{
    mxstation::StationOptions options;
    options.catalogueUrl = catalogueUrl == nullptr ? "" : catalogueUrl;
    return options;
}

mxstation_station* newStation(Station station)
{
    return new mxstation_station{std::make_shared<const Station>(std::move(station))};
}

// Returns what `resultOf` returns for the station of `handle`.
template <typename ResultOf>
mxmodule_bytes* bytesOfStation(const mxstation_station* handle, mxmodule_error** error,
                               const ResultOf& resultOf)
{
    return mxmodule::bytesOfHandle(handle, "a station", error, [&](const mxstation_station& one) {
        return resultOf(*one.station);
    });
}

} // namespace

mxstation_station* mxstation_load(const char* path, const char* catalogueUrl,
                                  mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return newStation(mxstation::readStation(requireText(path, "the path of a station file"),
                                                 stationOptions(catalogueUrl)));
    });
}

mxstation_station* mxstation_from_text(const void* source, size_t size, const char* name,
                                       const char* catalogueUrl, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const std::vector<char> text = mxmodule::requireBytes(source, size, "a station file");
        return newStation(mxstation::stationOf({text.begin(), text.end()},
                                               requireText(name, "a name for messages"),
                                               stationOptions(catalogueUrl)));
    });
}

void mxstation_free(mxstation_station* station)
{
    delete station;
}

mxmodule_bytes* mxstation_name(const mxstation_station* station, mxmodule_error** error)
{
    return bytesOfStation(station, error, [](const Station& one) { return one.name; });
}

mxmodule_bytes* mxstation_source(const mxstation_station* station, mxmodule_error** error)
{
    return bytesOfStation(station, error, [](const Station& one) { return one.source; });
}

mxmodule_bytes* mxstation_findings(const mxstation_station* station, mxmodule_error** error)
{
    return bytesOfStation(station, error,
                          [](const Station& one) { return mxmodule::findingsJson(one.findings); });
}

mxmodule_bytes* mxstation_pinned(const mxstation_station* station, mxmodule_error** error)
{
    return bytesOfStation(station, error, [](const Station& one) {
        return mxstation::pinned(one, mxstation::plan(one));
    });
}
