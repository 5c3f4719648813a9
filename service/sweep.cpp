#include "service/sweep.h"

#include "protocol/wire_names.h"
#include "service/announcement.h"
#include "service/process.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/stat.h>

namespace
{

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

bool is_left_over(int directory, const std::string& name)
{
    auto launcher = launcher_of(name, request_pipe);
    if (!launcher)
        launcher = launcher_of(name, response_pipe);
    struct stat entry {};
    return launcher && ::fstatat(directory, name.c_str(), &entry, AT_SYMLINK_NOFOLLOW) == 0 &&
           !lives_since(*launcher, entry.st_mtim);
}

} // namespace

void sweep(const UserDirectory& directory)
{
    Descriptor folder(::openat(directory.descriptor(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::unique_ptr<DIR, CloseFolder> entries(::fdopendir(folder.get()));
    if (!entries)
        return;
    folder.release(); // the entries own it now
    while (const dirent* entry = ::readdir(entries.get()))
        if (is_left_over(directory.descriptor(), entry->d_name))
            directory.remove_fifo(entry->d_name);
}
