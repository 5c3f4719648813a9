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

std::string environment_of(pid_t process)
{
    try {
        return file_contents("/proc/" + std::to_string(process) + "/environ");
    } catch (const std::runtime_error&) {
        return {}; // it has just ended
    }
}

std::vector<pid_t> processes_of(const std::string& program, const std::string& scratch)
{
    std::vector<pid_t> found;
    for (const auto& process : fs::directory_iterator("/proc")) {
        std::error_code error;
        if (fs::read_symlink(process.path() / "exe", error) != program)
            continue;
        const pid_t id = std::stoi(process.path().filename());
        if (environment_of(id).find(scratch) != std::string::npos)
            found.push_back(id);
    }
    return found;
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

ServiceProcess::ServiceProcess(std::string product_tree)
    : programs(std::move(product_tree) + "/bin/"), running_service(service())
{
    scratch.write_file("a", "hello\n");
    scratch.write_file("b", "h\xc3\xa9llo\n");
    scratch.write_file("bad", "h\xe9llo\n");
}

Invocation ServiceProcess::service(std::vector<std::string> words) const
{
    return invocation(scratch, programs + "tolm_service", std::move(words));
}

void ServiceProcess::shim(Invocation& run, const Environment& settings) const
{
    run.environment["LD_PRELOAD"] = SHIM_LIBRARY;
    run.environment["SHIM_PROGRAM"] = "tolm_service";
    run.environment["SHIM_LOG"] = scratch / "shim.log";
    run.environment["ASAN_OPTIONS"] += ":verify_asan_link_order=0";
    for (const auto& [name, value] : settings)
        run.environment[name] = value;
}

std::string ServiceProcess::shim_record() const
{
    return file_contents(scratch / "shim.log");
}

void ServiceProcess::start_service()
{
    scratch.make_user_directory();
    running_service.start();
    ASSERT_TRUE(until([this] { return lock_holder() == running_service.pid(); }));
    ASSERT_TRUE(until([this] { return status().starts_with("tolm_service"); }));
}

std::string ServiceProcess::status() const
{
    return Program(service({"--status"})).run().out;
}

Invocation ServiceProcess::launcher(std::vector<std::string> words,
                                    const std::string& display) const
{
    Invocation run = invocation(scratch, programs + "uquarndiffmrg", std::move(words));
    run.environment["DISPLAY"] = display;
    return run;
}

Outcome ServiceProcess::launch(std::vector<std::string> words, const std::string& display) const
{
    return Program(launcher(std::move(words), display)).run();
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
    return processes_of(programs + "tolm_service", scratch.path());
}

std::vector<pid_t> ServiceProcess::viewers() const
{
    return processes_of(programs + "quarnview", scratch.path());
}

std::vector<pid_t> ServiceProcess::viewers_on(const std::string& display) const
{
    std::vector<pid_t> found = viewers();
    std::erase_if(found, [&](pid_t id) { return variable_of(id, "DISPLAY") != display; });
    return found;
}

Names ServiceProcess::files_of_service() const
{
    return {rendezvous_pipe, "tolm_service.log", service_pid_file, "tolm_service.socket"};
}

std::string ServiceProcess::service_log() const
{
    return file_contents(scratch.user_directory() + "/tolm_service.log");
}

std::string variable_of(pid_t process, const std::string& name)
{
    const std::string environment = '\0' + environment_of(process);
    const std::string prefix = '\0' + name + "=";
    const std::size_t begin = environment.find(prefix);
    if (begin == std::string::npos)
        return {};
    return environment.c_str() + begin + prefix.size();
}
