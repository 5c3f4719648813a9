// The service's log.
#include "service/log.h"
#include "tests/harness/scratch.h"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace
{

class LogFile : public testing::Test
{
  protected:
    std::string text() const { return file_contents(scratch / "tolm_service.log"); }

    Scratch scratch;
    Descriptor directory{::open(scratch.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
};

TEST_F(LogFile, ALineIsTheTimeAndTheText)
{
    Log(directory.get()).line("text");

    const std::string line = text();
    EXPECT_EQ(line.substr(line.find(' ')), " text\n");
    EXPECT_EQ(line.find(' '), std::string("2026-11-21T08:00:00Z").size());
}

TEST_F(LogFile, ControlCharactersAreEscaped)
{
    Log(directory.get()).line("a\nb\x7f");

    EXPECT_TRUE(text().ends_with(" a\\x0ab\\x7f\n"));
}

TEST_F(LogFile, ALogOfOneMebibyteIsPutAsideForANewOne)
{
    const std::string full((1 << 20) - 1, 'x');
    scratch.write_file("tolm_service.log", full);
    Log log(directory.get());
    log.line("the last");

    log.line("the first");

    EXPECT_TRUE(text().ends_with(" the first\n"));
    EXPECT_LT(text().size(), 100U);
    const std::string earlier = file_contents(scratch / "tolm_service.log.1");
    EXPECT_TRUE(earlier.ends_with(" the last\n"));
    EXPECT_TRUE(earlier.starts_with(full));
}

TEST_F(LogFile, ALogThatCannotBeOpenedIsDoneWithout)
{
    Log log(-1);

    log.line("text");

    EXPECT_EQ(scratch.listing(), (std::vector<std::string>{"tmp"}));
}

} // namespace
