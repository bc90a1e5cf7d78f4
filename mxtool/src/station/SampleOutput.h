#pragma once

#include "Diagnostic.h"

#include <mxonline/Watch.h>

#include <memory>
#include <string>
#include <vector>

namespace mxtool {

/// How samples are shown or logged.
struct SampleOutputOptions
{
    std::string format = "text"; ///< "text", "csv" or "json".
    bool changesOnly = false;    ///< Only what changed since the sample before.
    bool isSingle = false;       ///< There is one sample.
    std::string title;           ///< What is watched, for people.
};

/// Where samples go, one after the other.
class SampleOutput
{
public:
    SampleOutput() = default;
    virtual ~SampleOutput() = default;
    SampleOutput(const SampleOutput&) = delete;
    SampleOutput& operator=(const SampleOutput&) = delete;

    /// Throws a `Failure` when it cannot be written.
    virtual void show(const mxonline::Sample& sample) = 0;

    /// Shows why there is no sample.
    virtual void show(const Failure& fault) = 0;
};

/// Returns the output for samples of `channels`, which outlive it: standard output; as a table that
/// is redrawn in place if that is a terminal.
std::unique_ptr<SampleOutput> sampleOutput(const SampleOutputOptions& options,
                                           const std::vector<mxonline::NamedChannel>& channels);

} // namespace mxtool
