// The exchange with a service that answers, in whatever way.
#include "tests/process/launcher_process.h"

#include <ostream>
namespace
{

class Exchange : public LauncherProcess
{};

std::string compare_document(const std::string& directory)
{
    return "<methodCall><methodName>RequestHandler.Compare</methodName><params>"
           "<param><value><array><data><value><string>a</string></value></data>"
           "<data><value><string>b</string></value></data></array></value></param>"
           "<param><value><array><data><value><string>" +
           directory + "/a</string></value></data><data><value><string>" + directory +
           "/b</string></value></data></array></value></param>"
           "<param><value><string>utf8_file_delta</string></value></param></params></methodCall>";
}

TEST_F(Exchange, ASuccessfulAnswerEndsTheRunWithZeroAndLeavesNothingBehind)
{
    EXPECT_EQ(run_against(script::answer_yes, compare()), success);

    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(Exchange, AnAnswerOfZeroEndsTheRunWith255AndLeavesNothingBehind)
{
    EXPECT_EQ(run_against(script::take_request + "answer=<boolean>0</boolean> drain", compare()),
              silent_failure);

    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(Exchange, TheAnnouncementIsTheTwoPathsALineEachByOneWrite)
{
    ScriptedService service(scratch, script::answer_yes);
    service.start();

    run(shimmed_compare());
    service.wait();

    const std::string folder = scratch.user_directory() + "/";
    const std::string expected = folder + request_fifo() + "\n" + folder + response_fifo() + "\n";
    EXPECT_EQ(service.record("announcement"), expected);
    const Names writes = exchange_calls({"write"});
    ASSERT_EQ(writes.size(), 2U);
    EXPECT_EQ(writes[0], "write(launcher_wrapper_pipe, " + std::to_string(expected.size()) + ")");
}

TEST_F(Exchange, TheRequestIsTheDocumentAndOneLineFeedByOneWrite)
{
    ScriptedService service(scratch, script::answer_yes);
    service.start();

    run(shimmed_compare());
    service.wait();

    const std::string expected = compare_document(scratch.path()) + "\n";
    EXPECT_EQ(service.record("request"), expected);
    const Names writes = exchange_calls({"write"});
    ASSERT_EQ(writes.size(), 2U);
    EXPECT_EQ(writes[1], "write(request, " + std::to_string(expected.size()) + ")");
}

TEST_F(Exchange, TheCallsOfAnExchangeComeInTheirOrder)
{
    run_against(script::answer_yes, shimmed_compare());

    EXPECT_EQ(calls({"signal"}), (Names{"signal(14, handler)", "signal(13, ignore)"}));
    Names order = exchange_calls(
        {"time", "srand", "alarm", "open", "mkfifo", "write", "read", "close", "unlink", "sleep"});
    for (std::string& call : order) // how many bytes, another test tells
        if (call.starts_with("write"))
            call.erase(call.find(','));
    EXPECT_EQ(order,
              (Names{"time(null)", "srand(seed)", "alarm(90)", "open(launcher_wrapper_pipe, w)",
                     "alarm(0)", "mkfifo(request, 0666)", "mkfifo(response, 0666)",
                     "write(launcher_wrapper_pipe", "alarm(90)", "open(request, w)",
                     "open(response, r)", "alarm(0)", "close(3 launcher_wrapper_pipe)",
                     "write(request", "read(response, 1023)", "close(4 request)",
                     "close(5 response)", "unlink(request)", "unlink(response)"}));
}

TEST_F(Exchange, TheLauncherWaitsForALateAnswer)
{
    ScriptedService service(scratch,
                            script::take_request + "gate answer=<boolean>1</boolean> drain");
    service.start();

    const Program& launched = start(compare());
    service.await("read");
    EXPECT_TRUE(launched.is_running());
    service.open_gate();

    EXPECT_EQ(finish(), success);
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(Exchange, AnAnswerInPiecesIsJudgedByTheFirstPiece)
{
    EXPECT_EQ(run_against(script::take_request + "answer=<boolean> drain answer=1</boolean> close",
                          compare()),
              silent_failure);

    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(Exchange, ALaterPieceDoesNotTakeASuccessBack)
{
    EXPECT_EQ(run_against(script::take_request + "answer=<boolean>1</boolean> drain "
                                                 "answer=<boolean>0</boolean> close",
                          compare()),
              success);

    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(Exchange, AServiceThatClosesWithoutAnAnswerMeansFailure)
{
    EXPECT_EQ(run_against(script::take_request + "close wait", compare()), silent_failure);

    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(Exchange, ClosedStandardDescriptorsDoNotDisturbAnExchange)
{
    ScriptedService service(scratch, script::answer_yes);
    service.start();
    Invocation bare = compare();
    bare.closed_descriptors = {0, 1, 2};

    EXPECT_EQ(run(bare), success);

    service.wait();
    EXPECT_EQ(service.record("request"), compare_document(scratch.path()) + "\n");
    EXPECT_EQ(scratch.user_listing(), service_files);
}

struct Answer {
    std::string name;
    std::string bytes;
    int exit_status;
};

void PrintTo(const Answer& value, std::ostream* out)
{
    *out << value.name;
}

class ExchangeAnswer : public LauncherProcess, public testing::WithParamInterface<Answer>
{};

TEST_P(ExchangeAnswer, DecidesTheStatusAlone)
{
    EXPECT_EQ(
        run_against(script::take_request + "answer=" + script_text(GetParam().bytes) + " drain",
                    compare()),
        (Outcome{.exit_status = GetParam().exit_status}));

    EXPECT_EQ(scratch.user_listing(), service_files);
}

// One read takes 1023 bytes: a '1' at offset 1022 is the last that counts.
const std::vector<Answer> answers{
    {"Complete",
     "<?xml version=\"1.0\"?>\n<methodResponse><params><param><value><boolean>1</boolean>"
     "</value></param></params></methodResponse>\n",
     0},
    {"Garbage", "\x01\xff garbage 1", 255},
    {"LastByteThatIsRead", std::string(1013, ' ') + "<boolean>1</boolean>", 0},
    {"FirstByteThatIsNotRead", std::string(1014, ' ') + "<boolean>1</boolean>", 255},
    {"LongAfterTheCode", "<boolean>1</boolean>" + std::string(3000, 'x'), 0},
    {"NulBeforeTheCode", std::string("\0<boolean>1</boolean>", 21), 255},
    {"NulAfterTheCode", std::string("<boolean>1\0", 11), 0},
    {"NulInsideTheSpan", std::string("<boolean>\0001", 11), 255},
    {"TagAtTheEnd", "<boolean>", 255},
    {"EleventhCharacter", "<boolean>0         1", 0},
    {"TwelfthCharacter", "<boolean>0          1", 255},
    {"SecondTag", "<boolean>0</boolean><boolean>1</boolean>", 255},
};

INSTANTIATE_TEST_SUITE_P(Answers, ExchangeAnswer, testing::ValuesIn(answers),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
