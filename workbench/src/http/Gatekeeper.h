#pragma once

#include "http/Limits.h"
#include "http/Response.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace workbench {

/// The first lines of a request.
struct RequestHead
{
    std::string method;
    std::string target; ///< Path and query, not decoded.
    std::vector<std::pair<std::string, std::string>> fields;
    std::size_t size = 0; ///< Bytes of all lines.

    /// Returns the values of the fields called `name`, in small or capital letters.
    std::vector<std::string> valuesOf(const std::string& name) const;
};

/// Decides from the first lines of a request whether it is answered. Host, then origin, then token
/// are checked before anything else: another page in the same browser, and another user of the
/// computer, learn nothing from the answers. Keeps nothing between two requests.
class Gatekeeper
{
public:
    /// Of the server at `port`, whose secret is `token`.
    Gatekeeper(std::string token, unsigned short port, const Limits& limits);

    /// Returns why the request is not answered; nothing if it is.
    std::optional<Response> refusalOf(const RequestHead& head) const;

private:
    std::optional<Response> refusalOfHost(const RequestHead& head) const;
    std::optional<Response> refusalOfOrigin(const RequestHead& head) const;
    std::optional<Response> refusalOfToken(const RequestHead& head) const;
    std::optional<Response> refusalOfMethod(const RequestHead& head) const;
    std::optional<Response> refusalOfPath(const RequestHead& head) const;
    std::optional<Response> refusalOfContent(const RequestHead& head) const;
    std::optional<Response> refusalOfSize(const RequestHead& head) const;

    std::string token;
    std::vector<std::string> hosts;
    Limits limits;
};

} // namespace workbench
