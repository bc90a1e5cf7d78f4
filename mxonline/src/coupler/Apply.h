#pragma once

#include "coupler/CouplerContent.h"
#include "coupler/ParameterWrites.h"

#include <mxonline/ApplyReport.h>

#include <vector>

namespace mxonline {

/// Brings the parameters of a station to its coupler, and reports what is there then.
class Apply
{
public:
    /// `connected` outlives the object.
    explicit Apply(Coupler::Content& connected) : coupler(connected) {}

    /// See `Coupler::apply`.
    ApplyReport run(const CouplerDifference& confirmed);

private:
    void requireConfirmed(const CouplerDifference& confirmed);
    void writeAll();
    void tellProgress(std::size_t done, std::size_t total);
    void write(const ParameterWrite& one);
    void commit();
    void readBack();

    Coupler::Content& coupler;
    CouplerDifference before;
    std::vector<ParameterPlace> written; // that the coupler confirmed
    ApplyReport report;
};

} // namespace mxonline
