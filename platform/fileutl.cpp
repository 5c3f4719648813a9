#include "platform/fileutl.h"

#include <cstdlib>
#include <string_view>

namespace
{

std::string_view configured_directory()
{
    const char* configured = std::getenv("TMPDIR");
    return configured != nullptr && *configured != '\0' ? configured : "/tmp";
}

} // namespace

int fileutl_get_tmpdir(int /*kind*/, char* buffer, int size, int /*options*/)
{
    std::string_view directory = configured_directory();
    while (directory.size() > 1 && directory.ends_with('/'))
        directory.remove_suffix(1);
    const bool fits = size > 0 && directory.size() < static_cast<std::size_t>(size);
    if (fits)
        buffer[directory.copy(buffer, directory.size())] = '\0';
    else if (size > 0)
        *buffer = '\0';
    return fits ? 0 : -1;
}
