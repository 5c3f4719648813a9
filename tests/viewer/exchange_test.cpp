// The viewer's side of the exchange with a launcher, whose side the test plays.
#include "tests/harness/scratch.h"
#include "viewer/exchange.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace
{

constexpr const char* request_end = "</params></methodCall>\n";

class ViewerExchange : public testing::Test
{
  protected:
    ViewerExchange()
    {
        ::mkfifo(request_path.c_str(), 0600);
        ::mkfifo(response_path.c_str(), 0600);
    }

    static Descriptor open(const std::string& path, int access)
    {
        return Descriptor(::open(path.c_str(), access | O_NONBLOCK | O_CLOEXEC));
    }

    void write_request(const std::string& text)
    {
        EXPECT_EQ(::write(request.get(), text.data(), text.size()),
                  static_cast<ssize_t>(text.size()));
    }

    std::string read_reply() const
    {
        std::string reply(1023, '\0');
        const ssize_t length = ::read(response.get(), reply.data(), reply.size());
        reply.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        return reply;
    }

    Scratch scratch;
    std::string request_path = scratch / "request";
    std::string response_path = scratch / "response";
    Descriptor response;
    Descriptor request;
};

TEST_F(ViewerExchange, ARequestMayComeInPieces)
{
    Exchange exchange(request_path, response_path);
    request = open(request_path, O_WRONLY);

    write_request("<methodCall>");
    EXPECT_FALSE(exchange.read());
    EXPECT_FALSE(exchange.read());
    write_request(request_end);
    EXPECT_TRUE(exchange.read());

    EXPECT_EQ(exchange.document(), "<methodCall></params></methodCall>");
}

TEST_F(ViewerExchange, ARequestThatEndsTooEarlyIsAnError)
{
    Exchange exchange(request_path, response_path);
    request = open(request_path, O_WRONLY);
    write_request("<methodCall>");
    EXPECT_FALSE(exchange.read());

    request = Descriptor();

    EXPECT_THROW(exchange.read(), std::runtime_error);
}

TEST_F(ViewerExchange, AnAnswerIsOneTextThatOneReadTakes)
{
    Exchange exchange(request_path, response_path);
    response = open(response_path, O_RDONLY);

    exchange.answer(true);

    EXPECT_EQ(read_reply(),
              "<?xml version=\"1.0\"?><methodResponse><params><param><value><boolean>1</boolean>"
              "</value></param></params></methodResponse>");
    EXPECT_EQ(read_reply(), "");
}

TEST_F(ViewerExchange, AFailureIsAnsweredWithZero)
{
    Exchange exchange(request_path, response_path);
    response = open(response_path, O_RDONLY);

    exchange.answer(false);

    EXPECT_NE(read_reply().find("<boolean>0</boolean>"), std::string::npos);
}

TEST_F(ViewerExchange, AfterTheAnswerTheRequestHasNoReader)
{
    Exchange exchange(request_path, response_path);

    exchange.answer(true);

    EXPECT_FALSE(open(request_path, O_WRONLY));
    EXPECT_EQ(errno, ENXIO);
}

TEST_F(ViewerExchange, AMissingFifoIsAnError)
{
    ::unlink(response_path.c_str());

    EXPECT_THROW(Exchange(request_path, response_path), std::system_error);
}

TEST_F(ViewerExchange, ALinkToAFifoIsAnError)
{
    const std::string link = scratch / "link";
    ASSERT_EQ(::symlink(response_path.c_str(), link.c_str()), 0);

    EXPECT_THROW(Exchange(request_path, link), std::system_error);
}

TEST_F(ViewerExchange, AFileIsAnError)
{
    const std::string file = scratch.write_file("file", "");

    EXPECT_THROW(Exchange(file, response_path), std::system_error);
}

} // namespace
