// Which variables decide on a viewer's display and looks.
#include "service/viewer_environment.h"
#include "tests/harness/process_state.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

TEST(ViewerEnvironment, TwoXDisplaysDiffer)
{
    EXPECT_NE(display_of({{"DISPLAY", ":0"}}), display_of({{"DISPLAY", ":1"}}));
}

TEST(ViewerEnvironment, AnotherAuthorityIsAnotherDisplay)
{
    EXPECT_NE(display_of({{"DISPLAY", ":0"}}),
              display_of({{"DISPLAY", ":0"}, {"XAUTHORITY", "/x"}}));
}

TEST(ViewerEnvironment, AnotherLanguageIsTheSameDisplay)
{
    EXPECT_EQ(display_of({{"DISPLAY", ":0"}}), display_of({{"DISPLAY", ":0"}, {"LANG", "C"}}));
}

TEST(ViewerEnvironment, AWaylandSocketIsMeantInItsFolder)
{
    EXPECT_NE(display_of({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_RUNTIME_DIR", "/a"}}),
              display_of({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_RUNTIME_DIR", "/b"}}));
}

TEST(ViewerEnvironment, AnEmptyVariableIsNoDisplay)
{
    EXPECT_EQ(display_of({{"DISPLAY", ""}, {"XAUTHORITY", "/x"}}), "");
    EXPECT_EQ(display_name({{"DISPLAY", ""}}), "no display");
}

TEST(ViewerEnvironment, ADisplayIsNamedAsItsUserDoes)
{
    EXPECT_EQ(display_name({{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}}), ":0");
    EXPECT_EQ(display_name({{"WAYLAND_DISPLAY", "wayland-0"}}), "wayland-0");
}

TEST(ViewerEnvironment, ADisplayWithAHostIsRemote)
{
    EXPECT_TRUE(is_remote_display({{"DISPLAY", "localhost:10.0"}}));
    EXPECT_FALSE(is_remote_display({{"DISPLAY", ":0"}}));
    EXPECT_FALSE(is_remote_display({{"DISPLAY", "unix:0"}}));
    EXPECT_FALSE(is_remote_display({}));
    EXPECT_FALSE(is_remote_display({{"DISPLAY", "host:0"}, {"WAYLAND_DISPLAY", "wayland-0"}}));
}

TEST(ViewerEnvironment, AProcessThatIsGoneHasNoVariables)
{
    EXPECT_TRUE(viewer_variables_of(0).empty());
}

TEST(ViewerEnvironment, TheRequestersVariablesReplaceTheServicesOwn)
{
    const EnvironmentVariable own_display("DISPLAY", ":own");
    const EnvironmentVariable own_locale("LC_TIME", "C");
    const EnvironmentVariable other("SOMETHING_ELSE", "kept");

    const auto entries = environment_with({{"DISPLAY", ":requester"}});

    EXPECT_EQ(std::count(entries.begin(), entries.end(), "DISPLAY=:requester"), 1);
    EXPECT_EQ(std::count(entries.begin(), entries.end(), "DISPLAY=:own"), 0);
    EXPECT_EQ(std::count(entries.begin(), entries.end(), "LC_TIME=C"), 0);
    EXPECT_EQ(std::count(entries.begin(), entries.end(), "SOMETHING_ELSE=kept"), 1);
}

TEST(ViewerEnvironment, ADesktopThatChoosesColoursIsTheRequesters)
{
    const EnvironmentVariable own_desktop("KDE_SESSION_VERSION", "5");

    const auto entries = environment_with({{"DISPLAY", ":requester"}});

    EXPECT_EQ(std::count(entries.begin(), entries.end(), "KDE_SESSION_VERSION=5"), 0);
}

} // namespace
