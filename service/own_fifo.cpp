#include "service/own_fifo.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace
{

using FileStatus = struct stat;

[[noreturn]] void fail(int error, const std::string& what)
{
    throw std::system_error(error, std::generic_category(), what);
}

void check(const FileStatus& entry, const std::string& name)
{
    if (!S_ISFIFO(entry.st_mode) || entry.st_uid != ::geteuid())
        fail(EPERM, name + " is no FIFO of this user");
}

} // namespace

Descriptor open_own_fifo(int directory, const std::string& name, int access)
{
    Descriptor fifo(
        ::openat(directory, name.c_str(), access | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    FileStatus entry{};
    if (!fifo || ::fstat(fifo.get(), &entry) != 0)
        fail(errno, name);
    check(entry, name);
    return fifo;
}

void expect_own_fifo(int directory, const std::string& name)
{
    FileStatus entry{};
    if (::fstatat(directory, name.c_str(), &entry, AT_SYMLINK_NOFOLLOW) != 0)
        fail(errno, name);
    check(entry, name);
}
