#pragma once

#include "mxauthor/Check.h"
#include "mxauthor/TextForm.h"

namespace mxauthor {

/// Maps places in an mx file to the places in the text that it was built from.
class SourceMap
{
public:
    /// `built` comes from the text `source`, without errors. `source` outlives the object.
    SourceMap(const std::string& source, const BuildResult& built);
    ~SourceMap();

    /// Returns `what` at the value that the byte at `offset` of the built file comes from; where no
    /// value is stated for it, at its record, else at its group. A computed byte has the start of
    /// the text.
    SourceError at(std::uint32_t offset, const std::string& what) const;

    /// The same for the place of a finding in the built file. A finding about a default points at
    /// the default of its parameter, also where several parameters share the byte.
    SourceError of(const Finding& finding, const std::string& what) const;

    /// Returns which repetition of a repeated line the finding comes from.
    Repetition repetitionOf(const Finding& finding) const;

private:
    class Content;
    std::unique_ptr<const Content> content;
};

} // namespace mxauthor
