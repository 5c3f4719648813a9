#include "viewer/display.h"

#include "service/descriptor.h"
#include "tests/harness/scratch.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace
{

using Platform = std::optional<std::string>;

/** Plugins in the folder "plugins", and a compositor that listens but says nothing. */
class Display : public testing::Test
{
  public:
    Display() : compositor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        std::filesystem::create_directories(scratch / "plugins/platforms");
        scratch.write_file("plugins/platforms/libqxcb.so", "");
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            ::unsetenv(name);
        ::setenv("XDG_RUNTIME_DIR", scratch.path().c_str(), 1);
    }

    void add_wayland_plugin() const
    {
        scratch.write_file("plugins/platforms/libqwayland-generic.so", "");
    }

    void start_compositor() const
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = scratch / "wayland-9";
        ASSERT_LT(path.size(), sizeof address.sun_path);
        path.copy(static_cast<char*>(address.sun_path), path.size());
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the interface's own way
        const auto* general = reinterpret_cast<const sockaddr*>(&address);
        ASSERT_EQ(::bind(compositor.get(), general, sizeof address), 0);
        ASSERT_EQ(::listen(compositor.get(), 1), 0);
        ::setenv("WAYLAND_DISPLAY", "wayland-9", 1);
    }

    Platform platform() const
    {
        return platform_of_display({scratch / "none", scratch / "plugins"});
    }

    Scratch scratch;
    Descriptor compositor;
};

TEST_F(Display, AWaylandDisplayIsOpenedWithThePluginForIt)
{
    start_compositor();
    add_wayland_plugin();

    EXPECT_EQ(platform(), "wayland");
}

TEST_F(Display, AWaylandDisplayIsNoneWithoutThePluginForIt)
{
    start_compositor();

    EXPECT_EQ(platform(), std::nullopt);
}

TEST_F(Display, ACompositorThatIsGoneIsNoDisplay)
{
    add_wayland_plugin();
    ::setenv("WAYLAND_DISPLAY", "wayland-9", 1);

    EXPECT_EQ(platform(), std::nullopt);
}

TEST_F(Display, AnXServerThatIsGoneLeavesTheWaylandDisplay)
{
    start_compositor();
    add_wayland_plugin();
    ::setenv("DISPLAY", ":54321", 1);

    EXPECT_EQ(platform(), "wayland");
}

TEST_F(Display, TheUsersOwnChoiceOfAPlatformIsLeftToTheToolkit)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);

    EXPECT_EQ(platform(), "");
}

} // namespace
