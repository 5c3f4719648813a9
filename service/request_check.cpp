#include "service/request_check.h"

#include "cmdline/encodings.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace
{

constexpr std::size_t slice_size = 65536;

} // namespace

std::string path_for(pid_t launcher, const std::string& path)
{
    return path.starts_with('/') ? path : "/proc/" + std::to_string(launcher) + "/cwd/" + path;
}

RequestCheck::RequestCheck(Request decoded, pid_t launcher_id)
    : request(std::move(decoded)), launcher(launcher_id)
{
}

std::optional<bool> RequestCheck::step()
{
    if (file)
        return read_slice() ? std::nullopt : std::optional(false);
    if (next == request.contributors.size())
        return true;
    return open_next() ? std::nullopt : std::optional(false);
}

bool RequestCheck::open_next()
{
    const std::string& path = request.contributors[next++];
    Descriptor opened(
        ::open(path_for(launcher, path).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat entry {};
    if (!opened || ::fstat(opened.get(), &entry) != 0)
        return fail(std::strerror(errno));
    if (S_ISDIR(entry.st_mode))
        return true; // it has no text of its own
    is_device = S_ISCHR(entry.st_mode);
    if (!S_ISREG(entry.st_mode) && !is_device)
        return fail("expected a file or a directory");
    try {
        check.emplace(encoding_types[request.encoding]);
    } catch (const std::system_error& error) {
        return fail(error.what());
    }
    file = std::move(opened);
    return true;
}

bool RequestCheck::read_slice()
{
    std::array<char, slice_size> slice{};
    const ssize_t length = ::read(file.get(), slice.data(), slice.size());
    if (length < 0)
        return fail(std::strerror(errno));
    const bool ended = length == 0;
    if (is_device && !ended) // only the null device is a file, an empty one
        return fail("expected a file or a directory");
    const bool valid =
        ended ? check->at_end() : check->feed({slice.data(), static_cast<std::size_t>(length)});
    if (!valid)
        return fail("offset " + std::to_string(check->valid_bytes()) + ": expected " +
                    (ended ? "the rest of a " : "a valid ") + encoding_types[request.encoding] +
                    " character");
    if (ended)
        file = Descriptor();
    return true;
}

bool RequestCheck::fail(const std::string& reason)
{
    why = request.contributors[next - 1] + ": " + reason;
    return false;
}
