#include "tests/viewer/core/c_library_check.h"

#include <array>
#include <cerrno>
#include <system_error>

CLibraryCheck::CLibraryCheck(const char* encoding) : converter(::iconv_open("UTF-32LE", encoding))
{
    // iconv_open answers (iconv_t)-1 for "none"
    if (reinterpret_cast<std::intptr_t>(converter) == -1)
        throw std::system_error(errno, std::generic_category(), encoding);
}

CLibraryCheck::~CLibraryCheck()
{
    ::iconv_close(converter);
}

bool CLibraryCheck::feed(std::string_view bytes)
{
    unfinished += bytes;
    char* input = unfinished.data();
    std::size_t left = unfinished.size();
    std::array<char, 16384> discarded{};
    int error = E2BIG;
    while (left > 0 && error == E2BIG) {
        char* output = discarded.data();
        std::size_t room = discarded.size();
        const bool done =
            ::iconv(converter, &input, &left, &output, &room) != static_cast<std::size_t>(-1);
        error = done ? 0 : errno;
    }
    checked += unfinished.size() - left;
    unfinished.erase(0, unfinished.size() - left);
    return error != EILSEQ;
}
