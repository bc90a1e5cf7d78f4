#pragma once

#include <mxonline/Target.h>

#include <cstdint>
#include <string>
#include <vector>

/// Sends and receives bytes as they are, written in hexadecimal: "03 40 00".
class RawClient
{
public:
    /// Connects to `target`, on TCP.
    explicit RawClient(const mxonline::Target& target);

    /// Uses the open `descriptor`, which it closes.
    explicit RawClient(int descriptor) : connection(descriptor) {}
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    void send(const std::string& bytes) const;

    /// Returns the next `size` bytes; fewer if the connection is closed, or if nothing comes for
    /// `milliseconds`.
    std::string receive(std::size_t size, int milliseconds = 2000) const;

    /// Returns whether the other side closed the connection.
    bool isClosed() const;

    /// Sends a request of Modbus TCP to unit 7, a function code and its data, and returns the
    /// answer without its header. A frame with another header is returned whole after "frame ".
    std::string ask(const std::string& pdu) const;

private:
    int connection;
};
