#include "protocol/pipe_exchange.h"
#include "protocol/wire_names.h"
#include "support/temp_directory.h"
#include "tests/harness/child_process.h"
#include "tests/harness/scratch.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace
{

constexpr int success = 0;
constexpr int failure = 1;
constexpr int slept = 2;

} // namespace

// A launcher that slept would have taken an opened rendezvous for a failed one.
unsigned sleep(unsigned /*seconds*/)
{
    ::_exit(slept);
}

namespace
{

/** Plays the service from a thread beside send_data_unix. The rendezvous FIFO is open and full from
    the start: the launcher opens it at once and then stands in its write, until the service has
    made descriptor `freed` the lowest free one. */
class ServiceBeside
{
  public:
    ServiceBeside(std::string folder, int freed_descriptor)
        : directory(std::move(folder)), freed(freed_descriptor)
    {
        const std::string path = directory + "/" + rendezvous_pipe;
        ::mkfifo(path.c_str(), 0600);
        rendezvous = ::open(path.c_str(), O_RDWR | O_NONBLOCK);
        const char filler = '.';
        while (::write(rendezvous, &filler, 1) == 1)
            ++filled;
    }

    void serve() const
    {
        const std::string id = std::to_string(::getpid());
        const std::string request = directory + "/" + request_pipe + id;
        const std::string response = directory + "/" + response_pipe + id;
        struct stat found {};
        while (::stat(response.c_str(), &found) != 0)
            std::this_thread::yield();
        ::close(freed);
        drain();
        const int from = ::open(request.c_str(), O_RDONLY);
        const int to = ::open(response.c_str(), O_WRONLY);
        char text[256];
        if (::read(from, text, sizeof text) > 0)
            static_cast<void>(::write(to, "<boolean>1</boolean>", 20) == 20);
        ::close(from);
        ::close(to);
    }

  private:
    void drain() const
    {
        char byte = '.';
        for (int left = filled; left > 0;)
            left -= ::read(rendezvous, &byte, 1) == 1 ? 1 : 0;
    }

    std::string directory;
    int freed;
    int rendezvous = -1;
    int filled = 0;
};

class DescriptorZero : public testing::Test
{
  protected:
    Scratch scratch;

    void SetUp() override { modified_temp_directory = scratch.path(); }
};

int exchange_with(const ServiceBeside& service)
{
    std::thread beside([&service] { service.serve(); });
    const bool answered = send_data_unix("request");
    if (!answered)
        ::_exit(failure); // the service's side may wait for ever now
    beside.join();
    return success;
}

TEST_F(DescriptorZero, IsAValidRendezvous)
{
    const int unused = 900;
    const int status = run_in_child([&] {
        const ServiceBeside service(scratch.path(), unused);
        ::close(STDIN_FILENO);
        return exchange_with(service);
    });
    EXPECT_EQ(status, success);
}

TEST_F(DescriptorZero, IsAValidRequestPipe)
{
    const int status = run_in_child([&] {
        const ServiceBeside service(scratch.path(), STDIN_FILENO);
        return exchange_with(service);
    });
    EXPECT_EQ(status, success);
}

} // namespace
