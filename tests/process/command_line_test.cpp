// What a run says to a command line that it rejects, and what it sends for one that it takes.
#include "tests/process/launcher_process.h"

#include <filesystem>
#include <ostream>

namespace
{

const std::string favor_contrib_required =
    "You must supply the \"-favor_contrib\" option when the \"-blank_ignore\" option is used in "
    "merge mode.\n";
const std::string too_few = "At least two objects must be supplied to compare.\n";
const std::string favor_contrib_invalid = "The favor contributor specified is invalid.\n";
const std::string incorrect_encoding = "Incorrect Encoding Option was Specified\n";

struct Rejection {
    std::string name;
    std::vector<std::string> words;
    std::string message; // before the usage text
};

void PrintTo(const Rejection& value, std::ostream* out)
{
    *out << value.name;
}

class RejectedCommandLine : public LauncherProcess, public testing::WithParamInterface<Rejection>
{};

TEST_P(RejectedCommandLine, IsToldOnStandardErrorAndSendsNothing)
{
    ScriptedService service(scratch, "wait");
    service.start();

    EXPECT_EQ(run(launcher(GetParam().words)),
              (Outcome{.exit_status = 255, .err = GetParam().message + usage}));

    EXPECT_EQ(scratch.user_listing(), service_files);
}

const std::vector<Rejection> rejections{
    {"UnknownFlag", {"-nonsense", "a", "b"}, ""},
    {"TwoDashes", {"--out", "m", "a", "b"}, ""},
    {"LoneDash", {"-", "a", "b"}, ""},
    {"FlagWithoutItsValue", {"a", "b", "-out"}, ""},
    {"FlagWhereAValueIsAwaited", {"-out", "-encoding", "utf-8", "a", "b"}, ""},
    {"BaseAfterAContributor", {"a", "-base", "b"}, ""},
    {"NoWords", {}, too_few},
    {"OneContributor", {"a"}, too_few},
    {"OnlyABase", {"-base", "a"}, too_few},
    {"FavorWithoutOut", {"-favor_contrib", "1", "a", "b"}, favor_contrib_required},
    {"FavorWithoutBlankIgnore",
     {"-out", "m", "-favor_contrib", "1", "a", "b"},
     favor_contrib_required},
    {"FavorOfACompareThatIgnoresBlanks",
     {"-blank_ignore", "-favor_contrib", "1", "a", "b"},
     favor_contrib_required},
    {"FavorBeforeTheCount", {"-favor_contrib", "1", "a"}, favor_contrib_required},
    {"MissingContributor", {"a", "missing"}, ""},
    {"MissingContributorBeforeTheFavor",
     {"-out", "m", "-blank_ignore", "-favor_contrib", "3", "a", "missing"},
     ""},
    {"FavorAboveTheCount",
     {"-out", "m", "-blank_ignore", "-favor_contrib", "3", "a", "b"},
     favor_contrib_invalid},
    {"FavorZero",
     {"-out", "m", "-blank_ignore", "-favor_contrib", "0", "a", "b"},
     favor_contrib_invalid},
    {"FavorAboveAnInt",
     {"-out", "m", "-blank_ignore", "-favor_contrib", "4294967297", "a", "b"},
     favor_contrib_invalid},
    {"FavorWithoutDigits",
     {"-out", "m", "-blank_ignore", "-favor_contrib", "x", "a", "b"},
     favor_contrib_invalid},
    {"FavorBeforeTheEncoding",
     {"-out", "m", "-blank_ignore", "-favor_contrib", "0", "-encoding", "x", "a", "b"},
     favor_contrib_invalid},
    {"EncodingInCapitals", {"-encoding", "UTF-8", "a", "b"}, incorrect_encoding},
    {"EncodingWithoutDash", {"-encoding", "utf8", "a", "b"}, incorrect_encoding},
    {"EncodingOfOneBlank", {"-encoding", " ", "a", "b"}, incorrect_encoding},
};

INSTANTIATE_TEST_SUITE_P(Rejections, RejectedCommandLine, testing::ValuesIn(rejections),
                         [](const auto& tested) { return tested.param.name; });

/** The request of a run in the scratch directory; "%" in a path stands for that directory. */
struct Request {
    std::string name;
    std::vector<std::string> words;
    std::vector<std::string> display_names;
    std::vector<std::string> contributors;
    std::string type_manager = "utf8_file_delta";
    std::string output{}; // empty: a compare
    std::string root{};   // "none": not in the environment
};

void PrintTo(const Request& value, std::ostream* out)
{
    *out << value.name;
}

std::string with_directory(const std::string& text, const std::string& directory)
{
    const auto at = text.find('%');
    return at == std::string::npos ? text : text.substr(0, at) + directory + text.substr(at + 1);
}

std::string string_parameter(const std::string& text)
{
    return "<param><value><string>" + text + "</string></value></param>";
}

std::string array_parameter(const std::vector<std::string>& texts, const std::string& directory)
{
    std::string parameter = "<param><value><array>";
    for (const std::string& text : texts)
        parameter +=
            "<data><value><string>" + with_directory(text, directory) + "</string></value></data>";
    return parameter + "</array></value></param>";
}

std::string document(const Request& request, const std::string& directory)
{
    const bool merges = !request.output.empty();
    return std::string("<methodCall><methodName>RequestHandler.") +
           (merges ? "CompareMerge" : "Compare") + "</methodName><params>" +
           (merges ? string_parameter(with_directory(request.output, directory)) : "") +
           array_parameter(request.display_names, directory) +
           array_parameter(request.contributors, directory) +
           string_parameter(request.type_manager) + "</params></methodCall>\n";
}

class AcceptedCommandLine : public LauncherProcess, public testing::WithParamInterface<Request>
{
  protected:
    Invocation launcher_of(const Request& request) const
    {
        std::vector<std::string> words = request.words;
        for (std::string& word : words)
            word = with_directory(word, scratch.path());
        Invocation run = launcher(words);
        if (request.root != "none")
            run.environment["QUARNFOLD_ROOT"] = with_directory(request.root, scratch.path());
        return run;
    }
};

TEST_P(AcceptedCommandLine, IsSentToTheByte)
{
    scratch.write_file("<&>", "third\n");
    ScriptedService service(scratch, script::answer_yes);
    service.start();

    EXPECT_EQ(run(launcher_of(GetParam())), success);

    service.wait();
    EXPECT_EQ(service.record("request"), document(GetParam(), scratch.path()));
    EXPECT_EQ(scratch.user_listing(), service_files);
}

const std::string utf8 = "utf8_file_delta";

const std::vector<Request> requests{
    {"Relative", {"a", "b"}, {"a", "b"}, {"%/a", "%/b"}, utf8, "", "none"},
    {"Absolute", {"%/a", "./b"}, {"%/a", "./b"}, {"%/a", "%/./b"}, utf8, "", "none"},
    {"AnEmptyRoot", {"a", "b"}, {"a", "b"}, {"%/a", "%/b"}, utf8, "", ""},
    {"ARootBeforeRelativeAndAbsolute",
     {"a", "%/b"},
     {"a", "%/b"},
     {"/./%/a", "/./%/b"},
     utf8,
     "",
     "/./"},
    {"ARootBeforeTheOutput",
     {"-out", "/m", "a", "b"},
     {"a", "b"},
     {"//%/a", "//%/b"},
     utf8,
     "///m",
     "//"},
    {"AMerge", {"-out", "m", "a", "b"}, {"a", "b"}, {"%/a", "%/b"}, utf8, "%/m", "none"},
    {"ABaseIsTheFirstContributor",
     {"-base", "b", "-out", "m", "a", "b"},
     {"b", "a", "b"},
     {"%/b", "%/a", "%/b"},
     utf8,
     "%/m",
     "none"},
    {"OneDisplayNameOfThree",
     {"-fname", "one", "a", "b", "a"},
     {"one", "b", "a"},
     {"%/a", "%/b", "%/a"},
     utf8,
     "",
     "none"},
    {"ThreeDisplayNamesOfTwo",
     {"-fname", "one", "-fname", "two", "-fname", "three", "a", "b"},
     {"one", "two"},
     {"%/a", "%/b"},
     utf8,
     "",
     "none"},
    {"BlanksIgnoredWithoutAFavor",
     {"-out", "m", "-blank_ignore", "a", "b"},
     {"a", "b"},
     {"%/a", "%/b"},
     utf8,
     "%/m",
     "none"},
    {"AFavorThatGoesOnAfterItsDigits",
     {"-out", "m", "-blank_ignore", "-favor_contrib", "2x", "a", "b"},
     {"a", "b"},
     {"%/a", "%/b"},
     utf8,
     "%/m",
     "none"},
    {"BlankIgnoreAsLastWord",
     {"a", "b", "-blank_ignore"},
     {"a", "b"},
     {"%/a", "%/b"},
     utf8,
     "",
     "none"},
    {"MarkupInANameIsNotEscaped", {"a", "<&>"}, {"a", "<&>"}, {"%/a", "%/<&>"}, utf8, "", "none"},
    {"Encoding",
     {"-encoding", "utf-16le", "a", "b"},
     {"a", "b"},
     {"%/a", "%/b"},
     "utf16le_file_delta",
     "",
     "none"},
};

INSTANTIATE_TEST_SUITE_P(Requests, AcceptedCommandLine, testing::ValuesIn(requests),
                         [](const auto& tested) { return tested.param.name; });

class CommandLine : public LauncherProcess
{};

TEST_F(CommandLine, AWorkingDirectoryThatCannotBeReadIsAnEmptyText)
{
    ScriptedService service(scratch, script::answer_yes);
    service.start();
    Invocation nowhere = launcher({"-out", "m", scratch / "a", scratch / "b"});
    shim(nowhere, {{"SHIM_FAIL", "getcwd:*:2"}});

    EXPECT_EQ(run(nowhere), success);

    service.wait();
    EXPECT_NE(service.record("request").find("<params>" + string_parameter("/m")),
              std::string::npos);
}

TEST_F(CommandLine, AnUnreadableContributorIsAnsweredByTheUsageTextAlone)
{
    ScriptedService service(scratch, "wait");
    service.start();
    std::filesystem::permissions(scratch / "b", std::filesystem::perms::none);

    EXPECT_EQ(run(compare()), (Outcome{.exit_status = 255, .err = usage}));

    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(CommandLine, IsRejectedSilentlyWhereStandardErrorIsClosed)
{
    ScriptedService service(scratch, "wait");
    service.start();
    Invocation bare = launcher();
    bare.closed_descriptors = {0, 1, 2};

    EXPECT_EQ(run(bare), silent_failure);

    EXPECT_EQ(scratch.user_listing(), service_files);
}

} // namespace
