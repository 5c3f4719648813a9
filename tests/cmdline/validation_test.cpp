#include "cmdline/command_line_info.h"
#include "tests/cmdline/parsed.h"
#include "tests/harness/process_state.h"
#include "tests/harness/scratch.h"
#include "tests/support/captured_messages.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>

namespace
{

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr const char* message_4 =
    R"(You must supply the "-favor_contrib" option when the "-blank_ignore" option is used in )"
    "merge mode.\n";
constexpr const char* message_5 = "At least two objects must be supplied to compare.\n";
constexpr const char* message_6 = "The favor contributor specified is invalid.\n";
constexpr const char* message_8 = "Incorrect Encoding Option was Specified\n";

/** In a directory of its own that holds the files a, b and c, with messages captured. */
class Validation : public testing::Test
{
  protected:
    Scratch scratch;
    WorkingDirectory working_directory{scratch.path()};
    EnvironmentVariable no_root{"QUARNFOLD_ROOT", std::nullopt};
    EnvironmentVariable no_catalogue{"NLSPATH", std::nullopt};
    CapturedMessages captured;
    DiffMrgCommandLineInfo command_line{};

    void SetUp() override
    {
        for (const char* name : {"a", "b", "c"})
            scratch.write_file(name, "");
    }

    bool validate(const Words& words)
    {
        EXPECT_FALSE(parse(command_line, words));
        return command_line.post_process();
    }

    /** The message of a command line that is rejected; a text that no message has otherwise. */
    std::string rejection(const Words& words)
    {
        if (validate(words))
            return "accepted";
        EXPECT_EQ(uquarndiffmrg_out_msg, "");
        return uquarndiffmrg_err_msg;
    }
};

TEST_F(Validation, OfTwoFilesSucceedsAndPrintsNothing)
{
    EXPECT_TRUE(validate({"a", "b"}));
    EXPECT_EQ(uquarndiffmrg_err_msg + uquarndiffmrg_out_msg, "");
}

struct Rejected {
    const char* name;
    Words words;
    const char* message;
};

void PrintTo(const Rejected& rejected, std::ostream* out)
{
    *out << rejected.name;
}

class RejectedCommandLine : public Validation, public testing::WithParamInterface<Rejected>
{};

TEST_P(RejectedCommandLine, PrintsItsOneMessage)
{
    EXPECT_EQ(rejection(GetParam().words), GetParam().message);
}

const Words merge = {"-out", "m", "-blank_ignore", "a", "b"};

INSTANTIATE_TEST_SUITE_P(
    FavourRule, RejectedCommandLine,
    testing::Values(
        Rejected{"without_merge_and_blanks", {"-favor_contrib", "1", "a", "b"}, message_4},
        Rejected{"without_merge", {"-favor_contrib", "1", "-blank_ignore", "a", "b"}, message_4},
        Rejected{"without_blanks", {"-favor_contrib", "1", "-out", "m", "a", "b"}, message_4},
        Rejected{"comes_before_the_count", {"-favor_contrib", "1", "a"}, message_4}));

INSTANTIATE_TEST_SUITE_P(
    Count, RejectedCommandLine,
    testing::Values(Rejected{"none", {}, message_5}, Rejected{"one", {"a"}, message_5},
                    Rejected{"base_only", {"-base", "a"}, message_5},
                    Rejected{"comes_before_the_files", {"missing"}, message_5},
                    Rejected{"comes_before_the_favoured_number",
                             {"-out", "m", "-blank_ignore", "-favor_contrib", "9", "a"},
                             message_5},
                    Rejected{"comes_before_the_encoding", {"-encoding", "x", "a"}, message_5}));

INSTANTIATE_TEST_SUITE_P(
    Files, RejectedCommandLine,
    testing::Values(Rejected{"first_missing", {"missing", "b"}, ""},
                    Rejected{"last_missing", {"a", "b", "missing"}, ""},
                    Rejected{"base_missing", {"-base", "missing", "b"}, ""},
                    Rejected{"empty_name_below_a_file", {"a/", "b"}, ""},
                    Rejected{"come_before_the_favoured_number",
                             {"-out", "m", "-blank_ignore", "-favor_contrib", "9", "a", "missing"},
                             ""},
                    Rejected{"come_before_the_encoding", {"-encoding", "x", "a", "missing"}, ""}));

INSTANTIATE_TEST_SUITE_P(
    Encoding, RejectedCommandLine,
    testing::Values(
        Rejected{"capitals", {"-encoding", "UTF-8", "a", "b"}, message_8},
        Rejected{"without_dash", {"-encoding", "utf8", "a", "b"}, message_8},
        Rejected{"one_blank", {"-encoding", " ", "a", "b"}, message_8},
        Rejected{"empty", {"-encoding", "", "a", "b"}, message_8},
        Rejected{"cut_short", {"-encoding", "utf-16l", "a", "b"}, message_8},
        Rejected{"too_long", {"-encoding", "utf-8 ", "a", "b"}, message_8},
        Rejected{"last_of_two", {"-encoding", "utf-8", "-encoding", "x", "a", "b"}, message_8},
        Rejected{"in_a_merge", {"-encoding", "x", "-out", "m", "a", "b"}, message_8}));

struct Favoured {
    const char* name;
    const char* number;
    bool accepted;
};

void PrintTo(const Favoured& favoured, std::ostream* out)
{
    *out << favoured.name;
}

class FavouredNumber : public Validation, public testing::WithParamInterface<Favoured>
{};

TEST_P(FavouredNumber, NamesAContributorAndStaysAsTyped)
{
    Words words = {"-favor_contrib", GetParam().number};
    words.insert(words.end(), merge.begin(), merge.end());
    EXPECT_EQ(rejection(words), GetParam().accepted ? "accepted" : message_6);
    EXPECT_EQ(command_line.favor_contrib, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    OfTwo, FavouredNumber,
    testing::Values(Favoured{"first", "1", true}, Favoured{"last", "2", true},
                    Favoured{"text_after_it", "2x", true}, Favoured{"blanks_before", " \t2", true},
                    Favoured{"sign", "+1", true}, Favoured{"leading_zeros", "002", true},
                    Favoured{"too_high", "3", false}, Favoured{"zero", "0", false},
                    Favoured{"text_only", "x", false}, Favoured{"empty", "", false},
                    Favoured{"hexadecimal", "0x1", false},
                    Favoured{"beyond_32_bits", "4294967297", false},
                    Favoured{"beyond_64_bits", "99999999999999999999", false}));

// A value that begins with '-' is a flag on a command line; here it is set as it would be typed.
TEST_F(Validation, ANegativeFavouredNumberIsInvalid)
{
    parse(command_line, merge);
    command_line.favor_contrib_given = true;
    command_line.favor_contrib = "-1";

    EXPECT_FALSE(command_line.post_process());

    EXPECT_EQ(uquarndiffmrg_err_msg, message_6);
}

TEST_F(Validation, TheFavouredNumberMayNameAThirdContributor)
{
    EXPECT_TRUE(
        validate({"-out", "m", "-blank_ignore", "-favor_contrib", "3", "-base", "a", "b", "c"}));
}

TEST_F(Validation, AnInvalidFavouredNumberIsToldBeforeAnInvalidEncoding)
{
    EXPECT_EQ(rejection({"-out", "m", "-blank_ignore", "-favor_contrib", "3", "-encoding", "x", "a",
                         "b"}),
              message_6);
}

TEST_F(Validation, AMergeThatIgnoresBlanksFavoursTheFirstByDefault)
{
    EXPECT_TRUE(validate(merge));
    EXPECT_EQ(command_line.favor_contrib, "1");
}

TEST_F(Validation, AMergeWithBlanksFavoursNobody)
{
    EXPECT_TRUE(validate({"-out", "m", "a", "b"}));
    EXPECT_EQ(command_line.favor_contrib, "");
}

TEST_F(Validation, ACompareThatIgnoresBlanksFavoursNobody)
{
    EXPECT_TRUE(validate({"-blank_ignore", "a", "b"}));
    EXPECT_EQ(command_line.favor_contrib, "");
}

TEST_F(Validation, MapsEveryEncodingToItsTypeManager)
{
    const char* const rows[][2] = {{"utf-8", "utf8_file_delta"},
                                   {"utf-16le", "utf16le_file_delta"},
                                   {"utf-16be", "utf16be_file_delta"},
                                   {"utf-32le", "utf32le_file_delta"},
                                   {"utf-32be", "utf32be_file_delta"}};
    for (const auto& [encoding, type_manager] : rows) {
        DiffMrgCommandLineInfo one = parsed({"-encoding", encoding, "a", "b"});
        EXPECT_TRUE(one.post_process()) << encoding;
        EXPECT_EQ(one.type_manager, type_manager);
        EXPECT_EQ(one.encoding, encoding);
    }
}

TEST_F(Validation, GoesOnWithoutAnEncoding)
{
    EXPECT_TRUE(validate({"a", "b"}));
    EXPECT_EQ(command_line.type_manager, "");
}

TEST_F(Validation, LeavesThePathsRewrittenWhereItFails)
{
    EXPECT_FALSE(validate({"-encoding", "x", "a", "b"}));
    EXPECT_EQ(command_line.contributors, (Words{scratch / "a", scratch / "b"}));
}

TEST_F(Validation, PutsTheWorkingDirectoryBeforeRelativePathsOnly)
{
    EXPECT_TRUE(validate({"a", scratch / "b", "./c"}));
    EXPECT_EQ(command_line.contributors, (Words{scratch / "a", scratch / "b", scratch / "./c"}));
}

TEST_F(Validation, NormalisesNothingElse)
{
    fs::create_directory(scratch / "sub");
    EXPECT_TRUE(validate({"sub/..//a", "sub/"}));
    EXPECT_EQ(command_line.contributors, (Words{scratch / "sub/..//a", scratch / "sub/"}));
}

TEST_F(Validation, TakesAnEmptyPathForTheWorkingDirectory)
{
    EXPECT_TRUE(validate({"", "a"}));
    EXPECT_EQ(command_line.contributors[0], scratch.path() + "/");
    EXPECT_EQ(command_line.fnames[0], "");
}

TEST_F(Validation, MakesTheOutputAbsoluteInAMergeAndDoesNotOpenIt)
{
    EXPECT_TRUE(validate({"-out", "missing/m", "a", "b"}));
    EXPECT_EQ(command_line.out_pname, scratch / "missing/m");
    EXPECT_FALSE(fs::exists(scratch / "missing"));
}

TEST_F(Validation, LeavesAnAbsoluteOutputAsItIs)
{
    EXPECT_TRUE(validate({"-out", "/nowhere/m", "a", "b"}));
    EXPECT_EQ(command_line.out_pname, "/nowhere/m");
}

TEST_F(Validation, LeavesTheOutputEmptyInACompare)
{
    EXPECT_TRUE(validate({"a", "b"}));
    EXPECT_EQ(command_line.out_pname, "");
}

TEST_F(Validation, PutsTheRootBeforeEveryPath)
{
    const EnvironmentVariable root("QUARNFOLD_ROOT", scratch / "view");
    fs::create_directories(scratch / "view" + scratch.path());
    write_file(scratch / "view" + scratch / "a", "");
    write_file(scratch / "view/absolute", "");

    EXPECT_TRUE(validate({"-out", "m", "a", "/absolute"}));

    EXPECT_EQ(command_line.contributors,
              (Words{scratch / "view" + scratch / "a", scratch / "view/absolute"}));
    EXPECT_EQ(command_line.out_pname, scratch / "view" + scratch / "m");
    EXPECT_EQ(command_line.fnames, (Words{"a", "/absolute"}));
}

TEST_F(Validation, PutsTheRootBeforeAnAbsoluteOutput)
{
    const EnvironmentVariable root("QUARNFOLD_ROOT", "/..");
    EXPECT_TRUE(validate({"-out", scratch / "m", "a", "b"}));
    EXPECT_EQ(command_line.out_pname, "/.." + scratch / "m");
}

TEST_F(Validation, AddsNoSeparatorAfterTheRoot)
{
    const EnvironmentVariable root("QUARNFOLD_ROOT", "view");
    EXPECT_FALSE(validate({"a", "/b"}));
    EXPECT_EQ(command_line.contributors, (Words{"view" + scratch / "a", "view/b"}));
}

TEST_F(Validation, AnEmptyRootChangesNothing)
{
    const EnvironmentVariable root("QUARNFOLD_ROOT", "");
    EXPECT_TRUE(validate({"a", scratch / "b"}));
    EXPECT_EQ(command_line.contributors, (Words{scratch / "a", scratch / "b"}));
}

TEST_F(Validation, ARelativeRootIsNotMadeAbsolute)
{
    const EnvironmentVariable root("QUARNFOLD_ROOT", ".");
    fs::create_directories(scratch / ("." + scratch.path()));
    write_file(scratch / ("." + scratch / "a"), "");
    write_file(scratch / ("." + scratch / "b"), "");
    EXPECT_TRUE(validate({"a", "b"}));
    EXPECT_EQ(command_line.contributors, (Words{"." + scratch / "a", "." + scratch / "b"}));
}

TEST_F(Validation, ARemovedWorkingDirectoryIsAnEmptyText)
{
    const EnvironmentVariable root("QUARNFOLD_ROOT", scratch.path());
    fs::create_directory(scratch / "removed");
    const WorkingDirectory removed(scratch / "removed");
    fs::remove(scratch / "removed");

    EXPECT_TRUE(validate({"-out", "m", "a", "b"}));

    EXPECT_EQ(command_line.contributors, (Words{scratch / "a", scratch / "b"}));
    EXPECT_EQ(command_line.out_pname, scratch / "m");
}

TEST_F(Validation, AWorkingDirectoryTooLongForTheBufferIsAnEmptyText)
{
    const EnvironmentVariable root("QUARNFOLD_ROOT", scratch.path());
    const DeepWorkingDirectory deep;

    EXPECT_TRUE(validate({"a", "b"}));

    EXPECT_EQ(command_line.contributors, (Words{scratch / "a", scratch / "b"}));
}

TEST_F(Validation, FillsMissingDisplayNamesWithThePathsAsTyped)
{
    EXPECT_TRUE(validate({"-fname", "first", "a", "./b", scratch / "c"}));
    EXPECT_EQ(command_line.fnames, (Words{"first", "./b", scratch / "c"}));
}

TEST_F(Validation, FillsAnEmptyDisplayName)
{
    EXPECT_TRUE(validate({"-fname", "", "-fname", "second", "a", "b"}));
    EXPECT_EQ(command_line.fnames, (Words{"a", "second"}));
}

TEST_F(Validation, DropsSurplusDisplayNamesFromTheEnd)
{
    EXPECT_TRUE(validate({"-fname", "1", "-fname", "2", "-fname", "3", "a", "b"}));
    EXPECT_EQ(command_line.fnames, (Words{"1", "2"}));
}

TEST_F(Validation, CountsTheBaseAsTheFirstContributorForDisplayNames)
{
    EXPECT_TRUE(validate({"-fname", "base's", "-base", "a", "b"}));
    EXPECT_EQ(command_line.fnames, (Words{"base's", "b"}));
}

TEST_F(Validation, AcceptsADirectoryAsContributor)
{
    fs::create_directory(scratch / "folder");
    EXPECT_TRUE(validate({"folder", "a"}));
}

TEST_F(Validation, LeavesNoContributorOpen)
{
    const int before = open_descriptors();
    EXPECT_TRUE(validate({"a", "b"}));
    EXPECT_EQ(open_descriptors(), before);
}

} // namespace
