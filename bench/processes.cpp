#include "bench/processes.h"

#include "protocol/wire_names.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <initializer_list>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int /*signal*/)
{
    interrupted = 1;
}

[[noreturn]] void fail(const std::string& what)
{
    throw std::runtime_error(what);
}

[[noreturn]] void fail_by_errno(const std::string& what)
{
    fail(what + ": " + std::strerror(errno));
}

void pause_for(std::chrono::milliseconds time)
{
    if (interrupted != 0)
        fail("interrupted");
    ::poll(nullptr, 0, static_cast<int>(time.count()));
}

/** 0 while nobody holds the lock on the pid file. */
pid_t lock_holder(const std::string& pid_file)
{
    const int file = ::open(pid_file.c_str(), O_RDWR | O_CLOEXEC);
    if (file < 0)
        return 0;
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    const bool is_held = ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type == F_WRLCK;
    ::close(file);
    return is_held ? lock.l_pid : 0;
}

pid_t spawn(const Scratch& scratch, const Words& words,
            const posix_spawn_file_actions_t* streams = nullptr,
            const posix_spawnattr_t* attributes = nullptr)
{
    if (::setenv("TMPDIR", (scratch / "tmp").c_str(), 1) != 0)
        fail_by_errno("TMPDIR");
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string& word : words)
        pointers.push_back(const_cast<char*>(word.c_str())); // the interface's, which changes none
    pointers.push_back(nullptr);
    pid_t child = 0;
    errno = ::posix_spawn(&child, pointers[0], streams, attributes, pointers.data(), environ);
    if (errno != 0)
        fail_by_errno(words[0]);
    return child;
}

/** Lets a program print nothing. */
class Silence
{
  public:
    explicit Silence(std::initializer_list<int> descriptors)
    {
        ::posix_spawn_file_actions_init(&actions);
        for (const int descriptor : descriptors)
            ::posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_WRONLY, 0);
    }
    ~Silence() { ::posix_spawn_file_actions_destroy(&actions); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    Silence(Silence&&) = delete;
    Silence& operator=(Silence&&) = delete;

    const posix_spawn_file_actions_t* get() const { return &actions; }

  private:
    posix_spawn_file_actions_t actions{};
};

std::chrono::nanoseconds processor_time(pid_t process)
{
    clockid_t clock = 0;
    timespec time{};
    if (::clock_getcpuclockid(process, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        fail("the service has gone");
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

void catch_interruptions()
{
    struct sigaction action {};
    action.sa_handler = interrupt; // without SA_RESTART: a wait ends with it
    for (const int number : {SIGHUP, SIGINT, SIGTERM})
        ::sigaction(number, &action, nullptr);
}

pid_t start(const Scratch& scratch, const Words& words)
{
    return spawn(scratch, words);
}

pid_t start_session(const Scratch& scratch, const Words& words)
{
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    const Silence silence{STDOUT_FILENO, STDERR_FILENO};
    const pid_t leader = spawn(scratch, words, silence.get(), &attributes);
    ::posix_spawnattr_destroy(&attributes);
    return leader;
}

pid_t wait_for_success(pid_t expected)
{
    int status = 0;
    const pid_t child = ::waitpid(expected, &status, 0);
    if (child < 0 || interrupted != 0)
        fail("interrupted");
    if (status != 0)
        fail("a launcher, or the service, did not end with 0");
    return child;
}

bool ends_within(pid_t child, std::chrono::milliseconds time)
{
    const int end = static_cast<int>(::syscall(SYS_pidfd_open, child, 0));
    pollfd entry{end, POLLIN, 0};
    const int ready = ::poll(&entry, 1, static_cast<int>(time.count()));
    ::close(end);
    if (end < 0 || ready < 0)
        fail_by_errno("waiting for a process");
    return ready > 0;
}

Words service_beside(const std::string& launcher)
{
    const std::string programs = launcher.substr(0, launcher.rfind('/'));
    return {programs + "/tolm_service", programs + "/../Kelvanport"};
}

pid_t start_service(const Scratch& scratch, const Words& words)
{
    scratch.make_user_directory();
    const Silence silence{STDOUT_FILENO};
    spawn(scratch, words, silence.get());
    return wait_for_service(scratch);
}

pid_t wait_for_service(const Scratch& scratch)
{
    constexpr int attempts = 10'000;
    const std::string pid_file = scratch.user_directory() + "/" + service_pid_file;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (const pid_t service = lock_holder(pid_file))
            return service;
        pause_for(std::chrono::milliseconds(1));
    }
    fail("no service has started");
}

void end_service(pid_t service)
{
    ::kill(service, SIGTERM);
    if (!ends_within(service, std::chrono::seconds(2)))
        ::kill(service, SIGKILL);
    if (::waitpid(service, nullptr, 0) != service)
        fail_by_errno("waiting for the service");
}

std::chrono::nanoseconds processor_time_at_rest(pid_t process)
{
    auto time = processor_time(process);
    for (;;) {
        pause_for(std::chrono::milliseconds(20));
        const auto later = processor_time(process);
        if (later == time)
            return time;
        time = later;
    }
}
