// The one failure that the user sees as a dialog: no temporary directory.
#include "tests/process/launcher_process.h"

#include <filesystem>

namespace
{

/** A run of the prompt tool of `product`, as its double records it. */
std::string prompt_run(const std::string& product)
{
    std::string record;
    for (const std::string& word :
         {product + "/bin/quarnprompt", std::string("proceed"), std::string("-mask"),
          std::string("p"), std::string("-type"), std::string("error"), std::string("-prompt"),
          std::string(" Could not set the temporary directory "), std::string("-prefer_gui")})
        record += word + '\0';
    return record + "\n";
}

class Prompt : public LauncherProcess
{
  protected:
    /** A traced compare, in surroundings in which all else would succeed. */
    Invocation doomed() const
    {
        Invocation run = compare();
        trace(run);
        run.environment["PROMPT_RECORD"] = scratch / "prompts";
        return run;
    }

    std::string prompts() const { return file_contents(scratch / "prompts"); }
};

TEST_F(Prompt, IsRunOnceWithItsExactWords)
{
    Invocation run_without_parent = doomed();
    run_without_parent.environment["TMPDIR"] = scratch / "missing";

    EXPECT_EQ(run(run_without_parent), silent_failure);

    EXPECT_EQ(prompts(), prompt_run(TEST_PRODUCT_DIR));
    EXPECT_EQ(scratch.listing(), (Names{"a", "b", "prompts", "tmp"}));
}

TEST_F(Prompt, IsRunByTheShellWithTheExactCommand)
{
    Invocation observed = doomed();
    shim(observed, {{"SHIM_FAIL", "mkdir:1:30"}});

    EXPECT_EQ(run(observed), silent_failure);

    EXPECT_EQ(
        calls({"system"}),
        (Names{"system(\"" TEST_PRODUCT_DIR "/bin/quarnprompt\" proceed -mask p -type \"error\" "
               "-prompt \" Could not set the temporary directory \" -prefer_gui)"}));
}

TEST_F(Prompt, ComesBeforeAnyTraceFileAndServiceCheck)
{
    Invocation observed = doomed();
    shim(observed, {{"SHIM_FAIL", "mkdir:1:30"}});

    EXPECT_EQ(run(observed), silent_failure);

    EXPECT_EQ(calls({"mkdir", "open", "fopen", "fork", "alarm"}).size(), 1U);
    EXPECT_EQ(scratch.listing("tmp"), Names{});
}

TEST_F(Prompt, ItsStatusDoesNotMatter)
{
    for (const char* status : {"0", "3"}) {
        Invocation answered = doomed();
        answered.environment["TMPDIR"] = scratch / "missing";
        answered.environment["PROMPT_STATUS"] = status;

        EXPECT_EQ(run(answered), silent_failure);
    }
    EXPECT_EQ(prompts(), prompt_run(TEST_PRODUCT_DIR) + prompt_run(TEST_PRODUCT_DIR));
}

TEST_F(Prompt, IsRunWhereTheParentMayNotBeWritten)
{
    std::filesystem::permissions(scratch / "tmp", std::filesystem::perms::owner_read |
                                                      std::filesystem::perms::owner_exec);

    EXPECT_EQ(run(doomed()), silent_failure);

    EXPECT_EQ(prompts(), prompt_run(TEST_PRODUCT_DIR));
    EXPECT_EQ(scratch.listing("tmp"), Names{});
}

TEST_F(Prompt, IsRunForATmpdirThatIsTooLong)
{
    Invocation overlong = doomed();
    overlong.environment["TMPDIR"] = "/" + std::string(4095, 'x');
    shim(overlong);

    EXPECT_EQ(run(overlong), silent_failure);

    EXPECT_EQ(prompts(), prompt_run(TEST_PRODUCT_DIR));
    EXPECT_EQ(calls({"mkdir"}), Names{});
}

TEST_F(Prompt, IsFoundInAProductDirectoryWithBlanks)
{
    const std::string product = scratch / "my  product";
    std::filesystem::create_directories(product + "/bin");
    std::filesystem::copy_file(TEST_LAUNCHER, product + "/bin/uquarndiffmrg");
    std::filesystem::copy_file(SCRIPTED_PROMPT, product + "/bin/quarnprompt");
    Invocation moved = doomed();
    moved.path = product + "/bin/uquarndiffmrg";
    moved.environment["TMPDIR"] = scratch / "missing";

    EXPECT_EQ(run(moved), silent_failure);

    EXPECT_EQ(prompts(), prompt_run(product));
}

} // namespace
