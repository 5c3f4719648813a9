// Requests shown in real windows: launcher, service and viewer on an X server of the test's own,
// driven by keys.
#include "tests/service/service_process.h"
#include "tests/service/x_server.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <memory>
#include <xcb/xcb.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

class WindowProcess : public ServiceProcess
{
  protected:
    WindowProcess() : ServiceProcess(PRODUCT_TREE), x_server(scratch)
    {
        scratch.write_file("base", "1\n2\n3\n4\n5\n6\n7\n8\n9\n");
        scratch.write_file("left", "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n");
        scratch.write_file("right", "1\n2\n3\n4\n5\n6\n7\neight\n9\n");
        scratch.write_file("other", "1\n2 too\n3\n4\n5\n6\n7\n8\n9\n");
        start_service();
    }

    /** Starts a launcher whose window is open when this returns. */
    Program& open_window(std::vector<std::string> words, const std::string& language = "C")
    {
        Invocation run = launcher(std::move(words), x_server.display());
        run.environment["LC_ALL"] = language;
        run.environment["HOME"] = scratch.path(); // nobody's settings
        window.emplace(run).start();
        EXPECT_TRUE(until([this] { return windows_open() == 1; })) << service_log();
        return *window;
    }

    int windows_open() const
    {
        const std::string text = status();
        const std::string label = "windows open: ";
        const std::size_t place = text.find(label);
        return place == std::string::npos ? 0 : std::stoi(text.substr(place + label.size()));
    }

    Outcome close_by_key(Program& launcher) const
    {
        x_server.press_until_end(launcher, {"ctrl+w"});
        return launcher.wait();
    }

    /** What a window manager sends when the user closes the window there. */
    void close_as_window_manager() const
    {
        const Outcome found =
            x_server.xdotool({"search", "--sync", "--onlyvisible", "--class", "quarnview"});
        xcb_connection_t* connection = ::xcb_connect(x_server.display().c_str(), nullptr);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = static_cast<xcb_window_t>(std::stoul(found.out));
        message.type = atom(connection, "WM_PROTOCOLS");
        message.data.data32[0] = atom(connection, "WM_DELETE_WINDOW");
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &message, sizeof message);
        ::xcb_send_event(connection, 0, message.window, XCB_EVENT_MASK_NO_EVENT, bytes.data());
        atom(connection, "WM_PROTOCOLS"); // its reply comes when the server has taken the message
        ::xcb_disconnect(connection);
    }

    /** The viewer that shows the window, not the spare. */
    pid_t viewer_of_window() const
    {
        const Outcome outcome = x_server.xdotool(
            {"search", "--sync", "--onlyvisible", "--class", "quarnview", "getwindowpid"});
        return outcome.exit_status == 0 ? std::stoi(outcome.out) : 0;
    }

    XServer x_server;
    std::optional<Program> window;

  private:
    static xcb_atom_t atom(xcb_connection_t* connection, std::string_view name)
    {
        const auto cookie =
            ::xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            ::xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
        return reply->atom;
    }
};

TEST_F(WindowProcess, AComparisonEndsWithZeroWhenItsWindowIsClosedByAKey)
{
    Program& compare = open_window({"a", "b"});

    EXPECT_EQ(close_by_key(compare), success);
    EXPECT_EQ(service_log(), "");
}

TEST_F(WindowProcess, AComparisonEndsWithZeroWhenTheWindowManagerClosesIt)
{
    Program& compare = open_window({"a", "b"});

    close_as_window_manager();

    EXPECT_EQ(compare.wait(), success);
}

TEST_F(WindowProcess, ALongTextIsReadOnceItsWindowIsOnTheScreen)
{
    std::string content;
    for (int line = 0; line < 50'000; ++line)
        content += std::to_string(line) + "\n";
    const std::string one = scratch.write_file("one", content);
    const std::string other = scratch.write_file("other", content + "more\n");
    Program& compare = open_window({one, other});

    EXPECT_EQ(close_by_key(compare), success);
}

TEST_F(WindowProcess, AContributorThatIsNoTextIsShownAndAnsweredWithFailure)
{
    Program& compare = open_window({"a", "bad"});

    EXPECT_EQ(close_by_key(compare), silent_failure);
}

TEST_F(WindowProcess, ASavedMergeIsWrittenAndEndsWithZero)
{
    Program& merge = open_window({"-out", "merged", "-base", "base", "left", "right"});

    x_server.press_until_end(merge, {"ctrl+s"});

    EXPECT_EQ(merge.wait(), success);
    EXPECT_EQ(file_contents(scratch / "merged"), "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n");
}

TEST_F(WindowProcess, AMergeThatIsClosedUnsavedEndsWithFailureAndWritesNothing)
{
    Program& merge = open_window({"-out", "merged", "-base", "base", "left", "other"});

    EXPECT_EQ(close_by_key(merge), silent_failure);
    EXPECT_FALSE(fs::exists(scratch / "merged"));
}

TEST_F(WindowProcess, AConflictIsResolvedByAKeyAndSaved)
{
    Program& merge = open_window({"-out", "merged", "-base", "base", "left", "other"});

    x_server.press_until_end(merge, {"ctrl+3", "ctrl+s"});

    EXPECT_EQ(merge.wait(), success);
    EXPECT_EQ(file_contents(scratch / "merged"), file_contents(scratch / "other"));
}

TEST_F(WindowProcess, AWindowSpeaksTheLanguageOfItsRequester)
{
    open_window({"a", "b"}, "de_DE.UTF-8");

    x_server.press("ctrl+g");

    EXPECT_TRUE(until([this] {
        return x_server.xdotool({"search", "--onlyvisible", "--name", "Gehe zu Zeile"})
                   .exit_status == 0;
    }));
}

TEST_F(WindowProcess, AKilledLauncherClosesItsWindow)
{
    Program& compare = open_window({"a", "b"});
    const pid_t viewer = viewer_of_window();
    ASSERT_GT(viewer, 0);

    compare.send_signal(SIGKILL);

    EXPECT_TRUE(until([viewer] { return ::kill(viewer, 0) != 0; }));
    EXPECT_TRUE(until([this] {
        return service_log().find("the launcher ended before it was answered") != std::string::npos;
    }));
}

TEST_F(WindowProcess, AKilledViewerIsFailureAndTheNextRequestIsServed)
{
    Program& compare = open_window({"a", "b"});

    ::kill(viewer_of_window(), SIGKILL);

    EXPECT_EQ(compare.wait(), silent_failure);
    Program& next = open_window({"a", "b"});
    EXPECT_EQ(close_by_key(next), success);
}

TEST_F(WindowProcess, AnXServerThatEndsIsFailureAndTheServiceLivesOn)
{
    Program& compare = open_window({"a", "b"});

    x_server.end(SIGKILL);

    EXPECT_EQ(compare.wait(), silent_failure);
    EXPECT_TRUE(running_service.is_running());
}

TEST_F(WindowProcess, ADisplayThatCannotBeOpenedIsFailureAtOnce)
{
    EXPECT_EQ(launch({"a", "b"}, ":54321"), silent_failure);

    EXPECT_THAT(service_log(), HasSubstr(" :54321: viewers do not start; left alone for a minute"));
}

} // namespace
