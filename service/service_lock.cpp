#include "service/service_lock.h"

#include "protocol/wire_names.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace
{

[[noreturn]] void fail()
{
    throw std::system_error(errno, std::generic_category(), service_pid_file);
}

Descriptor open_pid_file(int directory)
{
    constexpr int how = O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC;
    Descriptor file(::openat(directory, service_pid_file, how, 0600));
    // A launcher takes a read-only pid file for "no service" every time, so it is put right.
    if (!file && errno == EACCES && ::fchmodat(directory, service_pid_file, 0600, 0) == 0)
        file = Descriptor(::openat(directory, service_pid_file, how, 0600));
    if (!file)
        fail();
    return file;
}

bool lock_whole_file(int file)
{
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return ::fcntl(file, F_SETLK, &lock) == 0;
}

/** A launcher that tests for a service holds the lock for a few microseconds: only a lock that
   lasts means another service. */
bool lock_patiently(int file)
{
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (lock_whole_file(file))
            return true;
        ::poll(nullptr, 0, 1);
    }
    return false;
}

} // namespace

std::optional<ServiceLock> ServiceLock::take(int directory)
{
    Descriptor file = open_pid_file(directory);
    if (!lock_patiently(file.get()))
        return std::nullopt;
    const std::string id = std::to_string(::getpid()) + "\n";
    if (::ftruncate(file.get(), 0) != 0)
        fail();
    // On a full disk the number is missing; it is for people, and the lock counts without it.
    [[maybe_unused]] const ssize_t written = ::pwrite(file.get(), id.data(), id.size(), 0);
    return ServiceLock(std::move(file));
}

std::optional<pid_t> ServiceLock::holder(int directory)
{
    const Descriptor file(::openat(directory, service_pid_file, O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    if (!file || ::fcntl(file.get(), F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK)
        return std::nullopt;
    return lock.l_pid;
}
