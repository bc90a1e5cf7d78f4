#include "api/RefusedStation.h"

#include <mxstation/Plan.h>

#include <optional>

namespace workbench {

namespace {

void forgetPlaces(std::optional<mxstation::StatedByte>& byte)
{
    if (byte) {
        byte->place = {};
    }
}

void forgetPlaces(mxstation::StatedBytes& bytes)
{
    bytes.place = {};
    forgetPlaces(bytes.input);
    forgetPlaces(bytes.output);
}

void forgetPlaces(mxstation::Entry& entry)
{
    entry.place = {};
    entry.namePlace = {};
    forgetPlaces(entry.at);
    if (entry.reserve) {
        forgetPlaces(entry.reserve->size);
    }
    for (mxstation::StatedValue& value : entry.parameters) {
        value.place = {};
    }
    for (mxstation::ChannelNote& note : entry.channels) {
        note.place = {};
        note.aliasPlace = {};
    }
}

} // namespace

std::vector<mxmodule::Finding> errorsWithoutPlaces(mxstation::Station station)
{
    station.layoutPlace = {};
    station.modbusPlace = {};
    for (mxstation::Entry& entry : station.entries) {
        forgetPlaces(entry);
    }
    std::vector<mxmodule::Finding> errors;
    for (mxmodule::Finding& finding : mxstation::plan(station).findings) {
        if (finding.severity == mxmodule::Severity::Error) {
            finding.place.clear();
            finding.excerpt.clear();
            errors.push_back(std::move(finding));
        }
    }
    return errors;
}

} // namespace workbench
