#include "tests/service/shell_process.h"

#include "protocol/request_fragments.h"

#include <filesystem>

namespace fragments = request_fragments;

ShellProcess::ShellProcess(const std::string& product_tree, const std::string& display)
    : ServiceProcess(product_tree), run(invocation(scratch, "/bin/sh"))
{
    std::filesystem::create_directory(scratch / "checkout");
    std::filesystem::create_directory(scratch / "home");
    run.directory = scratch / "checkout";
    set("PATH", programs + ":" + run.environment["PATH"]);
    set("HOME", scratch / "home");
    set("XDG_CONFIG_HOME", scratch / "home/.config");
    if (!display.empty())
        set("DISPLAY", display);
    start_service();
}

void ShellProcess::prepare(const std::string& commands) const
{
    const Outcome outcome = shell(commands);
    ASSERT_EQ(outcome.exit_status, 0) << outcome;
}

Outcome ShellProcess::shell(const std::string& commands) const
{
    Invocation whole = run;
    whole.arguments = {"-e", "-c", commands};
    return Program(whole).run();
}

void ShellProcess::set(const std::string& variable, const std::string& value)
{
    run.environment[variable] = value;
}

std::string ShellProcess::file(const std::string& name) const
{
    return file_contents(scratch / "checkout/" + name);
}

std::string ShellProcess::requests() const
{
    const std::string recorded = scratch / "requests";
    return std::filesystem::exists(recorded) ? file_contents(recorded) : "";
}

std::size_t count(const std::string& text, const std::string& part)
{
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++found;
    return found;
}

std::string array_of(const Names& names)
{
    std::string text(fragments::array_start);
    for (const std::string& name : names)
        text.append(fragments::element_start).append(name).append(fragments::element_end);
    return text.append(fragments::array_end);
}
