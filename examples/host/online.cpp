// A host that takes a station to its coupler over Modbus: it shows what differs, asks, writes it,
// compares again, and shows the values of the channels.

#include <mxonline/Coupler.h>
#include <mxonline/SampleText.h>
#include <mxonline/Watch.h>
#include <mxstation/Plan.h>

#include <chrono>
#include <iostream>
#include <string>
#include <thread>

namespace {

constexpr int samples = 3;
constexpr std::chrono::milliseconds interval(100);

void report(const std::vector<mxmodule::Finding>& findings)
{
    for (const mxmodule::Finding& finding : findings) {
        std::cerr << finding.place << ": " << mxmodule::severityName(finding.severity) << ": "
                  << finding.text << '\n'
                  << finding.excerpt;
        if (!finding.hint.empty()) {
            std::cerr << "hint: " << finding.hint << '\n';
        }
    }
}

// A repeated request is worth knowing: the line is bad, or the coupler is busy.
class Repetitions : public mxmodule::Observer
{
public:
    void notice(const mxmodule::Finding& finding) override { report({finding}); }
};

bool isAgreedTo(const mxonline::CouplerDifference& difference)
{
    std::cout << difference.question() << " Type \"yes\": " << std::flush;
    std::string answer;
    return std::getline(std::cin, answer) && answer == "yes";
}

// Returns whether the coupler has what the station states.
bool bring(mxonline::Coupler& coupler)
{
    const mxonline::CouplerDifference difference = coupler.difference();
    const auto otherModules = difference.identityErrors();
    if (!otherModules.empty()) {
        report(otherModules);
        return false;
    }
    std::cout << difference.text(mxonline::DifferenceUse::Apply);
    if (difference.writes.requests != 0 && !isAgreedTo(difference)) {
        std::cout << "nothing is written\n";
        return false;
    }
    const mxonline::ApplyReport applied = coupler.apply(difference);
    std::cout << '\n' << applied.verdict() << '\n';
    report(applied.findings);
    return applied.isDone() && coupler.difference().isSame();
}

void watch(mxonline::Coupler& coupler)
{
    mxonline::Watch watch(coupler);
    for (int i = 0; i < samples; ++i) {
        std::cout << mxonline::sampleText(watch.channels(), watch.sample());
        std::this_thread::sleep_for(interval);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "Usage: online STATION-FILE TARGET   TARGET: tcp:HOST[:PORT] or rtu:DEVICE\n";
        return 2;
    }
    try {
        const mxstation::Plan plan = mxstation::plan(mxstation::readStation(argv[1]));
        report(plan.findings);
        Repetitions repetitions;
        mxonline::Coupler coupler(plan, mxonline::targetOf(argv[2]), &repetitions);
        if (!bring(coupler)) {
            return 1;
        }
        watch(coupler);
        return 0;
    } catch (const mxmodule::Failure& failure) {
        report(failure.findings());
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
    }
    return 1;
}
