#include "http/HttpServer.h"

#include "http/RawConnection.h"

#include <gmock/gmock.h>

#include <future>
#include <list>
#include <thread>

namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;
using workbench::HttpServer;
using workbench::Limits;
using workbench::Request;
using workbench::Response;
using workbenchtest::answerTo;
using workbenchtest::RawConnection;
using workbenchtest::Received;

const std::string token(43, 't');

// Says what it was asked.
Response echo(const Request& request)
{
    Response response;
    response.type = "text/plain";
    response.body = request.method + " " + request.path;
    for (const auto& [name, value] : request.query) {
        response.body += " " + name + "=" + value;
    }
    response.body += " " + request.body;
    return response;
}

std::string lines(const HttpServer& server, const std::string& first)
{
    return first + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server.port()) + "\r\n";
}

std::string get(const HttpServer& server, const std::string& path)
{
    return lines(server, "GET " + path) + "Authorization: Bearer " + token + "\r\n\r\n";
}

std::string postHeader(const HttpServer& server, std::size_t length)
{
    return lines(server, "POST /api/v1/echo") + "Authorization: Bearer " + token +
           "\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(length) +
           "\r\n\r\n";
}

std::string post(const HttpServer& server, const std::string& body)
{
    return postHeader(server, body.size()) + body;
}

void waitUntil(const std::function<bool()>& condition)
{
    for (int count = 0; count < 5000 && !condition(); ++count) {
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_TRUE(condition());
}

// One of the times is short, so that a busy computer ends no connection for another reason.
Limits withShort(std::chrono::milliseconds Limits::*time)
{
    Limits limits;
    limits.*time = 50ms;
    return limits;
}

TEST(HttpServer, answersACall)
{
    const HttpServer server(0, token, &echo);
    const Received read = answerTo(server.port(), get(server, "/api/v1/a?b=%41"));
    EXPECT_EQ(read.status, 200);
    EXPECT_EQ(read.body, "GET /api/v1/a b=A ");
    EXPECT_EQ(answerTo(server.port(), post(server, "{}")).body, "POST /api/v1/echo {}");
    const std::string large(4 << 20, 'x');
    EXPECT_EQ(answerTo(server.port(), post(server, large)).body, "POST /api/v1/echo " + large);
}

TEST(HttpServer, keepsAConnectionAndItsOrder)
{
    const HttpServer server(0, token, &echo);
    RawConnection connection(server.port());
    connection.send(get(server, "/api/v1/1") + post(server, "{\"a\":2}") +
                    get(server, "/api/v1/3"));
    EXPECT_EQ(connection.receive().body, "GET /api/v1/1 ");
    EXPECT_EQ(connection.receive().body, "POST /api/v1/echo {\"a\":2}");
    EXPECT_EQ(connection.receive().body, "GET /api/v1/3 ");
    connection.send(get(server, "/api/v1/4"));
    EXPECT_EQ(connection.receive().body, "GET /api/v1/4 ");
}

// With a body too: the connection stays in order after a refusal.
TEST(HttpServer, refusesBeforeItAnswers)
{
    const HttpServer server(0, token, [](const Request&) -> Response {
        ADD_FAILURE();
        return {};
    });
    RawConnection connection(server.port());
    const std::string host = "Host: 127.0.0.1:" + std::to_string(server.port()) + "\r\n";
    const std::string bearer = "Authorization: Bearer " + token + "\r\n";
    const std::string rest = "Content-Length: 2\r\n\r\n{}";
    const std::vector<std::pair<int, std::string>> requests = {
        {421, "POST /x HTTP/1.1\r\nHost: example.org\r\n"},
        {403, "POST /x HTTP/1.1\r\n" + host + "Origin: http://example.org\r\n"},
        {401, "POST /x HTTP/1.1\r\n" + host},
        {405, "PATCH /x HTTP/1.1\r\n" + host + bearer},
        {404, "POST /x HTTP/1.1\r\n" + host + bearer},
        {415, "POST /api/v1/x HTTP/1.1\r\n" + host + bearer},
    };
    for (const auto& [status, request] : requests) {
        connection.send(request + rest);
        const Received answer = connection.receive();
        EXPECT_EQ(answer.status, status);
        EXPECT_THAT(answer.body, HasSubstr("\"findings\""));
        EXPECT_THAT(answer.field("Content-Security-Policy"), HasSubstr("default-src 'none'"));
        EXPECT_EQ(answer.field("Access-Control-Allow-Origin"), "");
    }
}

TEST(HttpServer, ignoresTheBodyOfARefusedRequest)
{
    const HttpServer server(0, token, &echo);
    RawConnection connection(server.port());
    const std::string large(1 << 20, 'x');
    connection.send(lines(server, "POST /api/v1/echo") +
                    "Content-Length: " + std::to_string(large.size()) + "\r\n\r\n" + large);
    EXPECT_EQ(connection.receive().status, 401);
    connection.send(get(server, "/api/v1/next"));
    EXPECT_EQ(connection.receive().body, "GET /api/v1/next ");
}

TEST(HttpServer, doesNotWaitForABodyThatIsTooLong)
{
    const HttpServer server(0, token, &echo);
    EXPECT_EQ(answerTo(server.port(), postHeader(server, (4 << 20) + 1)).status, 413);
    EXPECT_EQ(answerTo(server.port(), lines(server, "POST /api/v1/echo") +
                                          "Authorization: Bearer " + token +
                                          "\r\nContent-Type: application/json\r\n"
                                          "Transfer-Encoding: chunked\r\n\r\n")
                  .status,
              411);
}

// The value that the HTTP library gives ends before such a byte.
TEST(HttpServer, refusesHeadersWithBytesThatAreInNoField)
{
    const HttpServer server(0, token, &echo);
    const std::string nul(1, '\0');
    const std::string first = "GET /api/v1/a HTTP/1.1\r\n";
    const std::string host = "Host: 127.0.0.1:" + std::to_string(server.port());
    const std::string bearer = "Authorization: Bearer " + token;
    const std::string end = "\r\n\r\n";
    EXPECT_EQ(answerTo(server.port(), first + host + "\r\n" + bearer + end).status, 200);
    for (const std::string& request :
         {first + host + nul + "\r\n" + bearer + end, first + host + "\r\n" + bearer + nul + end,
          first + host + nul + ".example.org\r\n" + bearer + end,
          first + host + "\r\n" + bearer + nul + "x" + end,
          first + host + "\r\n" + bearer + "\r\nX: a" + nul + "b" + end}) {
        const Received answer = answerTo(server.port(), request);
        EXPECT_EQ(answer.status, 400);
        EXPECT_THAT(answer.body, HasSubstr("bytes that are in no field"));
    }
}

// However a client writes it.
TEST(HttpServer, acceptsFieldsWithoutBlanksOrValues)
{
    const HttpServer server(0, token, &echo);
    const std::string request = get(server, "/api/v1/a");
    const std::string fields = request.substr(0, request.size() - 2);
    EXPECT_EQ(answerTo(server.port(), fields + "X:a\r\nY:\r\n\r\n").status, 200);
    RawConnection connection(server.port());
    connection.send(request + fields + "X: a\r\n\r\n" + request);
    for (int count = 0; count < 3; ++count) {
        EXPECT_EQ(connection.receive().status, 200) << count;
    }
}

TEST(HttpServer, boundsTheHeader)
{
    const HttpServer server(0, token, &echo);
    const std::string begin = lines(server, "GET /api/v1/a") + "Authorization: Bearer " + token;
    const auto padded = [&begin](std::size_t size) {
        return begin + "\r\nX: " + std::string(size - begin.size() - 9, 'x') + "\r\n\r\n";
    };
    EXPECT_EQ(answerTo(server.port(), padded(16 << 10)).status, 200);
    EXPECT_EQ(answerTo(server.port(), padded((16 << 10) + 64)).status, 431);
    for (const std::size_t size : {std::size_t{100} << 10, std::size_t{1} << 20}) {
        RawConnection connection(server.port());
        connection.send(padded(size));
        EXPECT_THAT(connection.receive().status, testing::AnyOf(431, 413, 0)) << size;
        EXPECT_TRUE(connection.isEnded());
    }
    EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/" + std::string(2040, 'x'))).status,
              200);
    EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/" + std::string(2041, 'x'))).status,
              414);
}

TEST(HttpServer, survivesWhatIsNoRequest)
{
    Limits limits = withShort(&Limits::forHeader);
    limits.forBody = 50ms;
    const HttpServer server(0, token, &echo, limits);
    for (const std::string& bytes :
         {std::string("\r\n\r\n\r\n"), std::string(5000, '\0'), std::string("GET\r\n\r\n"),
          std::string("\x16\x03\x01\x02\x00\x01\x00", 7), std::string("GET / HTTP/1.1\r\n\r\n"),
          std::string("GET / HTTP/9.9\r\nHost: x\r\n\r\n"), std::string("GET / HTTP/1.1\nHost\n\n"),
          lines(server, "POST /api/v1/echo") + "Content-Length: -5\r\n\r\n",
          lines(server, "POST /api/v1/echo") + "Content-Length: 5\r\nContent-Length: 6\r\n\r\n"}) {
        RawConnection connection(server.port());
        connection.send(bytes);
        connection.finishSending();
        EXPECT_NE(connection.receive().status, 200) << bytes.substr(0, 40);
    }
    waitUntil(
        [&server] { return answerTo(server.port(), get(server, "/api/v1/a")).status == 200; });
}

TEST(HttpServer, answersAClientThatHasFinishedSending)
{
    const HttpServer server(0, token, &echo);
    RawConnection connection(server.port());
    connection.send(get(server, "/api/v1/a"));
    connection.finishSending();
    EXPECT_THAT(connection.receive().status, testing::AnyOf(200, 0));
    EXPECT_TRUE(connection.isEnded());
}

TEST(HttpServer, sendsCompressedBodiesToClientsThatAcceptThem)
{
    const HttpServer server(0, token, [](const Request&) {
        Response response;
        response.body = "plain";
        response.gzippedBody = "compressed";
        return response;
    });
    EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).body, "plain");
    const std::string request = get(server, "/api/v1/a");
    const Received answer = answerTo(server.port(), request.substr(0, request.size() - 2) +
                                                        "Accept-Encoding: gzip, br\r\n\r\n");
    EXPECT_EQ(answer.field("Content-Encoding"), "gzip");
    EXPECT_EQ(answer.body, "compressed");
}

TEST(HttpServer, tellsNothingOfAFailure)
{
    const HttpServer server(0, token, [](const Request&) -> Response {
        throw std::runtime_error("/home/someone/secret");
    });
    const Received answer = answerTo(server.port(), get(server, "/api/v1/a"));
    EXPECT_EQ(answer.status, 500);
    EXPECT_THAT(answer.body, HasSubstr("failed"));
    EXPECT_THAT(answer.body, Not(HasSubstr("secret")));
}

// Answers "/api/v1/slow" when it is told to.
struct SlowAnswers
{
    Response answer(const Request& request)
    {
        if (request.path == "/api/v1/slow") {
            ++begun;
            ended.wait();
        }
        return echo(request);
    }

    std::atomic<int> begun = 0;
    std::promise<void> end;
    std::shared_future<void> ended = end.get_future().share();
};

TEST(HttpServer, answersOthersDuringALongAnswer)
{
    SlowAnswers slow;
    Limits limits;
    limits.readers = 2;
    limits.waitingRequests = 1;
    const HttpServer server(
        0, token, [&slow](const Request& one) { return slow.answer(one); }, limits);
    RawConnection first(server.port());
    first.send(get(server, "/api/v1/slow"));
    waitUntil([&slow] { return slow.begun == 1; });
    EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).status, 200);

    // Both workers are in use, one request waits, the next one is not accepted.
    RawConnection second(server.port());
    second.send(get(server, "/api/v1/slow"));
    waitUntil([&slow] { return slow.begun == 2; });
    RawConnection third(server.port());
    third.send(get(server, "/api/v1/third"));
    Received fourth;
    waitUntil([&fourth, &server] { // until the third one is in the queue
        RawConnection connection(server.port());
        connection.send(get(server, "/api/v1/slow"));
        fourth = connection.receive();
        return fourth.status != 0;
    });
    EXPECT_EQ(fourth.status, 503);
    EXPECT_EQ(fourth.field("Retry-After"), "1");
    slow.end.set_value();
    EXPECT_EQ(first.receive().body, "GET /api/v1/slow ");
    EXPECT_EQ(second.receive().body, "GET /api/v1/slow ");
    EXPECT_EQ(third.receive().body, "GET /api/v1/third ");
}

// A page and the state of a connection are there also while stations are planned.
TEST(HttpServer, answersReadsWhileAllOtherWorkersAreInUse)
{
    SlowAnswers slow;
    Limits limits;
    limits.workers = 1;
    const HttpServer server(
        0, token,
        [&slow](const Request& one) {
            return one.method == "GET" ? echo(one) : slow.answer({"", "/api/v1/slow", {}, ""});
        },
        limits);
    RawConnection first(server.port());
    first.send(post(server, "{}"));
    waitUntil([&slow] { return slow.begun == 1; });
    RawConnection second(server.port());
    second.send(post(server, "{}"));
    EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).status, 200);
    slow.end.set_value();
    EXPECT_EQ(first.receive().status, 200);
    EXPECT_EQ(second.receive().status, 200);
}

TEST(HttpServer, endsWithAClientThatLeftDuringItsAnswer)
{
    SlowAnswers slow;
    {
        const HttpServer server(0, token, [&slow](const Request& one) { return slow.answer(one); });
        {
            const RawConnection connection(server.port());
            connection.send(get(server, "/api/v1/slow"));
            waitUntil([&slow] { return slow.begun == 1; });
        }
        slow.end.set_value();
        EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).status, 200);
    }
}

TEST(HttpServer, waitsAtItsEndForTheAnswersThatAreMade)
{
    SlowAnswers slow;
    auto server = std::make_unique<HttpServer>(
        0, token, [&slow](const Request& one) { return slow.answer(one); });
    const RawConnection connection(server->port());
    connection.send(get(*server, "/api/v1/slow"));
    waitUntil([&slow] { return slow.begun == 1; });
    auto ending = std::async(std::launch::async, [&server] { server.reset(); });
    EXPECT_EQ(ending.wait_for(20ms), std::future_status::timeout);
    slow.end.set_value();
    EXPECT_EQ(ending.wait_for(5s), std::future_status::ready);
}

TEST(HttpServer, doesNotWaitAtItsEndForRequestsThatWait)
{
    SlowAnswers slow;
    Limits limits;
    limits.readers = 1;
    auto server = std::make_unique<HttpServer>(
        0, token, [&slow](const Request& one) { return slow.answer(one); }, limits);
    const RawConnection first(server->port());
    first.send(get(*server, "/api/v1/slow"));
    waitUntil([&slow] { return slow.begun == 1; });
    const RawConnection second(server->port());
    second.send(get(*server, "/api/v1/slow"));
    std::this_thread::sleep_for(20ms); // it waits by now, or is not read: both get no answer
    auto ending = std::async(std::launch::async, [&server] { server.reset(); });
    EXPECT_EQ(ending.wait_for(20ms), std::future_status::timeout);
    slow.end.set_value();
    EXPECT_EQ(ending.wait_for(5s), std::future_status::ready);
    EXPECT_EQ(slow.begun, 1);
}

// However slowly it drips.
void drip(const RawConnection& connection, const std::string& bytes)
{
    for (const char byte : bytes) {
        if (!connection.send(std::string(1, byte))) {
            return;
        }
        std::this_thread::sleep_for(2ms);
    }
}

TEST(HttpServer, endsAConnectionWhoseHeaderIsSlow)
{
    const HttpServer server(0, token, &echo, withShort(&Limits::forHeader));
    RawConnection silent(server.port());
    EXPECT_TRUE(silent.isEnded());
    RawConnection drips(server.port());
    drip(drips, get(server, "/api/v1/" + std::string(1000, 'x')));
    EXPECT_EQ(drips.receive().status, 0);
}

TEST(HttpServer, endsAConnectionWhoseBodyIsSlow)
{
    const HttpServer server(0, token, &echo, withShort(&Limits::forBody));
    RawConnection drips(server.port());
    drips.send(postHeader(server, 1000));
    drip(drips, std::string(1000, ' '));
    EXPECT_EQ(drips.receive().status, 0);
}

TEST(HttpServer, endsAConnectionThatIsIdle)
{
    const HttpServer server(0, token, &echo, withShort(&Limits::forNextHeader));
    RawConnection idle(server.port());
    idle.send(get(server, "/api/v1/a"));
    EXPECT_EQ(idle.receive().status, 200);
    EXPECT_TRUE(idle.isEnded());
}

TEST(HttpServer, endsAConnectionThatDoesNotTakeItsAnswer)
{
    const std::string large(std::size_t{32} << 20, 'x'); // more than the buffers of two sockets
    const HttpServer server(
        0, token,
        [&large](const Request&) {
            Response response;
            response.body = large;
            return response;
        },
        withShort(&Limits::forReading));
    RawConnection connection(server.port());
    connection.send(get(server, "/api/v1/a"));
    std::this_thread::sleep_for(150ms);
    const Received answer = connection.receive();
    EXPECT_LT(answer.body.size(), large.size());
}

TEST(HttpServer, servesOthersAmongManyIdleConnections)
{
    Limits limits;
    limits.connections = 20;
    const HttpServer server(0, token, &echo, limits);
    std::list<RawConnection> idle;
    for (int count = 0; count < 200; ++count) {
        idle.emplace_back(server.port());
        if (count % 3 == 0) {
            idle.back().send("GET / HTTP/1.1\r\nHost:");
        }
        if (count % 40 == 0) {
            EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).status, 200) << count;
        }
    }
    EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).status, 200);
    EXPECT_TRUE(idle.front().isEnded());
    EXPECT_TRUE(idle.back().send(" "));
}

TEST(HttpServer, boundsTheBodiesOfAllRequestsTogether)
{
    Limits limits;
    limits.body = 100;
    limits.allBodies = 150;
    const HttpServer server(0, token, &echo, limits);
    RawConnection first(server.port());
    first.send(postHeader(server, 100) + std::string(99, '1'));
    Received second;
    waitUntil([&] { // until the first body was read
        second = answerTo(server.port(), post(server, std::string(52, ' ')));
        return second.status == 503;
    });
    EXPECT_EQ(answerTo(server.port(), post(server, std::string(51, ' '))).status, 200);
    EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).status, 200);
    first.send("1");
    EXPECT_EQ(first.receive().status, 200);
    EXPECT_EQ(answerTo(server.port(), post(server, std::string(100, ' '))).status, 200);
}

TEST(HttpServer, countsNoBodyThatIsOnlyAnnounced)
{
    Limits limits;
    limits.body = 100;
    limits.allBodies = 150;
    const HttpServer server(0, token, &echo, limits);
    const RawConnection first(server.port());
    const RawConnection second(server.port());
    first.send(postHeader(server, 100) + "1");
    second.send(postHeader(server, 100) + "1");
    for (int count = 0; count < 20; ++count) { // in some of them both headers were read
        EXPECT_EQ(answerTo(server.port(), get(server, "/api/v1/a")).status, 200);
        EXPECT_EQ(answerTo(server.port(), post(server, std::string(100, ' '))).status, 200);
    }
}

// More than the buffers of the system hold.
TEST(HttpServer, countsNoBodyWhoseAnswerIsNotTaken)
{
    Limits limits;
    limits.body = 100;
    limits.allBodies = 100;
    std::atomic<int> answers = 0;
    const HttpServer server(
        0, token,
        [&answers](const Request& one) {
            ++answers;
            Response response = echo(one);
            response.body.resize(std::size_t{one.body.front() == 'x' ? 32U : 0U} << 20U);
            return response;
        },
        limits);
    const RawConnection first(server.port());
    first.send(post(server, std::string(100, 'x')));
    waitUntil([&answers] { return answers == 1; });
    waitUntil(
        [&] { return answerTo(server.port(), post(server, std::string(100, ' '))).status == 200; });
}

} // namespace
