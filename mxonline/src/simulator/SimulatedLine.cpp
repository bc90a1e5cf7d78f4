#include "simulator/SimulatedLine.h"

#include "simulator/SerialServer.h"
#include "simulator/TcpServer.h"

namespace mxonline {

namespace {

constexpr auto timeToSend = std::chrono::seconds(1); // a client that reads nothing is left

bool sendBytes(const ByteStream& stream, const std::vector<std::uint8_t>& bytes)
{
    return stream.write(bytes, ByteStream::Clock::now() + timeToSend) == StreamEnd::Complete;
}

bool sendSlowly(const ByteStream& stream, const std::vector<std::uint8_t>& bytes,
                std::chrono::milliseconds pause, const StopSignal& stop)
{
    for (const std::uint8_t byte : bytes) {
        if (stop.waitFor(pause) || !sendBytes(stream, {byte})) {
            return false;
        }
    }
    return true;
}

} // namespace

std::unique_ptr<SimulatedLine> listeningLine(const Target& target, ServedUnit& served)
{
    if (const auto* const tcp = std::get_if<TcpTarget>(&target)) {
        return std::make_unique<TcpServer>(*tcp, served);
    }
    return std::make_unique<SerialServer>(std::get<SerialTarget>(target), served);
}

bool sendAnswer(const ByteStream& stream, const std::vector<std::uint8_t>& frame,
                const ServedAnswer& answer, const StopSignal& stop)
{
    if (answer.delay.count() > 0 && stop.waitFor(answer.delay)) {
        return false;
    }
    const std::vector<std::uint8_t> bytes = sentBytes(frame, answer);
    const bool isSent = answer.pause.count() > 0 ? sendSlowly(stream, bytes, answer.pause, stop)
                                                 : sendBytes(stream, bytes);
    return isSent && !answer.closes;
}

} // namespace mxonline
