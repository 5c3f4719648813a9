#include "tests/harness/scripted_service.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace
{

std::string made_directory(const std::string& path)
{
    std::filesystem::create_directory(path);
    return path;
}

Environment scripted(const Scratch& scratch, const std::string& script)
{
    return {{"SCRIPT", script},
            {"SCRIPT_RECORDS", scratch / "records"},
            {"SCRIPT_DIRECTORY", scratch.user_directory()}};
}

Invocation service_invocation(const Scratch& scratch, const std::string& script)
{
    Invocation service = invocation(scratch, SCRIPTED_SERVICE, {TEST_PRODUCT_DIR "/Kelvanport"});
    service.environment.merge(scripted(scratch, script));
    return service;
}

} // namespace

std::string script_text(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes) {
        if (byte > ' ' && byte != '%') {
            text += byte;
            continue;
        }
        std::array<char, 4> escaped{};
        std::snprintf(escaped.data(), escaped.size(), "%%%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(byte)));
        text += escaped.data();
    }
    return text;
}

ScriptedService::ScriptedService(const Scratch& scratch, const std::string& script)
    : directory_(made_directory(scratch / "records")),
      news_(directory_ + "/news"),
      gate_(directory_ + "/gate"),
      program_(service_invocation(scratch, script)),
      environment_(scripted(scratch, script))
{
}

void ScriptedService::add_to(Environment& environment) const
{
    for (const auto& [name, value] : environment_)
        environment[name] = value;
}

void ScriptedService::start()
{
    program_.start();
    await("ready");
}

Outcome ScriptedService::wait()
{
    return program_.wait();
}

void ScriptedService::await(const std::string& news) const
{
    while (news_.line() != news)
        continue;
}

void ScriptedService::open_gate() const
{
    gate_.put("\n");
}

std::string ScriptedService::record(std::string_view name) const
{
    const std::string path = directory_ + "/" + std::string(name);
    return std::filesystem::exists(path) ? file_contents(path) : "";
}

std::string make_rendezvous(const Scratch& scratch)
{
    std::string path = scratch.make_user_directory() + "/launcher_wrapper_pipe";
    if (::mkfifo(path.c_str(), 0600) != 0)
        throw std::system_error(errno, std::generic_category(), path);
    return path;
}
