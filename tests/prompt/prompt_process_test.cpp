// The prompt tool as a process: without a display, with a dead one, and on a terminal.
#include "tests/harness/program.h"
#include "tests/prompt/terminal.h"

#include <gtest/gtest.h>

namespace
{

constexpr const char* usage =
    "Usage: quarnprompt proceed -mask letters [ -type error|warning|ok|information ]"
    " -prompt text [ -prefer_gui ]\n"
    "letters: p proceed, a abort, y yes, n no\n";

class PromptProcess : public testing::Test
{
  protected:
    Outcome ask(std::vector<std::string> words, const Environment& added = {}) const
    {
        Invocation run = invocation(scratch, PROMPT, std::move(words));
        run.environment.insert(added.begin(), added.end());
        return Program(run).run();
    }

    Scratch scratch;
};

TEST_F(PromptProcess, WithoutADisplayTheTextIsPrintedAfterItsType)
{
    EXPECT_EQ(ask({"proceed", "-mask", "p", "-type", "error", "-prompt", " Could not  do it ",
                   "-prefer_gui"}),
              (Outcome{.exit_status = 0, .err = "error: Could not  do it\n"}));
}

TEST_F(PromptProcess, WithoutATerminalNobodyAgrees)
{
    EXPECT_EQ(ask({"proceed", "-mask", "pa", "-type", "warning", "-prompt", "Sure?"}),
              (Outcome{.exit_status = 1, .err = "warning: Sure?\n"}));
}

TEST_F(PromptProcess, ADisplayThatCannotBeOpenedLeavesTheTextOnStandardError)
{
    EXPECT_EQ(ask({"proceed", "-mask", "p", "-type", "ok", "-prompt", "Done", "-prefer_gui"},
                  {{"DISPLAY", ":4711"}}),
              (Outcome{.exit_status = 0, .err = "information: Done\n"}));
}

TEST_F(PromptProcess, ADisplayIsNotUsedUnlessAWindowIsPreferred)
{
    EXPECT_EQ(ask({"proceed", "-mask", "p", "-prompt", "x"},
                  {{"DISPLAY", ":0"}, {"QT_QPA_PLATFORM", "offscreen"}}),
              (Outcome{.exit_status = 0, .err = "information: x\n"}));
}

TEST_F(PromptProcess, ABadCommandLineIsToldWithTheUsage)
{
    EXPECT_EQ(ask({"proceed", "-mask", "z", "-prompt", "x"}),
              (Outcome{.exit_status = 2, .err = usage}));
}

TEST(PromptTerminal, EnterIsTheFirstAnswer)
{
    TerminalProgram prompt({PROMPT, "proceed", "-mask", "p", "-type", "error", "-prompt", "Text"});

    ASSERT_TRUE(prompt.await("error: Text\r\nPress Enter to go on: "));
    prompt.type("\n");

    EXPECT_EQ(prompt.wait(), 0);
}

TEST(PromptTerminal, ALetterIsItsAnswer)
{
    TerminalProgram prompt({PROMPT, "proceed", "-mask", "yn", "-prompt", "Really?"});

    ASSERT_TRUE(prompt.await("Yes [y]  No [n]  (Enter: Yes): "));
    prompt.type("n\n");

    EXPECT_EQ(prompt.wait(), 1);
}

TEST(PromptTerminal, AnotherLetterIsAskedAgain)
{
    TerminalProgram prompt({PROMPT, "proceed", "-mask", "yn", "-prompt", "Really?"});

    ASSERT_TRUE(prompt.await("(Enter: Yes): "));
    prompt.type("x\n");
    ASSERT_TRUE(prompt.await("(Enter: Yes): "));
    prompt.type("y\n");

    EXPECT_EQ(prompt.wait(), 0);
}

TEST(PromptTerminal, TheEndOfTheInputAgreesToNothing)
{
    TerminalProgram prompt({PROMPT, "proceed", "-mask", "pa", "-prompt", "Really?"});

    ASSERT_TRUE(prompt.await("(Enter: Proceed): "));
    prompt.type("\x04");

    EXPECT_EQ(prompt.wait(), 1);
}

} // namespace
