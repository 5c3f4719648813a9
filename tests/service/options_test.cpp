// The service's command line, as words.
#include "service/options.h"

#include <gtest/gtest.h>

namespace
{

using Action = Options::Action;

TEST(ServiceOptions, OneWordIsTheInstallDirectory)
{
    const auto options = parse_options({"/opt/product/Kelvanport"});

    ASSERT_TRUE(options);
    EXPECT_EQ(options->action, Action::serve);
    EXPECT_EQ(options->install_directory, "/opt/product/Kelvanport");
    EXPECT_FALSE(options->foreground);
}

TEST(ServiceOptions, NoWordsAreACommandLineToo)
{
    ASSERT_TRUE(parse_options({}));
    EXPECT_EQ(parse_options({})->action, Action::serve);
}

TEST(ServiceOptions, ForegroundMayStandOnBothSidesOfTheDirectory)
{
    EXPECT_TRUE(parse_options({"--foreground", "dir"})->foreground);
    EXPECT_TRUE(parse_options({"dir", "--foreground"})->foreground);
}

TEST(ServiceOptions, EachActionHasItsWord)
{
    EXPECT_EQ(parse_options({"--help"})->action, Action::show_help);
    EXPECT_EQ(parse_options({"--version"})->action, Action::show_version);
    EXPECT_EQ(parse_options({"--status"})->action, Action::show_status);
    EXPECT_EQ(parse_options({"--stop"})->action, Action::stop);
}

TEST(ServiceOptions, TwoActionsAreRefused)
{
    EXPECT_FALSE(parse_options({"--status", "--stop"}));
}

TEST(ServiceOptions, TwoDirectoriesAreRefused)
{
    EXPECT_FALSE(parse_options({"one", "two"}));
}

TEST(ServiceOptions, AnUnknownOptionIsRefused)
{
    EXPECT_FALSE(parse_options({"--verbose"}));
    EXPECT_FALSE(parse_options({"-h"}));
}

} // namespace
