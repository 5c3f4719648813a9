/*
 * Shows what the platform library does in a fresh process: `platform_probe VERB [ARGUMENT]`.
 */
#include "platform/imsg.h"
#include "platform/ks.h"
#include "platform/pfm.h"
#include "support/message_table.h"

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/** Writes unbuffered: what stands in the C library's buffer is the tests' subject. */
void say(const char* text)
{
    static_cast<void>(::write(STDOUT_FILENO, text, std::strlen(text)) > 0);
}

struct SaysItsEnd {
    SaysItsEnd() = default;
    ~SaysItsEnd() { say("destroyed"); }
    SaysItsEnd(const SaysItsEnd&) = delete;
    SaysItsEnd& operator=(const SaysItsEnd&) = delete;
    SaysItsEnd(SaysItsEnd&&) = delete;
    SaysItsEnd& operator=(SaysItsEnd&&) = delete;
};

int show_product_directory()
{
    std::array<char, 4096> buffer{};
    buffer.fill('#');
    const bool same = ks_product_dir(buffer.data(), 0) == buffer.data();
    say(buffer.data());
    return same ? 0 : 1;
}

void end_at_once(int status)
{
    static const SaysItsEnd object;
    std::atexit([] { say("atexit"); });
    std::printf("buffered");
    pfm_exit(status);
}

/** One bit of the result per standard stream that is open; 8 where a later file becomes one. */
int prepare_and_look()
{
    ks_system_init();
    struct stat found {};
    int open_streams = 0;
    for (int descriptor = 0; descriptor <= 2; ++descriptor)
        open_streams |= ::fstat(descriptor, &found) == 0 ? 1 << descriptor : 0;
    return open_streams | (::dup(0) <= 2 ? 8 : 0);
}

/** One bit per standard stream that is the null device after the preparation. */
int look_for_null_device()
{
    ks_system_init();
    struct stat null_device {};
    ::stat("/dev/null", &null_device);
    int null_streams = 0;
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        struct stat found {};
        const bool is_null =
            ::fstat(descriptor, &found) == 0 && found.st_rdev == null_device.st_rdev;
        null_streams |= is_null ? 1 << descriptor : 0;
    }
    return null_streams;
}

int show_message(int position)
{
    std::setlocale(LC_ALL, "");
    return imsg_print(IMSG_ERROR, &_uquarndiffmrg_uquarndiffmrg_msg_table, position) < 0 ? 1 : 0;
}

int show_literal()
{
    const int length = imsg_print(IMSG_LITERAL, "%s-%d\n", IMSG_LITERAL_POSITION, "text", 7);
    return length == 7 ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    const std::string_view verb = argc > 1 ? argv[1] : "";
    const int argument = argc > 2 ? static_cast<int>(std::strtol(argv[2], nullptr, 10)) : 0;
    if (verb == "product_dir")
        return show_product_directory();
    if (verb == "exit")
        end_at_once(argument);
    if (verb == "streams")
        return prepare_and_look();
    if (verb == "null_streams")
        return look_for_null_device();
    if (verb == "message")
        return show_message(argument);
    return verb == "literal" ? show_literal() : 2;
}
