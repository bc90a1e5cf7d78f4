#pragma once

#include <chrono>
#include <string>

namespace workbenchtest {

/// An answer as it came.
struct Received
{
    int status = 0; ///< 0: the connection ended before an answer.
    std::string header;
    std::string body;

    /// Returns the value of the field `name`, written as the server writes it; empty without it.
    std::string field(const std::string& name) const;
};

/// A client that sends what a test says, byte for byte, and waits for at most five seconds.
class RawConnection
{
public:
    explicit RawConnection(unsigned short port);
    ~RawConnection();
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    /// Returns false if the server has ended the connection.
    bool send(const std::string& bytes) const;

    /// Ends the sending direction.
    void finishSending() const;

    /// Returns the next answer of the connection.
    Received receive();

    /// Waits until the server ends the connection; returns whether it did.
    bool isEnded();

private:
    bool readMore();

    int descriptor;
    std::string received;
};

/// Sends one request on a connection of its own.
Received answerTo(unsigned short port, const std::string& request);

} // namespace workbenchtest
