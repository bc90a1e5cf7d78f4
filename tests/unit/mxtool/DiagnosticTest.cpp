#include "Diagnostic.h"

#include <gtest/gtest.h>

namespace {

using mxtool::Severity;
using mxtool::toText;

TEST(Diagnostic, namesPlaceSeverityTextAndHint)
{
    EXPECT_EQ(toText({Severity::Error, "a.bin", "It is broken", "mend it"}, false),
              "a.bin: error: It is broken\nhint: mend it\n");
    EXPECT_EQ(toText({Severity::Note, "", "text", ""}, false), "note: text\n");
}

TEST(Diagnostic, colourMarksTheSeverityAlone)
{
    EXPECT_EQ(toText({Severity::Error, "a", "b", ""}, true), "a: \033[1;31merror:\033[0m b\n");
}

TEST(Diagnostic, textsOfAFileCannotActOnTheTerminal)
{
    EXPECT_EQ(toText({Severity::Error, "\033]0;x", "line\nbreak", ""}, false),
              "\\x1b]0;x: error: line\\x0abreak\n");
}

TEST(Diagnostic, aByteThatIsNoUtf8LeavesTheRestReadable)
{
    EXPECT_EQ(
        toText({Severity::Error, "a.yaml", "\"T\xFCr\" is not accepted: 1 \xC2\xB5s", ""}, false),
        "a.yaml: error: \"T\xC3\xBCr\" is not accepted: 1 \xC2\xB5s\n");
}

} // namespace
