// The lock call fails here without any other process: the linker prefers this program's fcntl.
#include "launcher/service_discovery.h"
#include "support/temp_directory.h"
#include "tests/harness/process_state.h"
#include "tests/harness/scratch.h"

#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

int lock_error = 0;
int lock_command = 0;
struct flock lock_asked;

} // namespace

// NOLINTNEXTLINE(cert-dcl50-cpp): the C library's function is variadic
int fcntl(int /*descriptor*/, int cmd, ...)
{
    std::va_list arguments;
    va_start(arguments, cmd);
    lock_command = cmd;
    lock_asked = *va_arg(arguments, struct flock*);
    va_end(arguments);
    errno = lock_error;
    return lock_error == 0 ? 0 : -1;
}

namespace
{

class LockFailure : public testing::Test
{
  protected:
    Scratch scratch;

    void SetUp() override
    {
        modified_temp_directory = scratch.path();
        scratch.write_file("tolm_service.pid", "1\n");
    }
};

TEST_F(LockFailure, OfAnyKindCountsAsARunningService)
{
    for (const int error : {EAGAIN, EACCES, ENOLCK, EINTR, EINVAL, EDEADLK}) {
        lock_error = error;
        EXPECT_TRUE(proc_exists(1)) << error;
        EXPECT_TRUE(tolm_service_process_check()) << error;
    }
}

TEST_F(LockFailure, LeavesNoDescriptorOpen)
{
    lock_error = ENOLCK;
    const int before = open_descriptors();
    EXPECT_TRUE(proc_exists(1));
    EXPECT_EQ(open_descriptors(), before);
}

TEST_F(LockFailure, IsOfAWriteLockOnTheWholeFileWithoutWaiting)
{
    lock_error = 0;
    EXPECT_FALSE(proc_exists(4711));
    EXPECT_EQ(lock_command, F_SETLK);
    EXPECT_EQ(lock_asked.l_type, F_WRLCK);
    EXPECT_EQ(lock_asked.l_whence, SEEK_SET);
    EXPECT_EQ(lock_asked.l_start, 0);
    EXPECT_EQ(lock_asked.l_len, 0);
    EXPECT_EQ(lock_asked.l_pid, ::getpid());
}

} // namespace
