#include "http/Gatekeeper.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using workbench::Gatekeeper;
using workbench::RequestHead;

constexpr unsigned short port = 8538;
const std::string secret(43, 's');

Gatekeeper gatekeeper()
{
    workbench::Limits limits;
    limits.target = 40;
    limits.header = 1000;
    limits.body = 100;
    return {secret, port, limits};
}

RequestHead call()
{
    return {"POST",
            "/api/v1/module",
            {{"Host", "127.0.0.1:8538"},
             {"Origin", "http://127.0.0.1:8538"},
             {"Authorization", "Bearer " + secret},
             {"Content-Type", "application/json"},
             {"Content-Length", "2"}},
            200};
}

void set(RequestHead& head, const std::string& name, const std::string& value)
{
    for (auto& [field, content] : head.fields) {
        if (field == name) {
            content = value;
            return;
        }
    }
    head.fields.emplace_back(name, value);
}

void remove(RequestHead& head, const std::string& name)
{
    for (auto field = head.fields.begin(); field != head.fields.end(); ++field) {
        if (field->first == name) {
            head.fields.erase(field);
            return;
        }
    }
}

// The status of the refusal; 0 without one.
unsigned statusOf(const RequestHead& head)
{
    const auto refusal = gatekeeper().refusalOf(head);
    return refusal ? refusal->status : 0;
}

unsigned statusWith(const std::string& name, const std::string& value)
{
    RequestHead head = call();
    set(head, name, value);
    return statusOf(head);
}

unsigned statusWithTwo(const std::string& name, const std::string& value)
{
    RequestHead head = call();
    head.fields.emplace_back(name, value);
    return statusOf(head);
}

TEST(Gatekeeper, letsACallOfThePagePass)
{
    EXPECT_EQ(statusOf(call()), 0U);
}

TEST(Gatekeeper, knowsTheNamesOfThisComputer)
{
    for (const char* const host : {"127.0.0.1:8538", "localhost:8538", "[::1]:8538"}) {
        RequestHead head = call();
        set(head, "Host", host);
        set(head, "Origin", std::string("http://") + host);
        EXPECT_EQ(statusOf(head), 0U) << host;
    }
    for (const char* const host :
         {"", "127.0.0.1", "127.0.0.1:8539", "127.0.0.1:08538", "127.0.0.1:8538 ", "127.0.0.2:8538",
          "LOCALHOST:8538", "localhost.:8538", "example.org:8538", "[::1]", "::1:8538",
          "localhost:8538.example.org", "user@localhost:8538", "127.0.0.1:8538,localhost:8538"}) {
        RequestHead head = call();
        set(head, "Host", host);
        EXPECT_EQ(statusOf(head), 421U) << host;
    }
    RequestHead without = call();
    remove(without, "Host");
    EXPECT_EQ(statusOf(without), 421U);
    EXPECT_EQ(statusWithTwo("host", "127.0.0.1:8538"), 421U);
}

TEST(Gatekeeper, refusesPagesOfOthers)
{
    for (const char* const origin :
         {"", "null", "http://127.0.0.1:8539", "https://127.0.0.1:8538", "http://localhost:8538",
          "http://127.0.0.1:8538/", "http://127.0.0.1:8538.example.org", "127.0.0.1:8538"}) {
        EXPECT_EQ(statusWith("Origin", origin), 403U) << origin;
    }
    EXPECT_EQ(statusWithTwo("origin", "http://127.0.0.1:8538"), 403U);
    RequestHead without = call();
    remove(without, "Origin");
    EXPECT_EQ(statusOf(without), 0U);
    EXPECT_EQ(statusWith("Sec-Fetch-Site", "same-origin"), 0U);
    EXPECT_EQ(statusWith("Sec-Fetch-Site", "none"), 0U);
    EXPECT_EQ(statusWith("Sec-Fetch-Site", "cross-site"), 403U);
    EXPECT_EQ(statusWith("Sec-Fetch-Site", "same-site"), 403U);
}

// A link elsewhere may lead to the page: --open writes such a file.
TEST(Gatekeeper, opensThePageFromALinkButNothingElse)
{
    RequestHead head = {"GET",
                        "/",
                        {{"Host", "127.0.0.1:8538"},
                         {"Sec-Fetch-Site", "cross-site"},
                         {"Sec-Fetch-Mode", "navigate"},
                         {"Sec-Fetch-Dest", "document"}},
                        100};
    EXPECT_EQ(statusOf(head), 0U);
    set(head, "Sec-Fetch-Dest", "iframe");
    EXPECT_EQ(statusOf(head), 403U);
    set(head, "Sec-Fetch-Dest", "document");
    set(head, "Sec-Fetch-Mode", "no-cors");
    EXPECT_EQ(statusOf(head), 403U);
    set(head, "Sec-Fetch-Mode", "navigate");
    head.target = "/workbench.js";
    EXPECT_EQ(statusOf(head), 403U);
}

TEST(Gatekeeper, wantsTheTokenOfThisRun)
{
    std::string changed = secret;
    changed.back() = 'x';
    for (const std::string& value :
         {std::string(), secret, "Bearer " + changed, "bearer " + secret, "Bearer " + secret + "s",
          "Bearer  " + secret, "Basic " + secret, "Bearer " + secret.substr(1)}) {
        EXPECT_EQ(statusWith("Authorization", value), 401U) << value;
    }
    RequestHead without = call();
    remove(without, "Authorization");
    EXPECT_EQ(statusOf(without), 401U);
    EXPECT_EQ(statusWithTwo("authorization", "Bearer " + secret), 401U);
}

TEST(Gatekeeper, needsNoTokenForPageAndAssetsAlone)
{
    RequestHead head = {"GET", "", {{"Host", "localhost:8538"}}, 100};
    for (const char* const path :
         {"/", "/workbench.js", "/workbench.css", "/icon.svg", "/?lang=en"}) {
        head.target = path;
        EXPECT_EQ(statusOf(head), 0U) << path;
    }
    for (const char* const path : {"/api/v1/start", "/index.html", "//", "/workbench.js/", "/.",
                                   "/%2e", "http://localhost:8538/", "*", ""}) {
        head.target = path;
        EXPECT_EQ(statusOf(head), 401U) << path;
    }
}

TEST(Gatekeeper, refusesOtherMethodsAndNamesTheAccepted)
{
    RequestHead head = call();
    for (const char* const method : {"HEAD", "OPTIONS", "PATCH", "TRACE", "CONNECT", "get", "X"}) {
        head.method = method;
        EXPECT_EQ(statusOf(head), 405U) << method;
    }
    EXPECT_EQ(gatekeeper().refusalOf(head)->allowed, "GET, POST, PUT, DELETE");
    head.target = "/icon.svg";
    head.method = "POST";
    EXPECT_EQ(gatekeeper().refusalOf(head)->allowed, "GET");
}

TEST(Gatekeeper, findsNothingAtOtherPaths)
{
    RequestHead head = call();
    for (const char* const path :
         {"/api", "/api/v1", "/api/v2/start", "/etc/passwd", "/../", "/api/v1", "//api/v1/start",
          "/%61pi/v1/start", "api/v1/start"}) {
        head.target = path;
        EXPECT_EQ(statusOf(head), 404U) << path;
    }
    head.target = "/api/v1/online?after=%zz";
    EXPECT_EQ(statusOf(head), 400U);
}

TEST(Gatekeeper, wantsJson)
{
    EXPECT_EQ(statusWith("Content-Type", "application/json; charset=utf-8"), 0U);
    EXPECT_EQ(statusWith("Content-Type", "Application/JSON"), 0U);
    for (const char* const type :
         {"", "text/plain", "application/jsonp", "application/x-www-form-urlencoded",
          "text/plain; application/json"}) {
        EXPECT_EQ(statusWith("Content-Type", type), 415U) << type;
    }
    EXPECT_EQ(statusWithTwo("Content-Type", "application/json"), 415U);
    RequestHead without = call();
    remove(without, "Content-Type");
    EXPECT_EQ(statusOf(without), 415U);
    without.method = "PUT";
    EXPECT_EQ(statusOf(without), 415U);
    without.method = "DELETE";
    EXPECT_EQ(statusOf(without), 0U);
}

TEST(Gatekeeper, boundsWhatIsSent)
{
    EXPECT_EQ(statusWith("Content-Length", "100"), 0U);
    EXPECT_EQ(statusWith("Content-Length", "101"), 413U);
    for (const char* const length : {"", "-1", "1x", "0x1", "99999999999999999999999"}) {
        EXPECT_EQ(statusWith("Content-Length", length), 400U) << length;
    }
    EXPECT_EQ(statusWithTwo("Content-Length", "2"), 400U);
    EXPECT_EQ(statusWith("Transfer-Encoding", "chunked"), 411U);
    RequestHead head = call();
    remove(head, "Content-Length");
    EXPECT_EQ(statusOf(head), 411U);

    head = call();
    head.target += "?" + std::string(25, 'x'); // 40 bytes
    EXPECT_EQ(statusOf(head), 0U);
    head.target += "x";
    EXPECT_EQ(statusOf(head), 414U);
    head = call();
    head.size = 1000;
    EXPECT_EQ(statusOf(head), 0U);
    head.size = 1001;
    EXPECT_EQ(statusOf(head), 431U);
}

// What is wrong, in the order in which it is checked, and the status of each.
struct Mistake
{
    unsigned status;
    void (*make)(RequestHead& head);
};

const std::vector<Mistake> mistakes = {
    {421, [](RequestHead& head) { set(head, "Host", "example.org"); }},
    {403, [](RequestHead& head) { set(head, "Origin", "http://example.org"); }},
    {401, [](RequestHead& head) { set(head, "Authorization", "Bearer x"); }},
    {405, [](RequestHead& head) { head.method = "PATCH"; }},
    {404, [](RequestHead& head) { head.target = "/other"; }},
    {415, [](RequestHead& head) { set(head, "Content-Type", "text/plain"); }},
    {413, [](RequestHead& head) { set(head, "Content-Length", "101"); }},
};

// Each set of mistakes is refused for the first of them. A request of another method has no body
// that is looked at.
TEST(Gatekeeper, namesTheFirstMistakeOfEachSet)
{
    for (unsigned set = 1; set < 1U << mistakes.size(); ++set) {
        RequestHead head = call();
        unsigned first = 0;
        for (std::size_t index = 0; index < mistakes.size(); ++index) {
            if ((set >> index & 1U) != 0) {
                mistakes[index].make(head);
                first = first == 0 ? mistakes[index].status : first;
            }
        }
        EXPECT_EQ(statusOf(head), first) << set;
    }
}

// What a stranger learns is the same for every call.
TEST(Gatekeeper, tellsAStrangerNothingOfTheRequest)
{
    RequestHead head = call();
    set(head, "Authorization", "Bearer secretive");
    head.target = "/api/v1/secretive";
    const auto refusal = gatekeeper().refusalOf(head);
    EXPECT_THAT(refusal->body, HasSubstr("\"findings\":[{\"severity\":\"error\""));
    EXPECT_THAT(refusal->body, Not(HasSubstr("secretive")));
    EXPECT_THAT(refusal->body, Not(HasSubstr(secret)));
}

// An answer is UTF-8 also where the request is not.
TEST(Gatekeeper, quotesNothingOfARequest)
{
    for (const Mistake& mistake : mistakes) {
        RequestHead head = call();
        head.target = "/\xFF";
        mistake.make(head);
        set(head, "X", "\xFF");
        const auto refusal = gatekeeper().refusalOf(head);
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->body.find('\xFF'), std::string::npos) << mistake.status;
    }
}

} // namespace
