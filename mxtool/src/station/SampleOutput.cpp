#include "station/SampleOutput.h"

#include "OutputFile.h"
#include "station/LiveTable.h"

#include <mxonline/SampleText.h>

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace mxtool {

namespace {

// A block or a line per sample.
class SampleLines : public SampleOutput
{
public:
    SampleLines(const SampleOutputOptions& chosen,
                const std::vector<mxonline::NamedChannel>& watched)
        : options(chosen), channels(watched), output({"-"}, mxmodule::FileKind::Other)
    {}

    void show(const mxonline::Sample& sample) override
    {
        if (isFirst || !options.changesOnly || sample.hasChanges()) {
            output.write("-", textOf(sample));
            isFirst = false;
        }
    }

    void show(const Failure& fault) override { report(fault.findings()); }

private:
    std::string textOf(const mxonline::Sample& sample) const
    {
        if (options.format == "json") {
            return sampleJson(channels, sample);
        }
        if (options.format == "csv") {
            return (isFirst ? sampleCsvHeading(channels) : "") + sampleCsv(sample);
        }
        if (isFirst) {
            return sampleText(channels, sample);
        }
        return options.changesOnly ? changesText(channels, sample)
                                   : "\n" + sampleText(channels, sample);
    }

    SampleOutputOptions options;
    const std::vector<mxonline::NamedChannel>& channels;
    OutputFiles output;
    bool isFirst = true;
};

bool canBeRedrawn()
{
    const char* const terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) == 1 && terminal != nullptr &&
           std::string_view(terminal) != "dumb";
}

} // namespace

std::unique_ptr<SampleOutput> sampleOutput(const SampleOutputOptions& options,
                                           const std::vector<mxonline::NamedChannel>& channels)
{
    const bool isTable = options.format == "text" && !options.changesOnly && !options.isSingle;
    if (isTable && canBeRedrawn()) {
        return std::make_unique<LiveTable>(options.title, channels);
    }
    return std::make_unique<SampleLines>(options, channels);
}

} // namespace mxtool
