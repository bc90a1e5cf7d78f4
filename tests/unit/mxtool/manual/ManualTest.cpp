#include "manual/ManPage.h"
#include "manual/ShellCompletion.h"

#include <gmock/gmock.h>

namespace {

using mxtool::manual::OptionWords;
using mxtool::manual::ProgramWords;
using mxtool::manual::roffText;
using mxtool::manual::ValueKind;
using mxtool::manual::wordsOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// A program with one of each element of a command line.
class Manual : public testing::Test
{
protected:
    Manual()
    {
        program.name("tool");
        program.description("Works on things.");
        program.set_version_flag("--version", "tool 1.2");
        program.add_option("--level", level, "How much")
            ->check(CLI::IsMember({"a", "b", "c", "d", "e", "f"}));
        program.footer("Exit codes:\n  0  done\n\nExample:\n  $ tool -x\n\n  .dot\n");

        CLI::App* verb = program.add_subcommand("cut", "Cut it");
        verb->add_option("FILE", file, "What to cut")->required();
        verb->add_option("OTHERS", others, "What else");
        CLI::Option* fast =
            verb->add_flag("-f,--fast", isFast, "Don't wait [1:2] at \\ or \"later\"");
        verb->add_option("--to", directory, "Where to")->type_name("DIRECTORY");
        verb->add_option("--count", count, "How many")->excludes(fast);
        verb->add_option("--form", form, "How")->check(CLI::IsMember({"round", "flat"}));
        verb->add_option("--set", values, "What of it")
            ->expected(1)
            ->take_all()
            ->type_name("NAME=VALUE");
        verb->add_option("--secret", secret, "Nobody knows")->group("");
        CLI::Option_group* group = verb->add_option_group("more");
        group->add_flag("--grouped", isGrouped, "One of a group");
        words = wordsOf(program);
    }

    const OptionWords& option(const std::string& name) const
    {
        for (const OptionWords& one : words.verbs.at(0).options) {
            if (one.names.back() == name) {
                return one;
            }
        }
        throw std::out_of_range(name);
    }

    CLI::App program;
    std::string level, file, directory, form, secret;
    std::vector<std::string> others, values;
    bool isFast = false, isGrouped = false;
    int count = 0;
    ProgramWords words;
};

TEST_F(Manual, knowsWhatCompletesEachValue)
{
    EXPECT_EQ(option("--fast").kind, ValueKind::None);
    EXPECT_EQ(option("--to").kind, ValueKind::Directory);
    EXPECT_EQ(option("--count").kind, ValueKind::FreeText);
    EXPECT_EQ(option("--set").kind, ValueKind::FreeText);
    EXPECT_EQ(option("--form").kind, ValueKind::Choice);
    EXPECT_THAT(option("--form").choices, ElementsAre("round", "flat"));
    EXPECT_EQ(words.verbs[0].arguments.at(0).kind, ValueKind::File);
}

TEST_F(Manual, knowsNamesRepetitionAndWhatIsExcluded)
{
    EXPECT_THAT(option("--fast").names, ElementsAre("-f", "--fast"));
    EXPECT_THAT(option("--count").excludes, ElementsAre("--fast"));
    EXPECT_TRUE(option("--set").repeatable);
    EXPECT_FALSE(option("--count").repeatable);
    EXPECT_TRUE(words.verbs[0].arguments.at(1).repeatable);
    EXPECT_EQ(words.version, "tool 1.2");
}

TEST_F(Manual, holdsOptionsOfGroupsButNoHiddenOnes)
{
    EXPECT_NO_THROW(option("--grouped"));
    const std::string page = verbPage(words, words.verbs[0]);
    EXPECT_EQ(page.find("\\-\\-help"), page.rfind("\\-\\-help"));
    EXPECT_THROW(option("--secret"), std::out_of_range);
}

TEST_F(Manual, splitsTheTextAfterTheOptionsIntoSections)
{
    ASSERT_EQ(words.program.sections.size(), 2U);
    EXPECT_EQ(words.program.sections[0].title, "Exit codes");
    EXPECT_EQ(words.program.sections[0].text, "0  done");
    EXPECT_EQ(words.program.sections[1].title, "Example");
    EXPECT_EQ(words.program.sections[1].text, "$ tool -x\n\n.dot");
}

TEST(RoffText, isNoInstruction)
{
    EXPECT_EQ(roffText(".SH"), "\\&.SH");
    EXPECT_EQ(roffText("'x'"), "\\&\\(aqx\\(aq");
    EXPECT_EQ(roffText("a\\b"), "a\\eb");
    EXPECT_EQ(roffText("\"~^`"), "\\(dq\\(ti\\(ha\\(ga");
}

TEST(RoffText, keepsMinusSignsAndCharactersBeyondAscii)
{
    EXPECT_EQ(roffText("--in-offset"), "\\-\\-in\\-offset");
    // U+00B1, U+2013 and U+1F600: two, three and four bytes of UTF-8.
    EXPECT_EQ(roffText("\xC2\xB1 \xE2\x80\x93 \xF0\x9F\x98\x80"), "\\[u00B1] \\[u2013] \\[u1F600]");
}

TEST_F(Manual, pageOfAVerbShowsItsWords)
{
    const std::string page = verbPage(words, words.verbs[0]);
    EXPECT_THAT(page, HasSubstr(".TH TOOL\\-CUT 1 \"\" \"tool 1.2\""));
    EXPECT_THAT(page, HasSubstr(".SH NAME\ntool\\-cut \\- cut it\n"));
    EXPECT_THAT(page, HasSubstr("[\\fIoptions\\fR] \\fIFILE\\fR [\\fIOTHERS\\fR...]\n"));
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-f\\fR, \\fB\\-\\-fast\\fR\n"
                                "Don\\(aqt wait [1:2] at \\e or \\(dqlater\\(dq.\n"));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-form\\fR \\fIround\\fR|\\fIflat\\fR\n"));
    EXPECT_THAT(page, HasSubstr("Not together with \\fB\\-\\-fast\\fR.\n"));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-set\\fR \\fINAME=VALUE\\fR\nWhat of it.\n"
                                "It may be given again.\n"));
    EXPECT_THAT(page, Not(HasSubstr("secret")));
}

TEST_F(Manual, pageOfTheProgramShowsVerbsSectionsAndManyChoicesApart)
{
    const std::string page = programPage(words);
    EXPECT_THAT(page, HasSubstr(".TP\n\\fBcut\\fR\nCut it; see\n.BR \\%tool\\-cut (1).\n"));
    EXPECT_THAT(page, HasSubstr(".SH EXIT STATUS\n.EX\n0  done\n.EE\n"));
    EXPECT_THAT(page, HasSubstr(".SH EXAMPLES\n.EX\n$ tool \\-x\n.sp\n\\&.dot\n.EE\n"));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-level\\fR \\fITEXT\\fR\nHow much.\n"
                                "One of \\fBa\\fR, \\fBb\\fR, "));
}

TEST_F(Manual, linesOfAPageAreShort)
{
    program.get_subcommand("cut")->add_option(
        "--long", file, std::string(40, 'x') + " " + std::string(40, 'y') + " .z");
    words = wordsOf(program);
    EXPECT_THAT(verbPage(words, words.verbs[0]),
                HasSubstr(std::string(40, 'x') + "\n" + std::string(40, 'y') + " .z.\n"));
}

TEST_F(Manual, completionOfBashOffersWhatMayFollow)
{
    const std::string script = bashCompletion(words);
    EXPECT_THAT(script, HasSubstr("cut,--form)\n            _tool_words 'round flat'\n"));
    EXPECT_THAT(script, HasSubstr("cut,--to)\n            _tool_files -d\n"));
    EXPECT_THAT(script, HasSubstr("cut,--count)\n            :\n"));
    EXPECT_THAT(script, HasSubstr("            --level) ((i++)) ;;"));
    EXPECT_THAT(script, HasSubstr("complete -F _tool tool\n"));
}

TEST_F(Manual, completionOfZshQuotesWhatItSays)
{
    const std::string script = zshCompletion(words);
    EXPECT_THAT(script, HasSubstr("'(-f --fast --count)--fast[Don'\\''t wait \\[1\\:2\\] at "
                                  "\\\\ or \"later\"]'\n"));
    EXPECT_THAT(script, HasSubstr("'(--form)--form=[How]:TEXT:(round flat)'\n"));
    EXPECT_THAT(script, HasSubstr("'*--set=[What of it]:NAME=VALUE: '\n"));
    EXPECT_THAT(script, HasSubstr("'1:FILE:_files'\n"));
    EXPECT_THAT(script, HasSubstr("'*:OTHERS:_files'\n"));
}

} // namespace
