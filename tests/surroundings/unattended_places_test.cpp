// Odd surroundings that the real viewer has to do with, too.
#include "tests/service/service_process.h"

#include <gmock/gmock.h>

namespace
{

class UnattendedPlace : public ServiceProcess
{
  protected:
    UnattendedPlace() : ServiceProcess(PRODUCT_TREE) { start_service(); }

    Invocation without_display(std::vector<std::string> words) const
    {
        Invocation run = launcher(std::move(words));
        run.environment.erase("DISPLAY");
        return run;
    }
};

TEST_F(UnattendedPlace, NamesThatAreNotValidInTheLocaleAreOnlyBytes)
{
    scratch.write_file("l\xe4ngs \xff", "1\n2\n");
    for (const char* locale : {"C", "C.UTF-8"}) {
        Invocation run = without_display(
            {"-out", "\xfe", "-fname", "\xff", "-base", "l\xe4ngs \xff", "l\xe4ngs \xff", "b"});
        run.environment["LC_ALL"] = locale;

        EXPECT_EQ(Program(run).run(), success);

        EXPECT_EQ(file_contents(scratch / "\xfe"), file_contents(scratch / "b"));
    }
}

TEST_F(UnattendedPlace, AThousandContributorsAreMerged)
{
    std::vector<std::string> words{"-out", "m"};
    std::string text = "0\n1\n2\n3\n4\n5\n6\n7\n8\n9\n";
    for (int number = 0; number < 1000; ++number)
        words.push_back(scratch.write_file("contributor " + std::to_string(number), text));
    text.replace(6, 1, "three");
    scratch.write_file("contributor 500", text);
    text.replace(text.find('8'), 1, "eight");
    scratch.write_file("contributor 999", text);

    EXPECT_EQ(Program(without_display(words)).run(), success);

    EXPECT_EQ(file_contents(scratch / "m"), text);
}

TEST_F(UnattendedPlace, AFullTemporaryDirectoryThatTakesNoFolderIsToldByThePrompt)
{
    Invocation run = without_display({"a", "b"});
    shim(run, {{"SHIM_FAIL", "mkdir:1:28"}});
    run.environment["SHIM_PROGRAM"] = "uquarndiffmrg";

    EXPECT_EQ(
        Program(run).run(),
        (Outcome{.exit_status = 255, .err = "error: Could not set the temporary directory\n"}));
}

} // namespace
