#include "tests/service/service_process.h"

#include "protocol/wire_names.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

bool is_service_in(const fs::path& process, const std::string& scratch)
{
    std::error_code error;
    if (fs::read_symlink(process / "exe", error) != SERVICE_PROGRAM)
        return false;
    try {
        return file_contents(process / "environ").find(scratch) != std::string::npos;
    } catch (const std::runtime_error&) {
        return false; // it has just ended
    }
}

} // namespace

bool until(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        ::poll(nullptr, 0, 1);
    }
    return true;
}

ServiceProcess::ServiceProcess() : running_service(service())
{
    scratch.write_file("a", "hello\n");
    scratch.write_file("b", "h\xc3\xa9llo\n");
    scratch.write_file("bad", "h\xe9llo\n");
}

Invocation ServiceProcess::service() const
{
    return invocation(scratch, SERVICE_PROGRAM, {"Kelvanport"});
}

void ServiceProcess::start_service()
{
    scratch.make_user_directory();
    running_service.start();
    ASSERT_TRUE(until([this] { return lock_holder() == running_service.pid(); }));
}

Invocation ServiceProcess::launcher(std::vector<std::string> words) const
{
    return invocation(scratch, PRODUCT_LAUNCHER, std::move(words));
}

Outcome ServiceProcess::launch(std::vector<std::string> words) const
{
    return Program(launcher(std::move(words))).run();
}

void ServiceProcess::pass_through_service() const
{
    EXPECT_EQ(launch({"a", "b"}), success);
}

std::optional<pid_t> ServiceProcess::lock_holder() const
{
    const std::string path = scratch.user_directory() + "/" + service_pid_file;
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (file < 0)
        return std::nullopt;
    using RecordLock = struct flock;
    RecordLock lock{};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    const bool is_locked = ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type == F_WRLCK;
    ::close(file);
    return is_locked ? std::optional(lock.l_pid) : std::nullopt;
}

std::vector<pid_t> ServiceProcess::services() const
{
    std::vector<pid_t> found;
    for (const auto& process : fs::directory_iterator("/proc"))
        if (is_service_in(process.path(), scratch.path()))
            found.push_back(std::stoi(process.path().filename()));
    return found;
}

std::string ServiceProcess::service_log() const
{
    return file_contents(scratch.user_directory() + "/tolm_service.log");
}
