// The simulated coupler: the first line of the input is a fault as --fault takes it, the second a
// line of the script; the other bytes are sent by a client. Afterwards another client gets the
// registers that the parameters have.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <mxonline/Coupler.h>
#include <mxonline/Simulator.h>
#include <mxonline/SimulatorScript.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

mxstation::Plan plannedStation()
{
    const mxstation::Plan plan = mxstation::plan(mxstation::stationOf(
        "modbus: {parameters: {address: 100}, commit: {address: 99}, "
        "identity: {address: 90}, timeout: 1000, retries: 0}\n"
        "modules: [" EXAMPLE_MODULES "/MX0304.yaml, " EXAMPLE_MODULES "/MX0602.yaml]\n",
        "<fuzz>"));
    require(plan.ok());
    return plan;
}

// Takes what the script tells. Waiting takes no time, and ends the script after a while.
class ScriptHost : public mxonline::SimulatorScriptHost
{
public:
    bool isEndedUntil(std::chrono::steady_clock::time_point /*time*/) override
    {
        return ++waits > 100;
    }
    void show(const std::string& line) override { require(!line.empty()); }
    void reject(const mxmodule::Finding& finding) override { require(!finding.text.empty()); }

private:
    int waits = 0;
};

void send(const mxonline::Target& target, const std::string& bytes)
{
    const int client = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(std::get<mxonline::TcpTarget>(target).port);
    require(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0);
    static_cast<void>(::send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL));
    close(client);
}

// The next line of `text`, which is removed from it.
std::string takeLine(std::string& text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string line = text.substr(0, end);
    text.erase(0, std::min(end + 1, text.size()));
    return line;
}

void readFault(const std::string& text)
{
    try {
        mxonline::simulatedFaultOf(text);
    } catch (const mxmodule::Failure& failure) {
        require(!failure.reason().text.empty());
    }
}

void requireAnswers(const mxstation::Plan& plan, mxonline::Simulator& simulator)
{
    const mxonline::CouplerState state = mxonline::Coupler(plan, simulator.address()).read();
    for (const mxonline::ModuleState& module : state.modules) {
        require(module.registers.size() == simulator.parameters(module.position).size());
        require(module.moduleId.has_value());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    static const mxstation::Plan plan = plannedStation();
    static mxonline::Simulator simulator(plan, mxonline::listenTargetOf("tcp:127.0.0.1:0"));
    std::string text(data, data + size);
    readFault(takeLine(text));
    ScriptHost host;
    mxonline::SimulatorScript script(simulator, "<fuzz>", host);
    static_cast<void>(script.runLine(takeLine(text)));
    send(simulator.address(), text);
    requireAnswers(plan, simulator);
    return 0;
}
