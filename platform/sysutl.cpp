#include "platform/sysutl.h"

#include <array>
#include <charconv>
#include <pwd.h>
#include <unistd.h>

const char* sysutl_myloginname()
{
    const uid_t user = ::getuid();
    if (const passwd* entry = ::getpwuid(user))
        return entry->pw_name;
    static std::array<char, 24> number{};
    *std::to_chars(number.begin(), number.end() - 1, user).ptr = '\0';
    return number.data();
}
