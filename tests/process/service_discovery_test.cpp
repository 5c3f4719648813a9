// Whether the launcher takes a service for running: the lock on the pid file alone decides.
#include "tests/process/launcher_process.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace
{

const Names pid_file_only{"tolm_service.pid"};

/** A pid file that this process writes and, on demand, locks as a service does. */
class PidFile
{
  public:
    PidFile(const Scratch& scratch, const std::string& text)
        : path_(scratch.make_user_directory() + "/tolm_service.pid"),
          descriptor_(::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644))
    {
        if (::write(descriptor_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            throw std::system_error(errno, std::generic_category(), path_);
    }

    /** Gives the lock up. */
    ~PidFile() { ::close(descriptor_); }

    PidFile(const PidFile&) = delete;
    PidFile& operator=(const PidFile&) = delete;
    PidFile(PidFile&&) = delete;
    PidFile& operator=(PidFile&&) = delete;

    void lock() const
    {
        struct flock whole {};
        whole.l_type = F_WRLCK;
        whole.l_whence = SEEK_SET;
        if (::fcntl(descriptor_, F_SETLK, &whole) != 0)
            throw std::system_error(errno, std::generic_category(), path_);
    }

    void set_mode(mode_t mode) const { ::fchmod(descriptor_, mode); }

    /** Read through the one descriptor: closing another would drop the lock. */
    std::string text() const
    {
        std::string bytes(4096, '\0');
        const ssize_t length = ::pread(descriptor_, bytes.data(), bytes.size(), 0);
        return bytes.substr(0, length > 0 ? static_cast<std::size_t>(length) : 0);
    }

  private:
    std::string path_;
    int descriptor_;
};

class ServiceDiscovery : public LauncherProcess
{
  protected:
    /** Runs the launcher without words; it forks only to start a service. */
    Outcome run_observed(const Environment& settings = {})
    {
        Invocation observed = launcher();
        service.add_to(observed.environment);
        shim(observed, settings);
        return run(observed);
    }

    bool service_started() const
    {
        if (calls({"fork"}).empty())
            return false;
        service.await("ready");
        return true;
    }

    // It touches nothing that the test looks at.
    ScriptedService service{scratch, "no-pid no-fifo wait"};
};

TEST_F(ServiceDiscovery, AMissingPidFileMeansNoServiceAndIsNotMade)
{
    EXPECT_EQ(run_observed(), too_few_contributors);

    EXPECT_TRUE(service_started());
    EXPECT_EQ(calls({"fcntl"}).size(), 3U); // the standard descriptors: nothing is probed
    EXPECT_EQ(scratch.user_listing(), Names{});
}

TEST_F(ServiceDiscovery, ALockedPidFileMeansARunningService)
{
    const PidFile pid_file(scratch, "4711\n");
    pid_file.lock();

    EXPECT_EQ(run_observed(), too_few_contributors);

    EXPECT_FALSE(service_started());
    EXPECT_EQ(scratch.user_listing(), pid_file_only);
}

TEST_F(ServiceDiscovery, TheProbeIsAWriteLockOfTheWholeFileThatDoesNotWait)
{
    const PidFile pid_file(scratch, "4711\n");
    pid_file.lock();

    run_observed();

    // Type, start of file, start, length, and whether the process id is the launcher's own.
    const std::string expected = "fcntl(tolm_service.pid, F_SETLK, " + std::to_string(F_WRLCK) +
                                 ", " + std::to_string(SEEK_SET) + ", 0, 0, 1)";
    EXPECT_EQ(calls({"fcntl"}).back(), expected);
}

TEST_F(ServiceDiscovery, ALockedPidFileCountsWithoutANumberInIt)
{
    const PidFile pid_file(scratch, "no number");
    pid_file.lock();

    EXPECT_EQ(run_observed(), too_few_contributors);

    EXPECT_FALSE(service_started());
    EXPECT_EQ(pid_file.text(), "no number");
}

TEST_F(ServiceDiscovery, AnEmptyLockedPidFileCounts)
{
    const PidFile pid_file(scratch, "");
    pid_file.lock();

    EXPECT_EQ(run_observed(), too_few_contributors);

    EXPECT_FALSE(service_started());
}

TEST_F(ServiceDiscovery, AnUnlockedPidFileWithoutANumberMeansNoService)
{
    const PidFile pid_file(scratch, "no number");

    EXPECT_EQ(run_observed(), too_few_contributors);

    EXPECT_TRUE(service_started());
    EXPECT_EQ(pid_file.text(), "no number");
    EXPECT_EQ(scratch.user_listing(), pid_file_only);
}

TEST_F(ServiceDiscovery, ALiveProcessInAnUnlockedPidFileMeansNoService)
{
    const std::string own_id = std::to_string(::getpid()) + "\n";
    const PidFile pid_file(scratch, own_id);

    EXPECT_EQ(run_observed(), too_few_contributors);

    EXPECT_TRUE(service_started());
    EXPECT_EQ(pid_file.text(), own_id);
}

TEST_F(ServiceDiscovery, AReadOnlyPidFileMeansNoServiceOnEveryRunThoughItIsLocked)
{
    const PidFile pid_file(scratch, "4711\n");
    pid_file.lock();
    pid_file.set_mode(0444);

    EXPECT_EQ(run_observed(), too_few_contributors);
    EXPECT_TRUE(service_started());
    EXPECT_EQ(run_observed(), too_few_contributors);
    service.await("ready"); // the second run's

    EXPECT_EQ(pid_file.text(), "4711\n");
    EXPECT_EQ(scratch.user_listing(), pid_file_only);
}

TEST_F(ServiceDiscovery, AnUnreadablePidFileMeansNoServiceAndIsNotProbed)
{
    const PidFile pid_file(scratch, "4711\n");
    pid_file.lock();
    pid_file.set_mode(0222);

    EXPECT_EQ(run_observed(), too_few_contributors);

    EXPECT_TRUE(service_started());
    EXPECT_EQ(calls({"fcntl"}).size(), 3U); // the standard descriptors
    const Names opens = calls({"open"});
    EXPECT_EQ(std::count(opens.begin(), opens.end(), "open(tolm_service.pid, w)"), 0);
    EXPECT_EQ(scratch.user_listing(), pid_file_only);
}

TEST_F(ServiceDiscovery, ALockCallThatFailsForAnyReasonCountsAsARunningService)
{
    const PidFile pid_file(scratch, "4711\n");

    EXPECT_EQ(run_observed({{"SHIM_FAIL", "fcntl@F_SETLK:1:37"}}), too_few_contributors);

    EXPECT_FALSE(service_started());
    EXPECT_EQ(calls({"close"}).back(), "close(3 tolm_service.pid)");
}

} // namespace
