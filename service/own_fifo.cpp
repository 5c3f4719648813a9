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

bool is_own_fifo(const FileStatus& entry)
{
    static const uid_t own_user = ::geteuid();
    return S_ISFIFO(entry.st_mode) && entry.st_uid == own_user;
}

} // namespace

Descriptor open_own_fifo(int directory, const std::string& name, int access)
{
    Descriptor fifo(
        ::openat(directory, name.c_str(), access | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    FileStatus entry{};
    if (!fifo || ::fstat(fifo.get(), &entry) != 0)
        fail(errno, name);
    if (!is_own_fifo(entry))
        fail(EPERM, name + " is no FIFO of this user");
    return fifo;
}

bool is_own_fifo(int directory, const std::string& name)
{
    FileStatus entry{};
    return ::fstatat(directory, name.c_str(), &entry, AT_SYMLINK_NOFOLLOW) == 0 &&
           is_own_fifo(entry);
}
