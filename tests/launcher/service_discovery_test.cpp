#include "launcher/service_discovery.h"

#include "platform/ks.h"
#include "support/temp_directory.h"
#include "tests/harness/child_process.h"
#include "tests/harness/process_state.h"
#include "tests/harness/scratch.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

bool lock(const std::string& path, off_t start, off_t length)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    whole.l_start = start;
    whole.l_len = length;
    return ::fcntl(descriptor, F_SETLK, &whole) == 0;
}

/** A child that holds a write lock as the service does, from the constructor's end on until its
    life ends with this object's. */
class LockHolder
{
  public:
    explicit LockHolder(const std::string& path, off_t start = 0, off_t length = 0)
    {
        std::array<int, 2> ready{};
        std::array<int, 2> end{};
        if (::pipe2(ready.data(), O_CLOEXEC) != 0 || ::pipe2(end.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("pipe2 failed");
        child = ::fork();
        if (child == 0) {
            ::close(end[1]);
            hold(path, start, length, ready[1], end[0]);
        }
        ::close(ready[1]);
        ::close(end[0]);
        until_end = end[1];
        char locked = 'n';
        if (::read(ready[0], &locked, 1) != 1 || locked != 'y')
            throw std::runtime_error("the lock holder has no lock");
        ::close(ready[0]);
    }

    ~LockHolder()
    {
        ::close(until_end);
        ::waitpid(child, nullptr, 0);
    }
    LockHolder(const LockHolder&) = delete;
    LockHolder& operator=(const LockHolder&) = delete;
    LockHolder(LockHolder&&) = delete;
    LockHolder& operator=(LockHolder&&) = delete;

  private:
    [[noreturn]] static void hold(const std::string& path, off_t start, off_t length, int ready,
                                  int until)
    {
        const char answer = lock(path, start, length) ? 'y' : 'n';
        char none = 0;
        const bool told = ::write(ready, &answer, 1) == 1;
        ::_exit(told && ::read(until, &none, 1) == 0 ? 0 : 1);
    }

    pid_t child = -1;
    int until_end = -1;
};

class ServiceDiscovery : public testing::Test
{
  protected:
    Scratch scratch;
    std::string directory = scratch.make_user_directory();
    std::string pid_file = directory + "/tolm_service.pid";

    void SetUp() override { modified_temp_directory = directory; }

    void expect_verdict(bool running)
    {
        EXPECT_EQ(tolm_service_process_check(), running);
        EXPECT_EQ(proc_exists(1), running);
    }
};

TEST_F(ServiceDiscovery, AMissingPidFileMeansNoServiceAndIsNotCreated)
{
    expect_verdict(false);
    EXPECT_TRUE(fs::is_empty(directory));
}

TEST_F(ServiceDiscovery, AMissingDirectoryMeansNoService)
{
    modified_temp_directory = scratch / "missing";
    expect_verdict(false);
}

TEST_F(ServiceDiscovery, ALinkLoopInThePidFilesPlaceMeansNoService)
{
    fs::create_symlink("tolm_service.pid", pid_file);
    expect_verdict(false);
}

// A directory stands for a file that can be opened for reading, but for nobody for writing.
TEST_F(ServiceDiscovery, WhatCanBeReadButNotWrittenMeansNoService)
{
    fs::create_directory(pid_file);
    expect_verdict(false);
}

TEST_F(ServiceDiscovery, ALockedPidFileMeansARunningService)
{
    write_file(pid_file, std::to_string(::getpid()) + "\n");
    const LockHolder service(pid_file);
    expect_verdict(true);
}

TEST_F(ServiceDiscovery, AStalePidFileMeansNoService)
{
    write_file(pid_file, "4711\n");
    expect_verdict(false);
}

TEST_F(ServiceDiscovery, AnUnlockedPidFileOfALiveProcessMeansNoService)
{
    write_file(pid_file, std::to_string(::getpid()) + "\n");
    expect_verdict(false);
}

TEST_F(ServiceDiscovery, TheLocksEndIsTheServicesEnd)
{
    write_file(pid_file, "1\n");
    {
        const LockHolder service(pid_file);
        expect_verdict(true);
    }
    expect_verdict(false);
}

TEST_F(ServiceDiscovery, TheLockAloneDecidesWhateverTheFileHolds)
{
    for (const char* text : {"", "no number", "99999999999999999999", "-1", "0"}) {
        write_file(pid_file, text);
        expect_verdict(false);
        const LockHolder service(pid_file);
        expect_verdict(true);
    }
}

TEST_F(ServiceDiscovery, ALockOnAnyByteOfTheFileCounts)
{
    write_file(pid_file, "1\n");
    const LockHolder service(pid_file, 1000, 1);
    expect_verdict(true);
}

TEST_F(ServiceDiscovery, TheProcessIdPlaysNoPart)
{
    write_file(pid_file, "1\n");
    const LockHolder service(pid_file);
    for (const int process_id : {-1, 0, 1, 4711, ::getpid()})
        EXPECT_TRUE(proc_exists(process_id)) << process_id;
}

TEST_F(ServiceDiscovery, LeavesThePidFileAsItIs)
{
    write_file(pid_file, "4711\n");
    expect_verdict(false);
    EXPECT_EQ(file_contents(pid_file), "4711\n");
}

TEST_F(ServiceDiscovery, KeepsNoLockAndNoDescriptor)
{
    write_file(pid_file, "4711\n");
    const int before = open_descriptors();

    expect_verdict(false);

    EXPECT_EQ(open_descriptors(), before);
    EXPECT_EQ(run_in_child([&] { return lock(pid_file, 0, 0) ? 0 : 1; }), 0);
}

TEST_F(ServiceDiscovery, KeepsNoDescriptorBesideARunningService)
{
    write_file(pid_file, "4711\n");
    const LockHolder service(pid_file);
    const int before = open_descriptors();

    expect_verdict(true);

    EXPECT_EQ(open_descriptors(), before);
}

TEST(ProductPath, IsTheServicesProgramBelowTheProductDirectory)
{
    std::array<char, 4096> directory{};
    product_path = "/earlier";

    set_ks_product_path();

    EXPECT_EQ(product_path, std::string(ks_product_dir(directory.data(), 0)) + "/bin/tolm_service");
}

} // namespace
