// What the service does when its FIFO or directory is taken away.
#include "protocol/wire_names.h"
#include "tests/service/service_process.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

class DirectoryLoss : public ServiceProcess
{
  protected:
    DirectoryLoss() { start_service(); }

    fs::path rendezvous() const { return fs::path(scratch.user_directory()) / rendezvous_pipe; }
};

TEST_F(DirectoryLoss, ARemovedRendezvousIsMadeAnew)
{
    fs::remove(rendezvous());

    EXPECT_TRUE(until([this] { return fs::is_fifo(rendezvous()); }));
    pass_through_service();
    EXPECT_EQ(lock_holder(), running_service.pid());
    EXPECT_THAT(service_log(), HasSubstr(" the rendezvous FIFO had been removed"));
}

TEST_F(DirectoryLoss, ARendezvousReplacedBySomethingElseEndsTheService)
{
    fs::rename(rendezvous(), scratch / "elsewhere");
    fs::copy_file(scratch / "a", rendezvous());

    EXPECT_EQ(running_service.wait(), success);
    EXPECT_THAT(service_log(), HasSubstr("launcher_wrapper_pipe is no FIFO of this user"));
    EXPECT_EQ(file_contents(rendezvous()), "hello\n");
}

TEST_F(DirectoryLoss, TheDirectorysRemovalEndsTheServiceAndDoesNotFail)
{
    fs::remove_all(scratch.user_directory());

    EXPECT_EQ(running_service.wait(), success);
    EXPECT_FALSE(fs::exists(scratch.user_directory()));
}

TEST_F(DirectoryLoss, TheDirectorysMoveEndsTheService)
{
    fs::rename(scratch.user_directory(), scratch / "elsewhere");

    EXPECT_EQ(running_service.wait(), success);
}

} // namespace
