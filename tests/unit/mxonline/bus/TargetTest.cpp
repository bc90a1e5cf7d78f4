#include <mxmodule/Finding.h>
#include <mxonline/Target.h>

#include <gtest/gtest.h>

#include <string>

namespace mxonline {

namespace {

std::string reasonFor(const std::string& text)
{
    try {
        static_cast<void>(targetOf(text));
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Request);
        EXPECT_EQ(failure.reason().place, text);
        EXPECT_EQ(failure.reason().hint,
                  "a target is tcp:HOST[:PORT] or rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]], such as "
                  "tcp:192.168.1.10:502 or rtu:/dev/ttyUSB0,19200,E,1");
        return failure.reason().text;
    }
    return "accepted";
}

TEST(Target, HasThePortOfTheProtocol)
{
    EXPECT_EQ(targetText(targetOf("tcp:10.0.0.7")), "tcp:10.0.0.7:502");
    EXPECT_EQ(targetText(targetOf("tcp:coupler.local:1502")), "tcp:coupler.local:1502");
}

TEST(Target, TakesIpv6InBrackets)
{
    EXPECT_EQ(targetText(targetOf("tcp:[::1]")), "tcp:[::1]:502");
    EXPECT_EQ(targetText(targetOf("tcp:[fe80::1]:1502")), "tcp:[fe80::1]:1502");
    EXPECT_EQ(std::get<TcpTarget>(targetOf("tcp:[::1]")).host, "::1");
}

TEST(Target, CompletesASerialLine)
{
    EXPECT_EQ(targetText(targetOf("rtu:/dev/ttyS0")), "rtu:/dev/ttyS0,19200,E,1");
    EXPECT_EQ(targetText(targetOf("rtu:/dev/ttyS0,9600")), "rtu:/dev/ttyS0,9600,E,1");
    EXPECT_EQ(targetText(targetOf("rtu:/dev/ttyS0,9600,N,2")), "rtu:/dev/ttyS0,9600,N,2");
}

TEST(Target, RejectsAnythingElse)
{
    EXPECT_EQ(reasonFor("10.0.0.7"), "the target begins with neither \"tcp:\" nor \"rtu:\"");
    EXPECT_EQ(reasonFor("tcp:"), "the host is missing");
    EXPECT_EQ(reasonFor("tcp::502"), "the host is missing");
    EXPECT_EQ(reasonFor("tcp:a:"), "found the port \"\", expected a number from 1 to 65535");
    EXPECT_EQ(reasonFor("tcp:a:0"), "found the port \"0\", expected a number from 1 to 65535");
    EXPECT_EQ(reasonFor("tcp:a:65536"),
              "found the port \"65536\", expected a number from 1 to 65535");
    EXPECT_EQ(reasonFor("tcp:a:5x"), "found the port \"5x\", expected a number from 1 to 65535");
    EXPECT_EQ(reasonFor("tcp:fe80::1"), "an IPv6 address is in brackets, such as tcp:[::1]:502");
    EXPECT_EQ(reasonFor("tcp:[::1"), "\"]\" is missing after the IPv6 address");
    EXPECT_EQ(reasonFor("tcp:[::1]502"), "found \"502\" after the address");
    EXPECT_EQ(reasonFor("rtu:"), "the serial device is missing");
    EXPECT_EQ(reasonFor("rtu:/dev/ttyS0,9601").substr(0, 29), "found 9601 baud, expected one");
    EXPECT_EQ(reasonFor("rtu:/dev/ttyS0,9600,X"), "found the parity \"X\", expected N, E or O");
    EXPECT_EQ(reasonFor("rtu:/dev/ttyS0,9600,N,3"), "found \"3\" stop bits, expected 1 or 2");
    EXPECT_EQ(reasonFor("rtu:/dev/ttyS0,9600,N,1,8"), "found \"8\" after the stop bits");
    EXPECT_EQ(reasonFor(std::string("tcp:a\0b", 7)), "found a zero byte");
}

TEST(Target, ListensAtAnyPort)
{
    EXPECT_EQ(targetText(listenTargetOf("tcp:127.0.0.1:0")), "tcp:127.0.0.1:0");
}

} // namespace

} // namespace mxonline
