#include "api/RequestBody.h"

#include "api/CallFailure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using workbench::CallFailure;
using workbench::RequestBody;

template <typename Reading>
std::string refusal(const std::string& content, const Reading& reading)
{
    try {
        reading(RequestBody(content));
        return "";
    } catch (const CallFailure& failure) {
        EXPECT_EQ(failure.status(), 400U);
        return failure.what();
    }
}

TEST(RequestBody, HasMembersOfEachType)
{
    const RequestBody body(R"({"t": "a\u0000b", "n": 4294967295, "b": true, "l": ["x", ""],
                               "o": {"t": "in"}, "m": [{"n": 1}, {"n": 0}], "z": null})");
    EXPECT_EQ(body.text("t"), std::string("a\0b", 3));
    EXPECT_EQ(body.number("n"), 4294967295U);
    EXPECT_TRUE(body.isSet("b"));
    EXPECT_THAT(body.texts("l"), ElementsAre("x", ""));
    EXPECT_EQ(body.object("o")->text("t"), "in");
    EXPECT_EQ(body.objects("m")[1].number("n"), 0U);
    EXPECT_EQ(body.textOrNull("z"), std::nullopt);
    EXPECT_EQ(body.numberOrNull("z"), std::nullopt);
}

TEST(RequestBody, LeavesOutWhatMayBeMissing)
{
    const RequestBody body("{}");
    EXPECT_EQ(body.textOr("t", "absent"), "absent");
    EXPECT_EQ(body.numberOrNull("n"), std::nullopt);
    EXPECT_FALSE(body.isSet("b"));
    EXPECT_TRUE(body.texts("l").empty());
    EXPECT_TRUE(body.objects("m").empty());
    EXPECT_FALSE(body.object("o"));
}

TEST(RequestBody, NamesWhatIsWrong)
{
    const auto none = [](const RequestBody&) {};
    EXPECT_EQ(refusal("", none), "The body is no JSON at byte 1, expected an object");
    EXPECT_EQ(refusal("{\"a\": }", none), "The body is no JSON at byte 7, expected an object");
    EXPECT_EQ(refusal("{\"a\": -1e999}", none),
              "The body has a number of more than 308 digits, expected at most 4294967295");
    EXPECT_EQ(refusal("[1]", none), "body: found [1], expected an object");
    EXPECT_EQ(refusal("{}", [](const RequestBody& body) { body.text("t"); }),
              "t: found nothing, expected a text");
    EXPECT_EQ(refusal(R"({"t": 1})", [](const RequestBody& body) { body.text("t"); }),
              "t: found 1, expected a text");
    for (const char* number : {"-1", "1.5", "4294967296", "\"1\"", "1e3"}) {
        EXPECT_EQ(refusal(std::string(R"({"n": )") + number + "}",
                          [](const RequestBody& body) { body.number("n"); })
                      .substr(0, 9),
                  "n: found ")
            << number;
    }
    EXPECT_EQ(refusal(R"({"l": ["a", 2]})", [](const RequestBody& body) { body.texts("l"); }),
              "l: found [\"a\",2], expected a text");
    EXPECT_EQ(refusal(R"({"b": 1})", [](const RequestBody& body) { (void)body.isSet("b"); }),
              "b: found 1, expected true or false");
    EXPECT_EQ(refusal(R"({"m": [{}, {"n": "x"}]})",
                      [](const RequestBody& body) { body.objects("m")[1].number("n"); }),
              "m[1].n: found \"x\", expected a whole number from 0 to 4294967295");
    EXPECT_EQ(
        refusal(R"({"o": {"i": 1}})", [](const RequestBody& body) { body.object("o")->text("i"); }),
        "o.i: found 1, expected a text");
    EXPECT_EQ(refusal(R"({"o": []})", [](const RequestBody& body) { body.object("o"); }),
              "o: found [], expected an object");
}

TEST(RequestBody, RefusesManyLevels)
{
    const auto none = [](const RequestBody&) {};
    const std::string deep(100000, '[');
    EXPECT_EQ(refusal("{\"a\":" + deep, none),
              "The body has more than 32 levels, expected the object of the call");
    EXPECT_EQ(refusal("{\"a\":" + std::string(31, '[') + std::string(31, ']') + "}", none), "");
}

} // namespace
