#include "protocol/reply.h"

#include <string_view>

bool find_return_code(const char* text)
{
    if (text == nullptr)
        return false;
    const std::string_view reply = text;
    const std::size_t tag = reply.find("<boolean>");
    if (tag == std::string_view::npos)
        return false;
    constexpr std::size_t span = 20; // the tag itself and 11 characters after it
    return reply.substr(tag, span).find('1') != std::string_view::npos;
}
