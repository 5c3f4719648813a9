#include "tests/service/x_server.h"

#include "tests/service/service_process.h"

#include <filesystem>

XServer::XServer(const Scratch& scratch, const std::string& name, const std::string& wanted)
    : scratch_directory(scratch),
      server(invocation(scratch, "/bin/sh",
                        {"-c",
                         "exec Xvfb $1 -displayfd 3 -noreset -screen 0 1280x900x24 -nolisten tcp "
                         "3>\"$0\" 2>/dev/null",
                         scratch / name, wanted}))
{
    server.start();
    const std::string number = scratch / name;
    EXPECT_TRUE(until(
        [&] { return std::filesystem::exists(number) && file_contents(number).ends_with('\n'); }));
    display_ = ":" + file_contents(number);
    display_.pop_back();
}

void XServer::end(int signal)
{
    server.send_signal(signal);
    server.wait();
}

Outcome XServer::xdotool(std::vector<std::string> words) const
{
    Invocation run = invocation(scratch_directory, "/usr/bin/xdotool", std::move(words));
    run.environment["DISPLAY"] = display_;
    return Program(run).run();
}

void XServer::press(const std::string& key) const
{
    // In steps: within one, xdotool ends at the error of a window that closes at the key, and never
    // lets the key go, which the next window takes for a held one.
    const Outcome found = xdotool({"search", "--onlyvisible", "--class", "quarnview"});
    const std::string window = found.out.substr(0, found.out.find('\n'));
    if (!window.empty() && xdotool({"windowfocus", "--sync", window}).exit_status == 0)
        xdotool({"key", key});
}

void XServer::press_until_end(const Program& launcher, const std::vector<std::string>& keys) const
{
    EXPECT_TRUE(until([&] {
        for (const std::string& key : keys)
            if (launcher.is_running())
                press(key);
        return !launcher.is_running();
    }));
}
