#pragma once

#include "session/OnlineState.h"

#include <mxmodule/Observer.h>
#include <mxonline/Coupler.h>
#include <mxonline/Watch.h>
#include <mxstation/Plan.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace workbench {

/// The times of an online session.
struct OnlineTimes
{
    std::chrono::milliseconds sample{500}; ///< From a sample to the next one.
    std::chrono::milliseconds attention{
        5000}; ///< Without a question for the state: nothing is read.
};

/// Work that is not done: other work is, or what was agreed to is not what there is now.
class OnlineConflict : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The coupler of the station, for all pages: one work after the other, in a thread of its own.
///
/// Operations return at once; `state` has what became of them. The coupler is released when no page
/// asks for the state for some time. All operations may be called by any thread.
class OnlineSession : private mxmodule::Observer
{
public:
    /// Sends nothing. Throws a `mxmodule::Failure` for a text that is no target.
    explicit OnlineSession(const std::string& target, const OnlineTimes& times = {});

    /// Ends the work between two writes, and waits for that.
    ~OnlineSession() override;
    OnlineSession(const OnlineSession&) = delete;
    OnlineSession& operator=(const OnlineSession&) = delete;

    std::string target() const; ///< With everything stated, such as "tcp:127.0.0.1:502".

    /// Returns the state now; that a page is there keeps live values going.
    OnlineState state();

    /// Begins to compare the coupler with `plan`. `isPlan`: to be written. Throws an
    /// `OnlineConflict` while other work is done, a `mxmodule::Failure` for a plan with errors.
    void compare(const mxstation::Plan& plan, bool isPlan);

    /// Begins to write the difference with the number `id`, which a person agreed to. `version` is
    /// that of the saved station. Throws an `OnlineConflict` if it is not the newest one, was made
    /// to verify, or is not that of `version`, and while other work is done.
    void apply(std::uint64_t id, const std::string& version);

    /// Begins to read the channels that `names` select; none: all. Ends what another page began.
    /// Returns `LiveValues::id`.
    std::uint64_t watch(const mxstation::Plan& plan, const std::vector<std::string>& names);

    void endWatch(); ///< Ends that.

private:
    using Clock = std::chrono::steady_clock;

    // What became of work; with findings if it failed.
    struct WorkResult
    {
        std::optional<mxonline::CouplerDifference> difference;
        std::optional<mxonline::ApplyReport> report;
        std::vector<mxmodule::Finding> findings;
    };

    // A sample; with findings if it failed.
    struct SampleResult
    {
        std::string time;
        std::vector<LiveValue> values;
        std::vector<mxmodule::Finding> findings;
    };

    void notice(const mxmodule::Finding& finding) override;
    void progress(std::size_t done, std::size_t total, const char* things) override;

    void run();
    void runWork(std::unique_lock<std::mutex>& lock);
    void takeSample(std::unique_lock<std::mutex>& lock);
    void releaseWhenUnattended();
    bool isSampleDue() const;
    void begin(OnlineWork work);
    WorkResult resultOf(OnlineWork work, const std::shared_ptr<const mxstation::Plan>& plan,
                        const std::optional<ShownDifference>& agreed);
    SampleResult sampleOf(const std::shared_ptr<const mxstation::Plan>& plan,
                          const std::vector<std::string>& names, bool isNew);
    void sleep(std::unique_lock<std::mutex>& lock);
    mxonline::Coupler& couplerOf(const std::shared_ptr<const mxstation::Plan>& plan);

    const mxonline::Target place;
    const OnlineTimes times;

    std::mutex mutex; // of all below
    std::condition_variable changed;
    OnlineState shown;
    std::shared_ptr<const mxstation::Plan> planned; // of the work, and of what was agreed to
    std::shared_ptr<const mxstation::Plan> watched; // null: nothing is watched
    std::vector<std::string> watchedNames;
    bool isWatchNew = false;
    Clock::time_point lastAsked;
    Clock::time_point nextSample;
    std::uint64_t lastId = 0; // of comparisons and watches
    bool isEnding = false;

    // Of the thread alone.
    std::unique_ptr<mxonline::Coupler> coupler;
    std::shared_ptr<const mxstation::Plan> coupled; // what `coupler` was made of
    std::unique_ptr<mxonline::Watch> reading;

    std::thread thread; // the last, so that it begins when everything else exists
};

} // namespace workbench
