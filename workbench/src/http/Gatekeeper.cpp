#include "http/Gatekeeper.h"

#include "http/OpenPaths.h"
#include "http/Refusal.h"
#include "http/RequestTarget.h"
#include "http/Token.h"

#include <Poco/String.h>
#include <text/WholeNumber.h>

#include <algorithm>

namespace workbench {

namespace {

using Verdict = std::optional<Response>;

constexpr const char* openAddress = "open the address that mxtool serve prints";

bool isApi(const std::string& path)
{
    const std::string beginning = "/api/v1/";
    return path.compare(0, beginning.size(), beginning) == 0;
}

// The value of a field that is there once; empty if it is missing or there twice.
std::string onlyValue(const RequestHead& head, const char* name)
{
    const auto values = head.valuesOf(name);
    return values.size() == 1 ? values.front() : std::string();
}

Verdict methodRefusal(const std::string& allowed)
{
    Response response = refusal(405, "this method is not accepted here", "send " + allowed);
    response.allowed = allowed;
    return response;
}

// A page of another origin. A link to the page may be anywhere; what it opens does nothing without
// the token.
bool isOfOtherSite(const RequestHead& head)
{
    const auto sites = head.valuesOf("Sec-Fetch-Site");
    const bool isOwn = std::all_of(sites.begin(), sites.end(), [](const std::string& site) {
        return site == "same-origin" || site == "none";
    });
    return !isOwn && (onlyValue(head, "Sec-Fetch-Mode") != "navigate" ||
                      onlyValue(head, "Sec-Fetch-Dest") != "document" || head.target != "/");
}

bool isJson(std::string type)
{
    Poco::toLowerInPlace(type);
    const std::size_t end = type.find(';');
    return Poco::trim(type.substr(0, end)) == "application/json";
}

} // namespace

std::vector<std::string> RequestHead::valuesOf(const std::string& name) const
{
    std::vector<std::string> values;
    for (const auto& [field, value] : fields) {
        if (Poco::icompare(field, name) == 0) {
            values.push_back(value);
        }
    }
    return values;
}

Gatekeeper::Gatekeeper(std::string secret, unsigned short port, const Limits& limitsOfServer)
    : token(std::move(secret)), limits(limitsOfServer)
{
    for (const char* const name : {"127.0.0.1", "localhost", "[::1]"}) {
        hosts.push_back(name + (":" + std::to_string(port)));
    }
}

Verdict Gatekeeper::refusalOf(const RequestHead& head) const
{
    using Check = Verdict (Gatekeeper::*)(const RequestHead&) const;
    for (const Check check :
         {&Gatekeeper::refusalOfHost, &Gatekeeper::refusalOfOrigin, &Gatekeeper::refusalOfToken,
          &Gatekeeper::refusalOfSize, &Gatekeeper::refusalOfMethod, &Gatekeeper::refusalOfPath,
          &Gatekeeper::refusalOfContent}) {
        if (auto found = (this->*check)(head)) {
            return found;
        }
    }
    return std::nullopt;
}

Verdict Gatekeeper::refusalOfHost(const RequestHead& head) const
{
    if (std::find(hosts.begin(), hosts.end(), onlyValue(head, "Host")) == hosts.end()) {
        return refusal(421, "this server is not the host of the request", openAddress);
    }
    return std::nullopt;
}

Verdict Gatekeeper::refusalOfOrigin(const RequestHead& head) const
{
    const auto origins = head.valuesOf("Origin");
    const bool isOwn = origins.empty() ||
                       (origins.size() == 1 && origins[0] == "http://" + onlyValue(head, "Host"));
    if (!isOwn || isOfOtherSite(head)) {
        return refusal(403, "the request comes from a page of another server", openAddress);
    }
    return std::nullopt;
}

Verdict Gatekeeper::refusalOfToken(const RequestHead& head) const
{
    const auto given = head.valuesOf("Authorization");
    if (given.empty() && isOpenPath(pathOf(head.target))) {
        return std::nullopt;
    }
    if (given.size() != 1 || !isSameSecret(given.front(), "Bearer " + token)) {
        return refusal(401, "the request does not have the token of this server", openAddress);
    }
    return std::nullopt;
}

Verdict Gatekeeper::refusalOfSize(const RequestHead& head) const
{
    if (head.target.size() > limits.target) {
        return refusal(414, "the address is too long",
                       "it may have " + std::to_string(limits.target) + " bytes");
    }
    if (head.size > limits.header) {
        return refusal(431, "the header is too long",
                       "it may have " + std::to_string(limits.header) + " bytes");
    }
    return std::nullopt;
}

Verdict Gatekeeper::refusalOfMethod(const RequestHead& head) const
{
    const std::string path = pathOf(head.target);
    const bool isOpen = isOpenPath(path);
    const std::vector<std::string> methods =
        isOpen ? std::vector<std::string>{"GET"}
               : std::vector<std::string>{"GET", "POST", "PUT", "DELETE"};
    if (std::find(methods.begin(), methods.end(), head.method) == methods.end()) {
        return methodRefusal(Poco::cat(std::string(", "), methods.begin(), methods.end()));
    }
    return std::nullopt;
}

Verdict Gatekeeper::refusalOfPath(const RequestHead& head) const
{
    const std::string path = pathOf(head.target);
    if (!isApi(path) && !isOpenPath(path)) {
        return refusal(404, "there is nothing at this address", openAddress);
    }
    if (!parsedTarget(head.target)) {
        return refusal(400, "the query of the address is malformed",
                       "write it as name=value&name=value, each name once, other bytes as %XX");
    }
    return std::nullopt;
}

Verdict Gatekeeper::refusalOfContent(const RequestHead& head) const
{
    const bool hasContent = head.method == "POST" || head.method == "PUT";
    if (hasContent && !isJson(onlyValue(head, "Content-Type"))) {
        return refusal(415, "the body is not declared as JSON",
                       "send it with Content-Type: application/json");
    }
    const auto lengths = head.valuesOf("Content-Length");
    if (!head.valuesOf("Transfer-Encoding").empty() || (hasContent && lengths.empty())) {
        return refusal(411, "the length of the body is not stated", "send Content-Length");
    }
    if (lengths.empty()) {
        return std::nullopt;
    }
    const auto length =
        lengths.size() == 1 ? text::wholeNumber<std::size_t>(lengths.front()) : std::nullopt;
    if (!length) {
        return refusal(400, "the length of the body is not a whole number",
                       "send one Content-Length");
    }
    if (*length > limits.body) {
        return refusal(413, "the body is too long",
                       "it may have " + std::to_string(limits.body) + " bytes");
    }
    return std::nullopt;
}

} // namespace workbench
