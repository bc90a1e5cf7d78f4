#include "mxonline/Simulator.h"

#include "coupler/UsablePlan.h"
#include "simulator/Simulation.h"

#include <csignal>
#include <new>
#include <thread>

namespace mxonline {

namespace {

// A thread of this library takes no signals of the process.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }

    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t before{};
};

} // namespace

class Simulator::Content
{
public:
    Content(const mxstation::Plan& planned, const Target& target, const SimulatorOptions& options)
        : plan(requireUsable(planned, target)),
          simulation(plan, options,
                     std::holds_alternative<TcpTarget>(target) ? LineKind::Tcp : LineKind::Serial),
          line(listeningLine(target, simulation)),
          address(line->address())
    {
        const SignalsBlocked blocked;
        thread = std::thread([this] { serve(); });
    }

    ~Content() { stop(); }
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;

    void stop()
    {
        if (thread.joinable()) {
            stopSignal.raise();
            thread.join();
            line.reset();
        }
    }

    // Without memory a request is lost; the coupler goes on.
    void serve()
    {
        do {
            try {
                line->serve(stopSignal);
            } catch (const std::bad_alloc&) { // served again
            }
        } while (!stopSignal.waitFor(std::chrono::milliseconds(100)));
    }

    mxstation::Plan plan;
    Simulation simulation; // of `plan`
    StopSignal stopSignal;
    std::unique_ptr<SimulatedLine> line; // null: stopped
    Target address;
    std::thread thread;
};

SimulatorObserver::~SimulatorObserver() = default;

std::string SimulatorEvent::text() const
{
    switch (kind) {
    case SimulatorEventKind::OutputChanged:
        return name + " = " + value;
    case SimulatorEventKind::ParameterWritten:
        return "parameter " + name + " = " + value;
    case SimulatorEventKind::Committed:
        return "parameters committed";
    default:
        return "the serial line failed, it is opened again: " + value;
    }
}

Simulator::Simulator(const mxstation::Plan& plan, const Target& listenTarget,
                     const SimulatorOptions& options)
    : content(std::make_unique<Content>(plan, listenTarget, options))
{}

Simulator::~Simulator() = default;

void Simulator::stop()
{
    content->stop();
}

Target Simulator::address() const
{
    return content->address;
}

const mxstation::Plan& Simulator::plan() const
{
    return content->plan;
}

std::vector<std::uint8_t> Simulator::inputs() const
{
    return content->simulation.image(true);
}

std::vector<std::uint8_t> Simulator::outputs() const
{
    return content->simulation.image(false);
}

ChannelValue Simulator::value(const std::string& channel) const
{
    return content->simulation.value(channel);
}

void Simulator::setInput(const std::string& channel, const std::string& value)
{
    content->simulation.set(channel, value, true);
}

void Simulator::setOutput(const std::string& channel, const std::string& value)
{
    content->simulation.set(channel, value, false);
}

std::vector<std::uint16_t> Simulator::parameters(std::size_t position) const
{
    return content->simulation.parameters(position);
}

SimulatorCounts Simulator::counts() const
{
    return content->simulation.counts();
}

std::vector<mxmodule::Finding> listeningNotes(const Target& target)
{
    const auto* const tcp = std::get_if<TcpTarget>(&target);
    if (tcp == nullptr || tcp->host == "localhost" || tcp->host == "::1" ||
        tcp->host.compare(0, 4, "127.") == 0) {
        return {};
    }
    mxmodule::Finding note;
    note.severity = mxmodule::Severity::Note;
    note.origin = mxmodule::Origin::Output;
    note.place = targetText(target);
    note.text = "other computers can read and write this simulator";
    note.hint = "listen at 127.0.0.1 if only programs of this computer use it";
    return {note};
}

} // namespace mxonline
