// Real launchers in odd surroundings, mostly with the service that they start there.
#include "protocol/wire_names.h"
#include "tests/harness/scripted_service.h"
#include "tests/service/service_process.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

/** There is no service, but the FIFO that an earlier one has left. */
class OddPlace : public ServiceProcess
{
  protected:
    OddPlace() { make_rendezvous(scratch); }

    /** What the launcher's own shell does first, and then the launcher with two full paths. */
    Invocation launcher_after(const std::string& commands) const
    {
        Invocation run = launcher({"-e", "-c", commands + "\nexec \"$0\" \"$@\"",
                                   programs + "uquarndiffmrg", scratch / "a", scratch / "b"});
        run.path = "/bin/sh";
        return run;
    }

    /** Puts the shim into a run of the launcher. */
    void shim_launcher(Invocation& run, const Environment& settings) const
    {
        shim(run, settings);
        run.environment["SHIM_PROGRAM"] = "uquarndiffmrg";
    }
};

TEST_F(OddPlace, AWorkingDirectoryThatWasRemovedIsNone)
{
    EXPECT_EQ(Program(launcher_after("mkdir gone; cd gone; rmdir ../gone")).run(), success);
}

TEST_F(OddPlace, ClosedStandardDescriptorsAreNone)
{
    Invocation run = launcher({"a", "b"});
    run.closed_descriptors = {0, 1, 2};

    EXPECT_EQ(Program(run).run(), success);
}

TEST_F(OddPlace, AFileModeMaskDecidesNothingInTheOwnDirectory)
{
    for (const mode_t mask : {0000U, 0077U}) {
        Invocation run = launcher({"a", "b"});
        run.file_mode_mask = mask;

        EXPECT_EQ(Program(run).run(), success);

        EXPECT_EQ(fs::status(scratch.user_directory()).permissions(), fs::perms::owner_all);
        for (const std::string& name : scratch.user_listing())
            EXPECT_EQ(fs::status(scratch.user_directory() + "/" + name).permissions() &
                          (fs::perms::group_all | fs::perms::others_all),
                      fs::perms::none)
                << name;
        Program(service({"--stop"})).run();
        fs::remove_all(scratch.user_directory());
        make_rendezvous(scratch);
    }
}

TEST_F(OddPlace, ATemporaryDirectoryMayHaveFourThousandCharacters)
{
    constexpr std::size_t length = 4000;
    constexpr std::size_t longest_name = 200;
    std::string directory = scratch / "long";
    while (directory.size() + 1 < length)
        directory.append("/").append(
            std::string(std::min(longest_name, length - directory.size() - 1), 'd'));
    fs::create_directories(directory);
    const std::string own =
        directory + "/" + fs::path(scratch.user_directory()).filename().string();
    fs::create_directory(own);
    ASSERT_EQ(::mkfifo((own + "/" + rendezvous_pipe).c_str(), 0600), 0);
    Invocation run = launcher({"a", "b"});
    run.environment["TMPDIR"] = directory;

    EXPECT_EQ(Program(run).run(), success);

    run.arguments = {"--status"};
    run.path = programs + "tolm_service";
    EXPECT_THAT(Program(run).run().out, HasSubstr("requests served: 1\n"));
    EXPECT_TRUE(until([&] { return folder_contents(own) == files_of_service(); }));
}

TEST_F(OddPlace, AUserWithoutAnEntryInTheDatabaseHasAServiceToo)
{
    const std::string own = std::to_string(::getuid()) + ".uquarndiffmrg";
    Invocation nameless = service();
    shim(nameless, {{"SHIM_FAIL", "getpwuid:*:2"}});
    Program by_number(nameless);
    by_number.start();
    ASSERT_TRUE(until([&] { return scratch.listing("tmp/" + own).size() == 4; }));
    Invocation run = launcher({"a", "b"});
    shim_launcher(run, {{"SHIM_FAIL", "getpwuid:*:2"}});

    EXPECT_EQ(Program(run).run(), success);

    EXPECT_TRUE(until([&] { return scratch.listing("tmp/" + own) == files_of_service(); }));
}

// A disk that takes no byte more, but names.
TEST_F(OddPlace, AServiceOnAFullDiskServesAndHasNoLog)
{
    Invocation full = service();
    full.path = "/bin/sh";
    full.ignored_signals = {SIGXFSZ};
    full.arguments = {"-c", "ulimit -f 0; exec \"$0\" --foreground", programs + "tolm_service"};
    Program on_full_disk(full);
    on_full_disk.start();
    ASSERT_TRUE(until([&] { return lock_holder() == on_full_disk.pid(); }));

    EXPECT_EQ(launch({"a", "b"}), success);
    EXPECT_EQ(launch({"a", "bad"}), silent_failure);

    EXPECT_EQ(service_log(), "");
    EXPECT_EQ(status().substr(0, status().find(',')), "tolm_service " QUARNFOLD_VERSION);
}

// A home on a disk that stands still, or in a network that is gone.
TEST_F(OddPlace, AContributorThatTakesLongToOpenHoldsUpNobodyElse)
{
    start_service();
    const Fifo gate(scratch / "gate");
    Invocation slow = launcher({scratch / "bad", "a"});
    shim_launcher(slow, {{"SHIM_GATE", "open@/bad:1:" + gate.path()}});
    Program waiting(slow);
    waiting.start();
    ASSERT_TRUE(until([&] {
        return fs::exists(scratch / "shim.log") && shim_record().find("/bad") != std::string::npos;
    }));

    EXPECT_EQ(launch({"a", "b"}), success);

    EXPECT_TRUE(waiting.is_running());
    EXPECT_THAT(shim_record(), Not(HasSubstr("alarm"))); // no time limit runs
    EXPECT_TRUE(until([this] { return scratch.user_listing() == files_of_service(); }));
    gate.put("\n");
    EXPECT_EQ(waiting.wait(), silent_failure);
}

TEST_F(OddPlace, AViewerThatTakesLongToStartHoldsUpItsOwnLauncherOnly)
{
    start_service();
    const Fifo gate(scratch / "gate");
    Program waiting(launcher({"a", "b"}, ":starts-late"));
    waiting.start();
    ASSERT_TRUE(until([this] { return viewers_on(":starts-late").size() == 1; }));

    EXPECT_EQ(launch({"a", "b"}), success);

    EXPECT_TRUE(waiting.is_running());
    gate.put("\n");
    EXPECT_EQ(waiting.wait(), success);
}

} // namespace
