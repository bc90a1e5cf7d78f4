#include "http/Conversation.h"

#include "http/Refusal.h"
#include "http/RequestTarget.h"

#include <text/WholeNumber.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace workbench {

namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

MHD_Result addField(void* fields, MHD_ValueKind /*kind*/, const char* name, std::size_t nameSize,
                    const char* value, std::size_t valueSize)
{
    // A field without a value has a null pointer.
    static_cast<Fields*>(fields)->emplace_back(std::string(name, nameSize),
                                               value == nullptr ? std::string()
                                                                : std::string(value, valueSize));
    return MHD_YES;
}

// The gatekeeper has checked it if the request is answered.
std::size_t statedLength(const RequestHead& head)
{
    const auto values = head.valuesOf("Content-Length");
    return values.empty() ? 0 : text::wholeNumber<std::size_t>(values.front()).value_or(0);
}

// The HTTP library takes a value for a text that ends with a NUL byte: what follows such a byte in
// a line is in no field. Then the lines have more bytes than their parts, as every client writes
// them: one blank between the parts of the first line and after each colon, two bytes at the end of
// each.
bool hasOtherBytes(const RequestHead& head, const std::string& version)
{
    std::size_t size = head.method.size() + 1 + head.target.size() + 1 + version.size() + 2;
    for (const auto& [name, value] : head.fields) {
        size += name.size() + 2 + value.size() + 2;
    }
    return head.size > size + 2;
}

bool wantsGzip(const RequestHead& head)
{
    const auto values = head.valuesOf("Accept-Encoding");
    return std::any_of(values.begin(), values.end(), includesGzip);
}

} // namespace

Conversation::Conversation(std::string target, std::atomic<std::size_t>& countOfBodies)
    : bytesOfBodies(countOfBodies)
{
    lines.target = std::move(target);
}

Conversation::~Conversation()
{
    releaseBody();
}

void Conversation::readHead(MHD_Connection* connection, const char* method, const char* version)
{
    isHeadRead = true;
    lines.method = method;
    MHD_get_connection_values_n(connection, MHD_HEADER_KIND, &addField, &lines.fields);
    const MHD_ConnectionInfo* const info =
        MHD_get_connection_info(connection, MHD_CONNECTION_INFO_REQUEST_HEADER_SIZE);
    lines.size = info == nullptr ? 0 : info->header_size;
    hasBytesOfNoField = hasOtherBytes(lines, version);
    sizeOfBody = statedLength(lines);
}

bool Conversation::receive(const char* data, std::size_t size, std::size_t mostOfAll)
{
    if (isRefusal) {
        return true;
    }
    if (bytesOfBodies + size > mostOfAll) { // one thread receives
        return false;
    }
    body.append(data, size);
    bytesOfBodies += size;
    return true;
}

void Conversation::releaseBody()
{
    bytesOfBodies -= body.size();
    body = std::string();
}

void Conversation::refuse(const Response& response)
{
    isRefusal = true;
    releaseBody();
    sent = sentResponse(response, false);
}

Request Conversation::request() const
{
    RequestTarget target = parsedTarget(lines.target).value_or(RequestTarget());
    return {lines.method, std::move(target.path), std::move(target.query), body};
}

Response Conversation::answerOf(const Answer& answer) const
{
    try {
        return answer(request());
    } catch (const std::exception&) {
        // The text may name what the client may not know.
        return refusal(500, "the server failed to answer the request",
                       "try again; please report it if it happens again");
    }
}

void Conversation::answerBy(const Answer& answer) noexcept
{
    try {
        sent = sentResponse(answerOf(answer), wantsGzip(lines));
    } catch (const std::exception&) {
        sent = {}; // without memory; the connection is closed
    }
    releaseBody();
}

} // namespace workbench
