#include "station/WatchRun.h"

#include "Diagnostic.h"
#include "Interruption.h"
#include "station/Ticks.h"

#include <mxonline/TimeText.h>

#include <fmt/format.h>
#include <text/Counted.h>

namespace mxtool {

WatchRun::WatchRun(const WatchOptions& chosen, std::chrono::milliseconds between)
    : options(chosen),
      interval(between),
      station(chosen.coupler),
      watch(station.coupler(), chosen.names),
      output(sampleOutput({chosen.format, chosen.changesOnly, chosen.count() == 1, title()},
                          watch.channels()))
{}

ExitCode WatchRun::run()
{
    using Clock = std::chrono::steady_clock;
    const Interruption endsAfterASample;
    Ticks ticks(Clock::now(), interval);
    for (std::uint64_t done = 1;; ++done) {
        takeSample();
        if (done == options.count() || Interruption::isRequestedUntil(ticks.next(Clock::now()))) {
            break;
        }
    }
    tellSkipped(ticks.skipped());
    return isLastMissing && !Interruption::isRequested() ? ExitCode::Output : ExitCode::Done;
}

std::string WatchRun::title() const
{
    return fmt::format("{} on {}, every {}; Ctrl+C ends", station.plan().station,
                       options.coupler.target, mxonline::timeText(interval));
}

// A fault of the output ends it in any case.
void WatchRun::takeSample()
{
    const std::optional<mxonline::Sample> sample = sampleUnlessFault();
    isLastMissing = !sample;
    if (sample) {
        output->show(*sample);
    }
}

// Nothing after a fault of the coupler, which is shown.
std::optional<mxonline::Sample> WatchRun::sampleUnlessFault()
{
    try {
        return watch.sample();
    } catch (const Failure& fault) {
        if (options.format != "text" && !options.keepsGoing) {
            throw;
        }
        output->show(fault);
        return std::nullopt;
    }
}

void WatchRun::tellSkipped(std::uint64_t skipped) const
{
    if (options.coupler.isVerbose && skipped > 0) {
        report({Severity::Note, "",
                fmt::format("{} had no sample: the sample before took longer",
                            text::counted(skipped, "interval"))});
    }
}

} // namespace mxtool
