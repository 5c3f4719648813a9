#include "cmdline/command_line_info.h"
#include "tests/cmdline/parsed.h"

#include <gtest/gtest.h>
#include <ostream>

namespace
{

using Info = DiffMrgCommandLineInfo;
using Words = std::vector<std::string>;

TEST(SanityCheck, ResetsStateAndErrorAndNothingElse)
{
    Info command_line{};
    command_line.parse_state = ARG_OUT;
    command_line.parse_error = true;
    command_line.blank_ignore = true;
    command_line.contributors = {"kept"};

    EXPECT_FALSE(parse(command_line, {}));

    EXPECT_EQ(command_line.parse_state, ARG_CONTRIBUTOR);
    EXPECT_FALSE(command_line.parse_error);
    EXPECT_TRUE(command_line.blank_ignore);
    EXPECT_EQ(command_line.contributors, Words{"kept"});
}

TEST(SanityCheck, AcceptsAnEmptyArgumentVector)
{
    Info command_line{};
    const char* const none[] = {nullptr};
    EXPECT_FALSE(command_line.sanity_check(0, none));
}

TEST(SanityCheck, DoesNotLookAtTheProgramsName)
{
    Info command_line{};
    const char* const words[] = {"-nonsense", "a", nullptr};
    EXPECT_FALSE(command_line.sanity_check(2, words));
    EXPECT_EQ(command_line.contributors, Words{"a"});
}

TEST(SanityCheck, AnswersTrueForAnErrorInAnEarlierWord)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"-nonsense", "a", "b"}));
}

struct State {
    const char* name;
    int state;
    Words Info::*list;
    std::string Info::*text;
};

void PrintTo(const State& state, std::ostream* out)
{
    *out << state.name;
}

class PlainWord : public testing::TestWithParam<State>
{};

TEST_P(PlainWord, GoesWhereTheStateSaysAndBringsTheStateToRest)
{
    Info command_line{};
    command_line.parse_state = GetParam().state;

    EXPECT_TRUE(command_line.parse_param("word", false, false));

    if (GetParam().list != nullptr)
        EXPECT_EQ(command_line.*GetParam().list, Words{"word"});
    else
        EXPECT_EQ(command_line.*GetParam().text, "word");
    EXPECT_EQ(command_line.parse_state, ARG_CONTRIBUTOR);
    EXPECT_FALSE(command_line.parse_error);
    EXPECT_EQ(command_line.merge_mode, GetParam().state == ARG_OUT);
}

TEST_P(PlainWord, AsLastWordIsNoError)
{
    Info command_line{};
    command_line.parse_state = GetParam().state;

    command_line.parse_param("word", false, true);

    EXPECT_FALSE(command_line.parse_error);
}

INSTANTIATE_TEST_SUITE_P(EveryState, PlainWord,
                         testing::Values(State{"contributor", 0, &Info::contributors, nullptr},
                                         State{"out", 1, nullptr, &Info::out_pname},
                                         State{"base", 2, &Info::contributors, nullptr},
                                         State{"fname", 3, &Info::fnames, nullptr},
                                         State{"favor_contrib", 4, nullptr, &Info::favor_contrib},
                                         State{"encoding", 5, nullptr, &Info::encoding}));

TEST(WordParser, AnUnknownStateStoresNothingAndComesToRest)
{
    Info command_line{};
    command_line.parse_state = 6;

    EXPECT_TRUE(command_line.parse_param("word", false, false));

    EXPECT_TRUE(command_line.contributors.empty() && command_line.fnames.empty());
    EXPECT_EQ(command_line.out_pname + command_line.favor_contrib + command_line.encoding, "");
    EXPECT_EQ(command_line.parse_state, ARG_CONTRIBUTOR);
    EXPECT_FALSE(command_line.parse_error);
}

struct Flag {
    const char* word;
    int awaits;
    bool Info::*sets = nullptr;
};

void PrintTo(const Flag& flag, std::ostream* out)
{
    *out << flag.word;
}

class Keyword : public testing::TestWithParam<Flag>
{
  protected:
    static int true_flags(const Info& info)
    {
        return info.merge_mode + info.blank_ignore + info.favor_contrib_given + info.encoding_given;
    }
};

TEST_P(Keyword, SetsItsStateAndItsFieldOnly)
{
    const Flag& flag = GetParam();
    Info command_line{};

    EXPECT_TRUE(command_line.parse_param(flag.word, true, false));

    EXPECT_EQ(command_line.parse_state, flag.awaits);
    EXPECT_FALSE(command_line.parse_error);
    EXPECT_EQ(true_flags(command_line), flag.sets != nullptr ? 1 : 0);
    EXPECT_TRUE(flag.sets == nullptr || command_line.*flag.sets);
    EXPECT_TRUE(command_line.contributors.empty() && command_line.fnames.empty());
}

TEST_P(Keyword, AsLastWordIsAnErrorWhereItAwaitsAValue)
{
    Info command_line{};

    command_line.parse_param(GetParam().word, true, true);

    EXPECT_EQ(command_line.parse_error, GetParam().awaits != ARG_CONTRIBUTOR);
    EXPECT_TRUE(GetParam().sets == nullptr || command_line.*GetParam().sets);
}

TEST_P(Keyword, IsAnErrorAndDroppedWhileAValueIsAwaited)
{
    for (int awaited = ARG_OUT; awaited <= ARG_ENCODING; ++awaited) {
        Info command_line{};
        command_line.parse_state = awaited;

        EXPECT_TRUE(command_line.parse_param(GetParam().word, true, false));

        EXPECT_TRUE(command_line.parse_error);
        EXPECT_EQ(command_line.parse_state, awaited);
        EXPECT_EQ(true_flags(command_line), 0);
    }
}

TEST_P(Keyword, IsNotRecognisedAtTheBeginningOfALongerWord)
{
    Info command_line{};
    command_line.parse_param((std::string(GetParam().word) + "s").c_str(), true, false);
    EXPECT_TRUE(command_line.parse_error);
    EXPECT_EQ(true_flags(command_line), 0);
}

TEST_P(Keyword, IsNotRecognisedWhenCutShort)
{
    Info command_line{};
    std::string word = GetParam().word;
    word.pop_back();
    command_line.parse_param(word.c_str(), true, false);
    EXPECT_TRUE(command_line.parse_error);
}

TEST_P(Keyword, IsNotRecognisedWithACapital)
{
    Info command_line{};
    std::string word = GetParam().word;
    word[0] = static_cast<char>(word[0] - 'a' + 'A');
    command_line.parse_param(word.c_str(), true, false);
    EXPECT_TRUE(command_line.parse_error);
    EXPECT_EQ(command_line.parse_state, ARG_CONTRIBUTOR);
}

INSTANTIATE_TEST_SUITE_P(WithMeaning, Keyword,
                         testing::Values(Flag{"blank_ignore", ARG_CONTRIBUTOR, &Info::blank_ignore},
                                         Flag{"out", ARG_OUT, &Info::merge_mode},
                                         Flag{"base", ARG_BASE}, Flag{"fname", ARG_FNAME},
                                         Flag{"favor_contrib", ARG_FAVOR_CONTRIB,
                                              &Info::favor_contrib_given},
                                         Flag{"encoding", ARG_ENCODING, &Info::encoding_given}));

INSTANTIATE_TEST_SUITE_P(Ignored, Keyword,
                         testing::Values(Flag{"abort", 0}, Flag{"pause", 0}, Flag{"html", 0},
                                         Flag{"force", 0}, Flag{"query", 0}, Flag{"hstack", 0},
                                         Flag{"vstack", 0}, Flag{"qall", 0}, Flag{"qntrivial", 0}));

struct Unknown {
    const char* name;
    const char* word;
};

void PrintTo(const Unknown& unknown, std::ostream* out)
{
    *out << unknown.name;
}

class UnknownFlag : public testing::TestWithParam<Unknown>
{};

TEST_P(UnknownFlag, IsAnErrorAndTheWordsAroundItStand)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"a", GetParam().word, "b"}));
    EXPECT_EQ(command_line.contributors, (Words{"a", "b"}));
}

INSTANTIATE_TEST_SUITE_P(
    All, UnknownFlag,
    testing::Values(Unknown{"lone_dash", "-"}, Unknown{"two_dashes", "--"},
                    Unknown{"keyword_after_two_dashes", "--out"}, Unknown{"capital", "-Out"},
                    Unknown{"capitals", "-OUT"}, Unknown{"first_letter", "-o"},
                    Unknown{"blank_before", "- out"}, Unknown{"blank_after", "-out "},
                    Unknown{"value_attached", "-out=m"}, Unknown{"nonsense", "-nonsense"}));

TEST(WordParser, OutAsLastWordSelectsMergingAndIsAnError)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"a", "b", "-out"}));
    EXPECT_TRUE(command_line.merge_mode);
}

TEST(WordParser, BlankIgnoreAsLastWordIsNoError)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"a", "b", "-blank_ignore"}));
    EXPECT_TRUE(command_line.blank_ignore);
}

TEST(WordParser, AFlagBetweenAFlagAndItsValueIsDroppedAndTheValueIsKept)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"-out", "-blank_ignore", "m.txt", "a", "b"}));
    EXPECT_FALSE(command_line.blank_ignore);
    EXPECT_EQ(command_line.out_pname, "m.txt");
    EXPECT_EQ(command_line.contributors, (Words{"a", "b"}));
}

TEST(WordParser, ADroppedFlagAsLastWordLeavesTheValueAwaited)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"-encoding", "-out"}));
    EXPECT_EQ(command_line.parse_state, ARG_ENCODING);
    EXPECT_FALSE(command_line.merge_mode);
}

TEST(WordParser, AnUnknownFlagWhileAValueIsAwaitedKeepsTheValueAwaited)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"-fname", "--", "n"}));
    EXPECT_EQ(command_line.fnames, Words{"n"});
}

TEST(WordParser, ABaseAfterAContributorIsAnErrorAndStillStored)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"a", "-base", "b", "x"}));
    EXPECT_EQ(command_line.contributors, (Words{"a", "b", "x"}));
}

TEST(WordParser, ABaseBeforeTheContributorsIsTheFirstOfThem)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"-base", "b", "a"}));
    EXPECT_EQ(command_line.contributors, (Words{"b", "a"}));
    EXPECT_FALSE(command_line.merge_mode);
}

TEST(WordParser, ASecondBaseIsAnError)
{
    Info command_line{};
    EXPECT_TRUE(parse(command_line, {"-base", "b", "-base", "c", "a"}));
    EXPECT_EQ(command_line.contributors, (Words{"b", "c", "a"}));
}

TEST(WordParser, ABaseAfterOptionsButBeforeContributorsIsNoError)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"-fname", "n", "-out", "m", "-base", "b", "a"}));
}

TEST(WordParser, IgnoredFlagsTakeNoValue)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"-qall", "a", "-html", "b"}));
    EXPECT_EQ(command_line.contributors, (Words{"a", "b"}));
}

TEST(WordParser, ARepeatedOptionKeepsItsLastValue)
{
    const Info command_line =
        parsed({"-out", "m", "-out", "n", "-favor_contrib", "1", "-favor_contrib", "2", "-encoding",
                "utf-8", "-encoding", "utf-16be"});
    EXPECT_FALSE(command_line.parse_error);
    EXPECT_EQ(command_line.out_pname, "n");
    EXPECT_EQ(command_line.favor_contrib, "2");
    EXPECT_EQ(command_line.encoding, "utf-16be");
}

TEST(WordParser, RepeatedDisplayNamesAreCollectedInOrder)
{
    const Info command_line = parsed({"-fname", "A", "a", "-fname", "B", "b"});
    EXPECT_EQ(command_line.fnames, (Words{"A", "B"}));
    EXPECT_EQ(command_line.contributors, (Words{"a", "b"}));
}

TEST(WordParser, OptionsMayStandBetweenContributors)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"a", "-blank_ignore", "b", "-out", "m", "c"}));
    EXPECT_EQ(command_line.contributors, (Words{"a", "b", "c"}));
}

TEST(WordParser, ASwitchWrittenWithASlashIsAContributor)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"/base", "/out"}));
    EXPECT_EQ(command_line.contributors, (Words{"/base", "/out"}));
}

TEST(WordParser, AValueMayBeginWithASlashOrBeEmpty)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"-out", "/m", "-fname", "", ""}));
    EXPECT_EQ(command_line.out_pname, "/m");
    EXPECT_EQ(command_line.fnames, Words{""});
    EXPECT_EQ(command_line.contributors, Words{""});
}

TEST(WordParser, AnEncodingIsNotJudged)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"-encoding", "UTF-8", "a", "b"}));
    EXPECT_EQ(command_line.encoding, "UTF-8");
    EXPECT_EQ(command_line.type_manager, "");
}

TEST(WordParser, BytesPassUnchanged)
{
    Info command_line{};
    EXPECT_FALSE(parse(command_line, {"\xff\xfe \n<&>", "\xc3\xa4"}));
    EXPECT_EQ(command_line.contributors, (Words{"\xff\xfe \n<&>", "\xc3\xa4"}));
}

} // namespace
