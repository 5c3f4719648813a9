#include "support/version_line.h"

#include "platform/imsg.h"

namespace
{

constexpr const char* format = "%-*s %s (%s)\n";
constexpr int name_width = 33;
constexpr const char* name = "uquarndiffmrg";
constexpr const char* version = "7.1.1.4";
constexpr const char* build_stamp = "Tue Nov 9 21:08:13 2010";

} // namespace

int uquarndiffmrg_print_verid()
{
    return imsg_print(IMSG_LITERAL, format, IMSG_LITERAL_POSITION, name_width, name, version,
                      build_stamp);
}

int uquarndiffmrg_sprintf_verid(char* buffer)
{
    return imsg_sprintf(buffer, format, IMSG_LITERAL_POSITION, name_width, name, version,
                        build_stamp);
}
