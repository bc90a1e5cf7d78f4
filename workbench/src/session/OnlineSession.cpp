#include "session/OnlineSession.h"

#include <mxonline/SampleText.h>
#include <text/Sha256.h>

#include <algorithm>
#include <utility>

namespace workbench {

namespace {

using mxmodule::Failure;
using mxmodule::Origin;

constexpr std::size_t mostNotices = 20;

std::string versionOf(const mxstation::Plan& plan)
{
    return text::sha256(plan.source);
}

// Whether both are of the same text and of the same mx files, which may change meanwhile.
bool isSameStation(const mxstation::Plan& one, const mxstation::Plan& other)
{
    return one.source == other.source &&
           std::equal(
               one.modules.begin(), one.modules.end(), other.modules.begin(), other.modules.end(),
               [](const auto& a, const auto& b) { return a.file.bytes() == b.file.bytes(); });
}

std::vector<mxmodule::Finding> findingsOf(const std::exception& failure)
{
    const auto* const known = dynamic_cast<const Failure*>(&failure);
    return known != nullptr ? known->findings()
                            : std::vector<mxmodule::Finding>{{mxmodule::Severity::Error, "",
                                                              failure.what(), "", Origin::Output}};
}

} // namespace

OnlineSession::OnlineSession(const std::string& target, const OnlineTimes& chosen)
    : place(mxonline::targetOf(target)), times(chosen), thread([this] { run(); })
{}

OnlineSession::~OnlineSession()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isEnding = true;
    }
    changed.notify_all();
    thread.join();
}

std::string OnlineSession::target() const
{
    return mxonline::targetText(place);
}

OnlineState OnlineSession::state()
{
    const std::lock_guard<std::mutex> lock(mutex);
    lastAsked = Clock::now();
    changed.notify_all();
    return shown;
}

void OnlineSession::begin(OnlineWork work)
{
    if (shown.work != OnlineWork::None) {
        throw OnlineConflict("The coupler is being used, wait until that is done");
    }
    shown.work = work;
    shown.done = 0;
    shown.total = 0;
    shown.findings.clear();
    ++shown.sequence;
    lastAsked = Clock::now();
    changed.notify_all();
}

void OnlineSession::compare(const mxstation::Plan& plan, bool isPlan)
{
    const mxonline::Coupler checked(plan, place); // throws for a plan that has no coupler
    const std::lock_guard<std::mutex> lock(mutex);
    begin(isPlan ? OnlineWork::Plan : OnlineWork::Verify);
    planned = std::make_shared<mxstation::Plan>(plan);
    shown.difference.reset();
}

void OnlineSession::apply(std::uint64_t id, const std::string& version)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!shown.difference || shown.difference->id != id || !shown.difference->isPlan) {
        throw OnlineConflict("What was agreed to is no longer the newest plan, plan again");
    }
    if (shown.difference->version != version) {
        throw OnlineConflict(
            "The plan is not that of the saved station: save it and plan again, so that the report "
            "names the file that was applied");
    }
    begin(OnlineWork::Apply);
    shown.report.reset();
}

std::uint64_t OnlineSession::watch(const mxstation::Plan& plan,
                                   const std::vector<std::string>& names)
{
    mxonline::Coupler checked(plan, place);
    const mxonline::Watch namesAreKnown(checked, names);
    const std::lock_guard<std::mutex> lock(mutex);
    watched = std::make_shared<mxstation::Plan>(plan);
    watchedNames = names;
    isWatchNew = true;
    shown.live = LiveValues{++lastId, versionOf(plan), {}, {}, {}};
    ++shown.sequence;
    lastAsked = Clock::now();
    nextSample = lastAsked;
    changed.notify_all();
    return lastId;
}

void OnlineSession::endWatch()
{
    const std::lock_guard<std::mutex> lock(mutex);
    watched.reset();
    shown.live.reset();
    ++shown.sequence;
    changed.notify_all();
}

void OnlineSession::notice(const mxmodule::Finding& finding)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (shown.findings.size() < mostNotices) {
        shown.findings.push_back(finding);
        ++shown.sequence;
    }
}

void OnlineSession::progress(std::size_t done, std::size_t total, const char* /*things*/)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (done < total && isEnding) {
        throw Failure(Origin::Output, "",
                      "interrupted by the end of the program, so that the rest was not written",
                      "plan and apply again: only what still differs is written");
    }
    shown.done = done;
    shown.total = total;
    ++shown.sequence;
}

bool OnlineSession::isSampleDue() const
{
    const auto now = Clock::now();
    return watched && now >= nextSample && now - lastAsked < times.attention;
}

void OnlineSession::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (!isEnding) {
        if (shown.work != OnlineWork::None) {
            runWork(lock);
        } else if (isSampleDue()) {
            takeSample(lock);
        } else {
            releaseWhenUnattended();
            sleep(lock);
        }
    }
}

// Until there may be something to do.
void OnlineSession::sleep(std::unique_lock<std::mutex>& lock)
{
    const auto now = Clock::now();
    const bool isWatching = watched && now - lastAsked < times.attention;
    changed.wait_until(lock, isWatching ? nextSample : now + times.attention);
}

void OnlineSession::releaseWhenUnattended()
{
    if (coupler && Clock::now() - lastAsked >= times.attention) {
        reading.reset();
        coupler.reset();
        coupled.reset();
        shown.connection = OnlineConnection::None;
        ++shown.sequence;
    }
}

mxonline::Coupler& OnlineSession::couplerOf(const std::shared_ptr<const mxstation::Plan>& plan)
{
    if (!coupler || (coupled != plan && !isSameStation(*coupled, *plan))) {
        reading.reset();
        coupler = std::make_unique<mxonline::Coupler>(*plan, place,
                                                      static_cast<mxmodule::Observer*>(this));
    }
    coupled = plan;
    return *coupler;
}

OnlineSession::WorkResult
OnlineSession::resultOf(OnlineWork work, const std::shared_ptr<const mxstation::Plan>& plan,
                        const std::optional<ShownDifference>& agreed)
{
    WorkResult result;
    try {
        if (work == OnlineWork::Apply) {
            result.report = couplerOf(plan).apply(agreed->difference);
        } else {
            result.difference = couplerOf(plan).difference();
        }
    } catch (const std::exception& failure) {
        result.findings = findingsOf(failure);
    }
    return result;
}

void OnlineSession::runWork(std::unique_lock<std::mutex>& lock)
{
    const OnlineWork work = shown.work;
    const auto plan = planned;
    const auto agreed = shown.difference;
    lock.unlock();
    WorkResult result = resultOf(work, plan, agreed);
    const mxonline::Traffic traffic = coupler ? coupler->traffic() : mxonline::Traffic();
    lock.lock();
    shown.work = OnlineWork::None;
    shown.traffic = traffic;
    shown.connection =
        result.findings.empty() ? OnlineConnection::Connected : OnlineConnection::Failed;
    shown.difference.reset();
    if (result.difference) {
        shown.difference = ShownDifference{++lastId, versionOf(*plan), work == OnlineWork::Plan,
                                           *result.difference};
    }
    if (work == OnlineWork::Apply) {
        shown.report = std::move(result.report);
    }
    shown.findings.insert(shown.findings.end(), result.findings.begin(), result.findings.end());
    ++shown.sequence;
}

OnlineSession::SampleResult
OnlineSession::sampleOf(const std::shared_ptr<const mxstation::Plan>& plan,
                        const std::vector<std::string>& names, bool isNew)
{
    SampleResult result;
    try {
        mxonline::Coupler& used = couplerOf(plan);
        if (isNew || !reading) {
            reading = std::make_unique<mxonline::Watch>(used, names);
        }
        const mxonline::Sample sample = reading->sample();
        result.time = mxonline::sampleTable({}, {sample.time, {}, {}}).time;
        for (std::size_t i = 0; i < sample.values.size(); ++i) {
            result.values.push_back(
                {reading->channels()[i], sample.values[i], sample.isChanged[i]});
        }
    } catch (const std::exception& failure) {
        result.findings = findingsOf(failure);
    }
    return result;
}

void OnlineSession::takeSample(std::unique_lock<std::mutex>& lock)
{
    const auto plan = watched;
    const std::vector<std::string> names = watchedNames;
    const bool isNew = std::exchange(isWatchNew, false);
    nextSample = Clock::now() + times.sample;
    lock.unlock();
    SampleResult result = sampleOf(plan, names, isNew);
    const mxonline::Traffic traffic = coupler ? coupler->traffic() : mxonline::Traffic();
    lock.lock();
    shown.traffic = traffic;
    shown.connection =
        result.findings.empty() ? OnlineConnection::Connected : OnlineConnection::Failed;
    ++shown.sequence;
    if (watched != plan || isWatchNew) {
        return; // other channels are wanted meanwhile
    }
    shown.live->findings = std::move(result.findings);
    if (!result.time.empty()) {
        shown.live->time = std::move(result.time);
        shown.live->values = std::move(result.values);
    }
}

} // namespace workbench
