#include "viewer/core/output_file.h"

#include "service/descriptor.h"
#include "support/joined.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using Reason = std::optional<std::string>;

Reason failed(std::string_view what)
{
    return joined({what, ": ", std::strerror(errno)});
}

std::string folder_of(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/** The file that a path means, through symbolic links, also where it is not there yet. Nothing, and
    errno, when there are too many links. */
std::optional<std::string> linked_file(std::string path)
{
    constexpr int most_links = 40; // the kernel's own limit
    for (int links = 0; links <= most_links; ++links) {
        std::error_code no_link;
        const std::string target = std::filesystem::read_symlink(path, no_link);
        if (no_link)
            return path;
        path = target.starts_with('/') ? target : joined({folder_of(path), target});
    }
    errno = ELOOP;
    return std::nullopt;
}

/** A file that goes again, unless it took its final name. */
class NewFile
{
  public:
    explicit NewFile(const std::string& folder)
        : name(folder + ".quarnview-XXXXXX"), file(::mkostemp(name.data(), O_CLOEXEC))
    {
    }
    ~NewFile()
    {
        if (file)
            ::unlink(name.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    NewFile(NewFile&&) = delete;
    NewFile& operator=(NewFile&&) = delete;

    bool is_made() const { return static_cast<bool>(file); }
    int descriptor() const { return file.get(); }

    bool write(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t count = ::write(file.get(), bytes.data(), bytes.size());
            if (count < 0 && errno != EINTR)
                return false;
            bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
        }
        return true;
    }

    bool take_name(const std::string& path)
    {
        if (::rename(name.c_str(), path.c_str()) != 0)
            return false;
        file = Descriptor();
        return true;
    }

  private:
    std::string name;
    Descriptor file;
};

/** Why the old file cannot be replaced. */
Reason refusal(const std::string& path, const struct stat& old)
{
    errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
    if (S_ISDIR(old.st_mode))
        return failed(path);
    if (!S_ISREG(old.st_mode))
        return joined({path, ": not a regular file"});
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
        return failed(path); // replacing it would need no right to write it, and would surprise
    return std::nullopt;
}

/** The owner before the mode: a change of owner may clear bits of it. */
bool keep_owner(int file, const struct stat& old)
{
    struct stat now {};
    if (::fstat(file, &now) != 0)
        return false;
    return (now.st_uid == old.st_uid && now.st_gid == old.st_gid) ||
           ::fchown(file, old.st_uid, old.st_gid) == 0;
}

/** The new name is on the disk, too, where the file system can promise that. */
void sync_folder(const std::string& folder)
{
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened)
        ::fsync(opened.get());
}

Reason replace(const std::string& path, std::string_view bytes, const struct stat* old, mode_t mode)
{
    const std::string folder = folder_of(path);
    NewFile file(folder);
    if (!file.is_made())
        return failed(joined({"cannot make a file in ", folder}));
    if (old != nullptr && !keep_owner(file.descriptor(), *old))
        return failed(joined({"cannot keep the owner of ", path}));
    if (::fchmod(file.descriptor(), mode) != 0)
        return failed(joined({"cannot set the mode of ", path}));
    if (!file.write(bytes) || ::fsync(file.descriptor()) != 0)
        return failed(joined({"cannot write to ", folder}));
    if (!file.take_name(path))
        return failed(path);
    sync_folder(folder);
    return std::nullopt;
}

} // namespace

std::optional<std::string> write_output(const std::string& path, std::string_view bytes,
                                        mode_t umask)
{
    constexpr mode_t all_modes = 07777;
    constexpr mode_t new_mode = 0666;
    const auto target = linked_file(path);
    if (!target)
        return failed(path);
    struct stat old {};
    if (::lstat(target->c_str(), &old) == 0) {
        const Reason reason = refusal(*target, old);
        return reason ? reason : replace(*target, bytes, &old, old.st_mode & all_modes);
    }
    return errno == ENOENT ? replace(*target, bytes, nullptr, new_mode & ~umask) : failed(*target);
}
