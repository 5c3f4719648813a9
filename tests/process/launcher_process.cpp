#include "tests/process/launcher_process.h"

#include <algorithm>
#include <sstream>
#include <sys/wait.h>

namespace
{

void replace_all(std::string& text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at))
        text.replace(at, from.size(), to);
}

} // namespace

LauncherProcess::LauncherProcess()
{
    scratch.write_file("a", "first\n");
    scratch.write_file("b", "second\n");
}

Invocation LauncherProcess::launcher(std::vector<std::string> arguments) const
{
    return invocation(scratch, TEST_LAUNCHER, std::move(arguments));
}

Invocation LauncherProcess::compare() const
{
    return launcher({"a", "b"});
}

void LauncherProcess::shim(Invocation& run, const Environment& settings) const
{
    Environment& environment = run.environment;
    for (const auto& [name, value] : settings)
        environment[name] = value;
    environment["LD_PRELOAD"] = SHIM_LIBRARY;
    environment["SHIM_PROGRAM"] = "uquarndiffmrg";
    environment["SHIM_LOG"] = scratch / "calls";
    // The sanitizer wants to be the first library; behind the shim it works as well.
    environment["ASAN_OPTIONS"] += ":verify_asan_link_order=0";
}

Invocation LauncherProcess::shimmed_compare(const Environment& settings) const
{
    Invocation run = compare();
    shim(run, settings);
    return run;
}

Program& LauncherProcess::start(const Invocation& run)
{
    program_ = std::make_unique<Program>(run);
    program_->start();
    id_ = std::to_string(program_->pid());
    return *program_;
}

Outcome LauncherProcess::finish()
{
    return program_->wait();
}

Outcome LauncherProcess::run(const Invocation& run)
{
    start(run);
    return finish();
}

Outcome LauncherProcess::run_against(const std::string& script, const Invocation& run)
{
    ScriptedService service(scratch, script);
    service.start();
    return this->run(run);
}

Names LauncherProcess::calls(const Names& named, const std::string& who) const
{
    std::istringstream log(file_contents(scratch / "calls"));
    std::string line;
    std::getline(log, line);
    EXPECT_EQ(line, "shim loaded");
    const std::string prefix = who + " ";
    Names found;
    while (std::getline(log, line)) {
        if (!line.starts_with(prefix))
            continue;
        line.erase(0, prefix.size());
        const std::string name = line.substr(0, line.find('('));
        if (std::find(named.begin(), named.end(), name) == named.end())
            continue;
        replace_all(line, scratch.user_directory() + "/", "");
        replace_all(line, request_fifo(), "request");
        replace_all(line, response_fifo(), "response");
        found.push_back(line);
    }
    return found;
}

Names LauncherProcess::exchange_calls(Names named) const
{
    named.emplace_back("signal");
    Names found = calls(named);
    found.erase(found.begin(), std::find(found.begin(), found.end(), "signal(14, handler)"));
    std::erase_if(found, [](const std::string& call) { return call.starts_with("signal"); });
    return found;
}

std::string LauncherProcess::request_fifo() const
{
    return "zev_brevmont_quarnfold71_tolm_lsp_request_pipe" + id_;
}

std::string LauncherProcess::response_fifo() const
{
    return "zev_brevmont_quarnfold71_tolm_lsp_response_pipe" + id_;
}

Names LauncherProcess::with_fifos(Names names) const
{
    names.push_back(request_fifo());
    names.push_back(response_fifo());
    std::sort(names.begin(), names.end());
    return names;
}

int LauncherProcess::orphan_exit_status()
{
    int status = 0;
    return ::waitpid(-1, &status, 0) > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void LauncherProcess::trace(Invocation& run)
{
    run.environment["TOLM_SERVICE_LOG"] = "1";
}

std::string LauncherProcess::trace_text() const
{
    return file_contents(scratch.user_directory() + "/uquarndiffmrg.log");
}
