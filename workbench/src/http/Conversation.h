#pragma once

#include "http/Gatekeeper.h"
#include "http/SentResponse.h"

#include <microhttpd.h>

#include <atomic>
#include <optional>
#include <string>

namespace workbench {

/// One request from its first line to the end of its answer.
class Conversation
{
public:
    /// `bytesOfBodies` counts the bodies of all requests.
    Conversation(std::string target, std::atomic<std::size_t>& bytesOfBodies);
    ~Conversation();
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    bool hasHead() const { return isHeadRead; }

    /// Takes the lines before the body. A request without length has none.
    void readHead(MHD_Connection* connection, const char* method, const char* version);
    const RequestHead& head() const { return lines; }

    /// The lines have bytes that are in no field of `head`, such as those after a NUL byte.
    bool hasHiddenBytes() const { return hasBytesOfNoField; }

    /// The stated length of the body.
    std::size_t bodySize() const { return sizeOfBody; }

    /// Takes the next bytes of the body; false if all bodies together would have more than
    /// `mostOfAll`. What is only announced does not count: a slow client holds up no other.
    [[nodiscard]] bool receive(const char* data, std::size_t size, std::size_t mostOfAll);

    /// The request will be answered by this, whatever its body says.
    void refuse(const Response& response);

    /// The answer is being made from now on.
    void start() { isAnswerStarted = true; }
    bool isStarted() const { return isAnswerStarted; }

    /// Answers the request. Does not throw.
    void answerBy(const Answer& answer) noexcept;
    bool isAnswered() const { return sent.content != nullptr; }
    const SentResponse& response() const { return sent; }

private:
    Request request() const;
    void releaseBody();
    Response answerOf(const Answer& answer) const;

    std::atomic<std::size_t>& bytesOfBodies;
    RequestHead lines;
    bool isHeadRead = false;
    bool hasBytesOfNoField = false;
    bool isRefusal = false;
    bool isAnswerStarted = false;
    std::size_t sizeOfBody = 0;
    std::string body;
    SentResponse sent;
};

} // namespace workbench
