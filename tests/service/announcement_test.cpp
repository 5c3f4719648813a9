#include "protocol/wire_names.h"
#include "service/announcement.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

const std::string folder = "/tmp/alice.uquarndiffmrg";

std::string request_path(const std::string& id, const std::string& in = folder)
{
    return in + "/" + request_pipe + id;
}

std::string response_path(const std::string& id, const std::string& in = folder)
{
    return in + "/" + response_pipe + id;
}

std::string announced(const std::string& id)
{
    return request_path(id) + "\n" + response_path(id) + "\n";
}

AnnouncementReader reader()
{
    return AnnouncementReader([](const std::string& named) { return named == folder; });
}

std::vector<pid_t> launchers(const AnnouncementReader::Result& result)
{
    std::vector<pid_t> ids;
    for (const Announcement& announcement : result.announcements)
        ids.push_back(announcement.launcher);
    return ids;
}

using Ids = std::vector<pid_t>;

TEST(AnnouncementReader, TwoLinesAreOneLauncher)
{
    const auto result = reader().feed(announced("4711"));

    ASSERT_EQ(launchers(result), Ids{4711});
    EXPECT_EQ(result.announcements[0].request, std::string(request_pipe) + "4711");
    EXPECT_EQ(result.announcements[0].response, std::string(response_pipe) + "4711");
    EXPECT_TRUE(result.dropped.empty());
}

TEST(AnnouncementReader, SeveralLaunchersMayComeInOneRead)
{
    EXPECT_EQ(launchers(reader().feed(announced("1") + announced("2") + announced("3"))),
              (Ids{1, 2, 3}));
}

TEST(AnnouncementReader, AnAnnouncementMayComeByteByByte)
{
    AnnouncementReader one = reader();
    Ids ids;
    for (const char byte : announced("4711"))
        for (const pid_t id : launchers(one.feed({&byte, 1})))
            ids.push_back(id);

    EXPECT_EQ(ids, Ids{4711});
}

TEST(AnnouncementReader, RubbishBeforeAnAnnouncementCostsItNothing)
{
    const auto result = reader().feed("rubbish\n" + announced("4711"));

    EXPECT_EQ(launchers(result), Ids{4711});
    EXPECT_EQ(result.dropped, std::vector<std::string>{"rubbish"});
}

TEST(AnnouncementReader, AnEndlessLineIsForgottenAndTheNextAnnouncementHeard)
{
    AnnouncementReader one = reader();
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(one.feed(std::string(1000, 'x')).announcements.empty());

    EXPECT_EQ(launchers(one.feed("\n" + announced("4711"))), Ids{4711});
}

TEST(AnnouncementReader, TheEndOfAnEndlessLineIsNoLineOfItsOwn)
{
    AnnouncementReader one = reader();
    one.feed(std::string(100'000, 'x'));

    EXPECT_TRUE(one.feed(announced("4711")).announcements.empty());
}

TEST(AnnouncementReader, WhatIsNotExactlyAnAnnouncementIsDropped)
{
    const std::vector<std::string> hostile = {
        response_path("4711") + "\n" + request_path("4711") + "\n",
        request_path("4711") + "\n" + response_path("4712") + "\n",
        request_path("") + "\n" + response_path("") + "\n",
        request_path("0") + "\n" + response_path("0") + "\n",
        request_path("-1") + "\n" + response_path("-1") + "\n",
        request_path("04711") + "\n" + response_path("04711") + "\n",
        request_path("4711x") + "\n" + response_path("4711x") + "\n",
        request_path("99999999999999") + "\n" + response_path("99999999999999") + "\n",
        request_path("1", "/elsewhere") + "\n" + response_path("1", "/elsewhere") + "\n",
        request_path("1") + "\n" + response_path("1", "/elsewhere") + "\n",
        request_path("1", folder + "/..") + "\n" + response_path("1", folder + "/..") + "\n",
        request_path("1") + "/x\n" + response_path("1") + "/x\n",
        std::string(request_pipe) + "1\n" + response_pipe + "1\n",
        "\n\n",
        std::string("\0\n\0\n", 4),
    };
    for (const std::string& bytes : hostile) {
        AnnouncementReader one = reader();
        EXPECT_TRUE(one.feed(bytes).announcements.empty()) << bytes;
        EXPECT_EQ(launchers(one.feed(announced("9"))), Ids{9}) << "after " << bytes;
    }
}

TEST(LauncherOf, TheWholeRangeOfProcessIdsIsRead)
{
    EXPECT_EQ(launcher_of("pipe1", "pipe"), 1);
    EXPECT_EQ(launcher_of("pipe2147483647", "pipe"), 2147483647);
    EXPECT_EQ(launcher_of("pipe2147483648", "pipe"), std::nullopt);
    EXPECT_EQ(launcher_of("pip1", "pipe"), std::nullopt);
}

} // namespace
