#include "prompt/prompt_request.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using Words = std::vector<std::string>;
using Answers = std::vector<Answer>;

TEST(PromptRequest, TheLaunchersOwnCallIsRead)
{
    const auto request = read_request({"proceed", "-mask", "p", "-type", "error", "-prompt",
                                       " Could not set the temporary directory ", "-prefer_gui"});

    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->answers, Answers{Answer::proceed});
    EXPECT_EQ(request->type, PromptType::error);
    EXPECT_EQ(request->text, "Could not set the temporary directory");
    EXPECT_TRUE(request->prefer_gui);
}

TEST(PromptRequest, EachTypeIsKnown)
{
    const std::vector<std::pair<std::string, PromptType>> types = {
        {"error", PromptType::error},
        {"warning", PromptType::warning},
        {"ok", PromptType::information},
        {"information", PromptType::information}};
    for (const auto& [word, type] : types)
        EXPECT_EQ(read_request({"proceed", "-mask", "p", "-prompt", "x", "-type", word})->type,
                  type);
}

TEST(PromptRequest, AMaskOffersItsLettersInTheirOrder)
{
    EXPECT_EQ(read_request({"proceed", "-mask", "nyap", "-prompt", "x"})->answers,
              (Answers{Answer::no, Answer::yes, Answer::abort, Answer::proceed}));
}

TEST(PromptRequest, WithoutPreferGuiNoWindowIsWanted)
{
    EXPECT_FALSE(read_request({"proceed", "-mask", "p", "-prompt", "x"})->prefer_gui);
}

TEST(PromptRequest, ATextMayBeginWithADash)
{
    EXPECT_EQ(read_request({"proceed", "-mask", "p", "-prompt", "-x"})->text, "-x");
}

class BadPromptRequest : public testing::TestWithParam<Words>
{};

TEST_P(BadPromptRequest, IsRefused)
{
    EXPECT_FALSE(read_request(GetParam()).has_value());
}

INSTANTIATE_TEST_SUITE_P(
    Words, BadPromptRequest,
    testing::Values(Words{}, Words{"proceed"}, Words{"proceed", "-mask", "p"},
                    Words{"proceed", "-prompt", "x"}, Words{"ask", "-mask", "p", "-prompt", "x"},
                    Words{"-mask", "p", "-prompt", "x"}, Words{"proceed", "-mask"},
                    Words{"proceed", "-mask", "p", "-prompt"},
                    Words{"proceed", "-mask", "", "-prompt", "x"},
                    Words{"proceed", "-mask", "z", "-prompt", "x"},
                    Words{"proceed", "-mask", "pp", "-prompt", "x"},
                    Words{"proceed", "-mask", "P", "-prompt", "x"},
                    Words{"proceed", "-mask", "p", "-prompt", "  \t "},
                    Words{"proceed", "-mask", "p", "-prompt", "x", "-type", "fatal"},
                    Words{"proceed", "-mask", "p", "-prompt", "x", "-colour", "red"},
                    Words{"proceed", "-mask", "p", "-prompt", "x", "more"}));

TEST(StatusOf, AgreementIsZeroAndRefusalOne)
{
    EXPECT_EQ(status_of(Answer::proceed), 0);
    EXPECT_EQ(status_of(Answer::yes), 0);
    EXPECT_EQ(status_of(Answer::abort), 1);
    EXPECT_EQ(status_of(Answer::no), 1);
}

TEST(Unanswered, IsARefusalWhereOneIsOffered)
{
    EXPECT_EQ(unanswered({.answers = {Answer::proceed, Answer::abort}}), Answer::abort);
    EXPECT_EQ(unanswered({.answers = {Answer::no, Answer::yes}}), Answer::no);
    EXPECT_EQ(unanswered({.answers = {Answer::proceed}}), Answer::proceed);
}

} // namespace
