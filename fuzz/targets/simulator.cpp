// The simulated coupler: the first line of the input has faults as --fault takes them, separated by
// ";", the second a line of the script; the other bytes are sent by a client, to a coupler with
// these faults and to one without. Afterwards another client of the latter gets the registers that
// the parameters have.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <mxonline/Coupler.h>
#include <mxonline/Simulator.h>
#include <mxonline/SimulatorScript.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <sstream>
#include <string>
#include <vector>

namespace {

using fuzz::require;

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

// Sends `bytes` and takes all answers.
void send(const mxonline::Target& target, const std::string& bytes)
{
    const int client = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(std::get<mxonline::TcpTarget>(target).port);
    require(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0);
    static_cast<void>(::send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL));
    shutdown(client, SHUT_WR);
    std::array<char, 1024> answers{};
    while (recv(client, answers.data(), answers.size(), 0) > 0) {
    }
    close(client);
}

// Its faults take no time.
std::vector<mxonline::SimulatedFault> faultsIn(const std::string& line)
{
    std::vector<mxonline::SimulatedFault> faults;
    std::istringstream texts(line);
    for (std::string text; std::getline(texts, text, ';');) {
        faults.push_back(mxonline::simulatedFaultOf(text));
        faults.back().time = {};
    }
    return faults;
}

void sendToFaulty(const mxstation::Plan& plan, const std::string& faults, const std::string& bytes)
{
    try {
        mxonline::SimulatorOptions options;
        options.faults = faultsIn(faults);
        const mxonline::Simulator faulty(plan, mxonline::listenTargetOf("tcp:127.0.0.1:0"),
                                         options);
        send(faulty.address(), bytes);
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
    fuzz::Words input({data, data + size});
    const std::string faults = input.takeLine();
    ScriptHost host;
    mxonline::SimulatorScript script(simulator, "<fuzz>", host);
    static_cast<void>(script.runLine(input.takeLine()));
    const auto rest = input.takeRest();
    const std::string bytes(rest.begin(), rest.end());
    sendToFaulty(plan, faults, bytes);
    send(simulator.address(), bytes);
    requireAnswers(plan, simulator);
    return 0;
}
