#pragma once

#include "mxonline/MxonlineApi.h"
#include "mxonline/Watch.h"

#include <string>
#include <vector>

// Samples of watched channels for people and for logging. Each function takes `Watch::channels` and
// a sample of it.

namespace mxonline {

/// A table for people: aligned columns with the value of each channel.
struct SampleTable
{
    std::string time;              ///< "2026-01-31T08:15:00.123Z".
    std::string heading;           ///< Line with the names of the columns.
    std::vector<std::string> rows; ///< A line per channel; a value that changed is marked by "*".
};

/// Returns the table of `sample`.
MXONLINE_API SampleTable sampleTable(const std::vector<NamedChannel>& channels,
                                     const Sample& sample);

/// Returns a line with the time of `sample`, and its table.
MXONLINE_API std::string sampleText(const std::vector<NamedChannel>& channels,
                                    const Sample& sample);

/// Returns a line "TIME  NAME  VALUE" for each value that changed.
MXONLINE_API std::string changesText(const std::vector<NamedChannel>& channels,
                                     const Sample& sample);

/// Returns the first line of a CSV file of samples: "time" and the name of each channel.
MXONLINE_API std::string sampleCsvHeading(const std::vector<NamedChannel>& channels);

/// Returns the line of `sample`: its time and the text of each value.
MXONLINE_API std::string sampleCsv(const Sample& sample);

/// Returns `channels` as JSON, schema "mxonline.channels" version 1.
MXONLINE_API std::string channelsJson(const std::vector<NamedChannel>& channels);

/// Returns `sample` as JSON in one line, schema "mxtool.sample" version 1.
MXONLINE_API std::string sampleJson(const std::vector<NamedChannel>& channels,
                                    const Sample& sample);

} // namespace mxonline
