#include "service/descriptor.h"
#include "viewer/core/text.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace
{

/** Bytes. Beyond it a file that has no text, such as a disk's image, would take all memory. */
constexpr std::size_t largest_file = std::size_t{1} << 30U;

TextProblem unreadable(int error)
{
    return {.fault = TextFault::unreadable, .system_error = error};
}

bool is_null_device(const struct stat& entry)
{
    return S_ISCHR(entry.st_mode) && entry.st_rdev == makedev(1, 3);
}

/** Reads on from `length` bytes of `bytes`, and makes room for more where that is short. The count
    of bytes, 0 at the end, -1 after a failure. */
ssize_t read_on(int file, std::string& bytes, std::size_t length)
{
    constexpr std::size_t least_room = 65536;
    if (bytes.size() == length)
        bytes.resize(length + std::max(length, least_room));
    ssize_t count = -1;
    do
        count = ::read(file, bytes.data() + length, bytes.size() - length);
    while (count < 0 && errno == EINTR);
    return count;
}

/** The size is only where reading starts from: a file may grow, and some files have none. */
std::variant<std::string, TextProblem> read_bytes(int file, off_t expected_size)
{
    std::string bytes(static_cast<std::size_t>(expected_size) + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t count = read_on(file, bytes, length);
        if (count < 0)
            return unreadable(errno);
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
        if (length > largest_file)
            return unreadable(EFBIG);
    }
    bytes.resize(length);
    return bytes;
}

Descriptor open_file(const std::string& path)
{
    constexpr int how = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC; // waits for no FIFO
    return Descriptor(::open(path.c_str(), how));
}

} // namespace

TextOrProblem read_text(const std::string& path, int encoding)
{
    const Descriptor file = open_file(path);
    struct stat entry {};
    if (!file && errno == ENXIO)
        return TextProblem{.fault = TextFault::not_a_file}; // a socket
    if (!file || ::fstat(file.get(), &entry) != 0)
        return unreadable(errno);
    if (S_ISDIR(entry.st_mode))
        return TextProblem{.fault = TextFault::is_directory};
    if (is_null_device(entry))
        return Text(std::string(), encoding, false);
    if (!S_ISREG(entry.st_mode))
        return TextProblem{.fault = TextFault::not_a_file};
    if (static_cast<std::uintmax_t>(entry.st_size) > largest_file)
        return unreadable(EFBIG);
    auto bytes = read_bytes(file.get(), entry.st_size);
    if (auto* problem = std::get_if<TextProblem>(&bytes))
        return *problem;
    return decode_text(std::move(std::get<std::string>(bytes)), encoding);
}

std::optional<Text> read_beginning(const std::string& path, int encoding)
{
    constexpr std::size_t most = 65536; // bytes: more lines than a screen has
    const Descriptor file = open_file(path);
    struct stat entry {};
    if (!file || ::fstat(file.get(), &entry) != 0 || !S_ISREG(entry.st_mode))
        return std::nullopt;
    std::string bytes(most, '\0');
    const ssize_t count = ::read(file.get(), bytes.data(), bytes.size());
    if (count <= 0)
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(count));
    return decode_beginning(std::move(bytes), encoding);
}
