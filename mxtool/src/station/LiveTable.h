#pragma once

#include "OutputFile.h"
#include "station/SampleOutput.h"

#include <cstddef>
#include <optional>

namespace mxtool {

/// Size of a terminal in characters.
struct TerminalSize
{
    std::size_t columns = 80;
    std::size_t lines = 24;
};

/// A table of samples on a terminal, redrawn in place; values that changed are coloured.
class LiveTable : public SampleOutput
{
public:
    /// `watched` outlives the object. `heading` is the first line.
    LiveTable(std::string heading, const std::vector<mxonline::NamedChannel>& watched);

    void show(const mxonline::Sample& sample) override;
    void show(const Failure& fault) override;

private:
    void draw(const std::vector<std::string>& notes);
    std::vector<std::string> lines(const std::vector<std::string>& notes,
                                   const TerminalSize& size) const;
    void addRows(std::vector<std::string>& shown, std::size_t room, std::size_t columns) const;

    std::string title;
    const std::vector<mxonline::NamedChannel>& channels;
    OutputFiles output;
    bool isColoured;
    std::optional<mxonline::Sample> last;
    bool isFirst = true; // nothing is drawn yet
};

} // namespace mxtool
