#include "platform/imsg.h"

#include "platform/catalogue.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <optional>
#include <string>

namespace
{

struct Redirection {
    imsg_output_callback callback = nullptr;
    void* context = nullptr;
};

Redirection redirected_out;
Redirection redirected_err;

int show(std::FILE* console, const Redirection& redirection, std::string text)
{
    if (redirection.callback != nullptr)
        redirection.callback(redirection.context, text.data());
    else if (std::fwrite(text.data(), 1, text.size(), console) != text.size())
        return -1;
    return static_cast<int>(text.size());
}

std::optional<std::string> message_text(const imsg_table& table, int position)
{
    if (position < 0 || position >= table.count)
        return std::nullopt;
    if (auto text = catalogue_text(table.catalogue_name, table.catalogue_id,
                                   table.catalogue_numbers[position]))
        return text;
    return table.texts[position];
}

// The format arrives as data: it is what this interface is for.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
std::optional<std::string> formatted(const char* format, std::va_list arguments)
{
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

int format_into(char* buffer, const char* format, std::va_list arguments)
{
    return std::vsprintf(buffer, format, arguments);
}
#pragma GCC diagnostic pop

} // namespace

void imsg_set_app_name(char* name)
{
    program_invocation_short_name = name;
}

int imsg_print(int kind, const void* source, int position, ...)
{
    if (kind == IMSG_ERROR) {
        const auto text = message_text(*static_cast<const imsg_table*>(source), position);
        return text ? show(stderr, redirected_err, *text + "\n") : -1;
    }
    if (kind == IMSG_LITERAL) {
        std::va_list arguments;
        va_start(arguments, position);
        auto text = formatted(static_cast<const char*>(source), arguments);
        va_end(arguments);
        return text ? show(stdout, redirected_out, std::move(*text)) : -1;
    }
    return -1;
}

int imsg_sprintf(char* buffer, const char* format, int position, ...)
{
    std::va_list arguments;
    va_start(arguments, position);
    const int length = format_into(buffer, format, arguments);
    va_end(arguments);
    return length;
}

int imsg_redirect_output(imsg_output_callback out_callback, void* out_context,
                         imsg_output_callback err_callback, void* err_context)
{
    redirected_out = {out_callback, out_context};
    redirected_err = {err_callback, err_context};
    return 0;
}
