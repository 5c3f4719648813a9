#include "platform/imsg.h"

#include "platform/catalogue.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

namespace
{

struct Redirection {
    imsg_output_callback callback = nullptr;
    void* context = nullptr;
};

struct FreeMemory {
    void operator()(char* text) const { std::free(text); }
};

const char* app_name = "";

Redirection redirected_out;
Redirection redirected_err;

/** Past the C library's buffers: a piece is on the console when the call returns. */
int show(int console, const Redirection& redirection, std::string&& text)
{
    if (redirection.callback != nullptr)
        redirection.callback(redirection.context, text.data());
    else if (::write(console, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
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

int show_message(const imsg_table& table, int position)
{
    if (const auto text = message_text(table, position))
        return show(STDERR_FILENO, redirected_err, *text + "\n");
    std::string complaint(app_name);
    complaint.append(": no message at position ").append(std::to_string(position)).append("\n");
    show(STDERR_FILENO, redirected_err, std::move(complaint));
    return -1;
}

// The format arrives as data: it is what this interface is for.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
std::optional<std::string> formatted(const char* format, std::va_list arguments)
{
    char* text = nullptr;
    const int length = ::vasprintf(&text, format, arguments);
    if (length < 0)
        return std::nullopt;
    const std::unique_ptr<char, FreeMemory> owner(text);
    return std::string(text, static_cast<std::size_t>(length));
}

int format_into(char* buffer, const char* format, std::va_list arguments)
{
    return std::vsprintf(buffer, format, arguments);
}
#pragma GCC diagnostic pop

} // namespace

// NOLINTNEXTLINE(readability-non-const-parameter): the interface is without const
void imsg_set_app_name(char* name)
{
    app_name = name;
}

int imsg_print(int kind, const void* source, int position, ...)
{
    if (kind == IMSG_ERROR)
        return show_message(*static_cast<const imsg_table*>(source), position);
    if (kind != IMSG_LITERAL)
        return -1;
    std::va_list arguments;
    va_start(arguments, position);
    auto text = formatted(static_cast<const char*>(source), arguments);
    va_end(arguments);
    return text ? show(STDOUT_FILENO, redirected_out, std::move(*text)) : -1;
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
