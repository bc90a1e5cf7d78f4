#include "c/OnlineHandles.h"

namespace {

mxonline::Target listenTarget(const char* listen)
{
    return mxonline::listenTargetOf(mxmodule::requireText(listen, "an address to listen on"));
}

std::string channelName(const char* channel)
{
    return mxmodule::requireText(channel, "the name of a channel");
}

template <typename ResultOf>
mxmodule_bytes* ofSimulator(const mxonline_simulator* handle, mxmodule_error** error,
                            const ResultOf& resultOf)
{
    return mxmodule::bytesOfHandle(
        handle, "a simulator", error,
        [&](const mxonline_simulator& one) { return resultOf(one.simulator); });
}

using SetChannel = void (mxonline::Simulator::*)(const std::string&, const std::string&);

int setOnSimulator(mxonline_simulator* handle, SetChannel setChannel, const char* channel,
                   const char* value, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        mxonline::Simulator& simulator = mxmodule::requirePointer(handle, "a simulator").simulator;
        (simulator.*setChannel)(channelName(channel), mxmodule::requireText(value, "a value"));
        return 1;
    });
}

} // namespace

using mxonline::Simulator;

mxonline_simulator* mxonline_simulator_start(const mxstation_plan* plan, const char* listen,
                                             int strict, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        mxonline::SimulatorOptions options;
        options.isStrict = strict != 0;
        return new mxonline_simulator(mxstation::plannedStationOf(plan)->plan, listenTarget(listen),
                                      options);
    });
}

void mxonline_simulator_stop(mxonline_simulator* simulator)
{
    mxmodule::callFromC(nullptr, [&] {
        mxmodule::requirePointer(simulator, "a simulator").simulator.stop();
        return 1;
    });
}

void mxonline_simulator_free(mxonline_simulator* simulator)
{
    delete simulator;
}

mxmodule_bytes* mxonline_simulator_address(const mxonline_simulator* simulator,
                                           mxmodule_error** error)
{
    return ofSimulator(simulator, error,
                       [](const Simulator& one) { return targetText(one.address()); });
}

mxmodule_bytes* mxonline_listening_notes(const char* listen, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return mxmodule::newBytes(
            mxmodule::findingsJson(mxonline::listeningNotes(listenTarget(listen))));
    });
}

mxmodule_bytes* mxonline_simulator_value(const mxonline_simulator* simulator, const char* channel,
                                         mxmodule_error** error)
{
    return ofSimulator(simulator, error,
                       [&](const Simulator& one) { return one.value(channelName(channel)).text; });
}

int mxonline_simulator_set_input(mxonline_simulator* simulator, const char* channel,
                                 const char* value, mxmodule_error** error)
{
    return setOnSimulator(simulator, &Simulator::setInput, channel, value, error);
}

int mxonline_simulator_set_output(mxonline_simulator* simulator, const char* channel,
                                  const char* value, mxmodule_error** error)
{
    return setOnSimulator(simulator, &Simulator::setOutput, channel, value, error);
}

mxmodule_bytes* mxonline_simulator_counts(const mxonline_simulator* simulator,
                                          mxmodule_error** error)
{
    return ofSimulator(simulator, error,
                       [](const Simulator& one) { return countsJson(one.counts()); });
}
