#include "http/Connections.h"

#include <gmock/gmock.h>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <future>
#include <memory>
#include <vector>

namespace {

using namespace std::chrono_literals;
using workbench::Connections;
using workbench::Phase;

// One end is watched, the other shows whether it was shut down.
class Pair
{
public:
    Pair() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0); }
    ~Pair()
    {
        close(ends[0]);
        close(ends[1]);
    }
    Pair(const Pair&) = delete;
    Pair& operator=(const Pair&) = delete;

    int watched() const { return ends[0]; }

    bool isShutDown() const
    {
        pollfd one{ends[1], POLLIN, 0};
        return poll(&one, 1, 0) == 1;
    }

private:
    std::array<int, 2> ends{};
};

struct Watched : public testing::Test
{
    Watched()
    {
        limits.connections = 3;
        limits.forHeader = 10s;
        limits.forBody = 20s;
        limits.forReading = 60s;
        limits.forNextHeader = 30s;
        connections = std::make_unique<Connections>(limits);
    }

    void enter(const Pair& pair, Phase phase, std::chrono::seconds time)
    {
        connections->enter(pair.watched(), phase, start + time);
    }
    void add(const Pair& pair, std::chrono::seconds time)
    {
        connections->add(pair.watched(), start + time);
    }
    void passTo(std::chrono::milliseconds time) { connections->shutDownOverdue(start + time); }

    workbench::Limits limits;
    Connections::Clock::time_point start{1000s};
    std::unique_ptr<Connections> connections;
};

TEST_F(Watched, endAfterTheTimeOfTheirPhase)
{
    const std::vector<std::pair<Phase, std::chrono::seconds>> phases = {
        {Phase::New, 10s}, {Phase::Receiving, 20s}, {Phase::Sending, 60s}, {Phase::Idle, 30s}};
    for (const auto& [phase, time] : phases) {
        const Pair pair;
        add(pair, 0s);
        enter(pair, phase, 100s);
        passTo(100s + time);
        EXPECT_FALSE(pair.isShutDown()) << time.count();
        passTo(100s + time + 1ms);
        EXPECT_TRUE(pair.isShutDown()) << time.count();
        connections->remove(pair.watched());
    }
}

TEST_F(Watched, waitForTheirAnswerAsLongAsItTakes)
{
    const Pair pair;
    add(pair, 0s);
    enter(pair, Phase::Answering, 1s);
    passTo(24h);
    EXPECT_FALSE(pair.isShutDown());
}

TEST_F(Watched, areGivenUpForANewOneWithoutRequestFirst)
{
    const Pair idle;
    const Pair sending;
    const Pair answering;
    add(sending, 0s);
    add(answering, 0s);
    add(idle, 0s);
    enter(sending, Phase::Sending, 1s);
    enter(answering, Phase::Answering, 1s);
    enter(idle, Phase::Idle, 9s);
    const Pair next;
    add(next, 10s);
    EXPECT_TRUE(idle.isShutDown());
    EXPECT_FALSE(sending.isShutDown());
    EXPECT_FALSE(answering.isShutDown());
    EXPECT_FALSE(next.isShutDown());
    EXPECT_EQ(connections->count(), 4U); // until its owner has closed it
}

TEST_F(Watched, areGivenUpInTheOrderOfTheirWaiting)
{
    const Pair first;
    const Pair second;
    const Pair third;
    add(first, 2s);
    add(second, 1s);
    add(third, 3s);
    const Pair fourth;
    add(fourth, 4s);
    EXPECT_TRUE(second.isShutDown());
    EXPECT_FALSE(first.isShutDown());
    const Pair fifth;
    add(fifth, 5s);
    EXPECT_TRUE(first.isShutDown());
    EXPECT_FALSE(third.isShutDown());
}

TEST_F(Watched, areForgottenWhenRemoved)
{
    const Pair pair;
    add(pair, 0s);
    connections->remove(pair.watched());
    EXPECT_EQ(connections->count(), 0U);
    passTo(24h);
    EXPECT_FALSE(pair.isShutDown());
}

TEST_F(Watched, areWaitedForUntilThereIsRoom)
{
    const Pair first;
    const Pair second;
    add(first, 0s);
    EXPECT_EQ(connections->countOfAdded(), 1U);
    connections->awaitRoom(2, 24h); // returns at once
    auto waiting = std::async(std::launch::async, [this] {
        connections->awaitAdded(1, 24h);
        connections->awaitRoom(1, 24h);
    });
    add(second, 0s);
    connections->remove(first.watched());
    EXPECT_EQ(waiting.wait_for(5ms), std::future_status::timeout);
    connections->remove(second.watched());
    EXPECT_EQ(waiting.wait_for(5s), std::future_status::ready);
    EXPECT_EQ(connections->countOfAdded(), 2U);
    connections->awaitAdded(2, 1ms); // not longer
}

} // namespace
