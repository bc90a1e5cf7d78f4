// A host that plans a station, modules in a row with one process image, and prints where each
// module and each channel is. Findings say what is wrong with the station.

#include <mxstation/Plan.h>

#include <iostream>

namespace {

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

void print(const char* image, const mxstation::ImageBytes& bytes)
{
    if (bytes.size != 0) {
        std::cout << ", " << image << ' ' << bytes.offset << " to " << bytes.end() - 1;
    }
}

void print(const mxstation::Plan& plan)
{
    for (const mxstation::PlannedModule& module : plan.modules) {
        std::cout << module.position << ' ' << module.name;
        print("in", module.input);
        print("out", module.output);
        std::cout << '\n';
    }
    for (const mxstation::Channel& channel : plan.channels) {
        std::cout << channel.symbol << ' ' << channel.moduleName << '/' << channel.name;
        if (!channel.alias.empty()) {
            std::cout << " = " << channel.alias;
        }
        std::cout << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: station STATION-FILE\n";
        return 2;
    }
    try {
        const mxstation::Plan plan = mxstation::plan(mxstation::readStation(argv[1]));
        report(plan.findings);
        print(plan);
        return plan.ok() ? 0 : 1;
    } catch (const mxmodule::Failure& failure) {
        report(failure.findings());
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
    }
    return 1;
}
