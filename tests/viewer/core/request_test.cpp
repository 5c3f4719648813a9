#include "cmdline/command_line_info.h"
#include "viewer/core/request.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using Texts = std::vector<std::string>;

// The fragments that stand between two elements, two arrays and at a document's end, as names have
// them: each holds slashes, so such a name is a path through oddly named folders.
const std::string between_elements = "</string></value></data><data><value><string>";
const std::string between_arrays =
    "</string></value></data></array></value></param><param><value><array><data><value><string>";
const std::string after_output =
    "</string></value></param><param><value><array><data><value><string>";
const std::string document_end =
    "</string></value></data></array></value></param><param><value><string>utf8_file_delta"
    "</string></value></param></params></methodCall>\n";

/** A request for `typed` names, as a launcher in the folder "/d" makes it. */
DiffMrgCommandLineInfo command_line(const Texts& typed)
{
    DiffMrgCommandLineInfo info{};
    info.fnames = typed;
    for (const std::string& name : typed)
        info.contributors.push_back(name.starts_with('/') ? name : "/d/" + name);
    return info;
}

/** Just the contributors of the request are there. */
PathTest files_of(const DiffMrgCommandLineInfo& info)
{
    return [files = info.contributors](const std::string& path) {
        return std::find(files.begin(), files.end(), path) != files.end();
    };
}

void expect_round_trip(const DiffMrgCommandLineInfo& info)
{
    const auto request = decode_request(info.construct_xml(), files_of(info));

    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->merge, info.merge_mode);
    EXPECT_EQ(request->output, info.out_pname);
    EXPECT_EQ(request->names, info.fnames);
    EXPECT_EQ(request->contributors, info.contributors);
}

TEST(DecodeRequest, ACompareIsDecoded)
{
    expect_round_trip(command_line({"A", "B"}));
}

TEST(DecodeRequest, AMergeIsDecoded)
{
    DiffMrgCommandLineInfo info = command_line({"base", "left", "right"});
    info.merge_mode = true;
    info.out_pname = "/d/out";
    expect_round_trip(info);
}

TEST(DecodeRequest, EachTypeManagerNamesItsEncoding)
{
    const Texts names = {"utf8_file_delta", "utf16le_file_delta", "utf16be_file_delta",
                         "utf32le_file_delta", "utf32be_file_delta"};
    for (std::size_t row = 0; row < names.size(); ++row) {
        DiffMrgCommandLineInfo info = command_line({"A", "B"});
        info.encoding_given = true;
        info.type_manager = names[row];
        EXPECT_EQ(decode_request(info.construct_xml(), files_of(info))->encoding,
                  static_cast<int>(row));
    }
}

TEST(DecodeRequest, AnUnknownTypeManagerIsNoRequest)
{
    DiffMrgCommandLineInfo info = command_line({"A", "B"});
    info.encoding_given = true;
    info.type_manager = " ";
    EXPECT_FALSE(decode_request(info.construct_xml(), files_of(info)).has_value());
}

class OddNames : public testing::TestWithParam<std::string>
{};

TEST_P(OddNames, StandInTheFirstPlace)
{
    expect_round_trip(command_line({GetParam(), "b"}));
}

TEST_P(OddNames, StandInTheLastPlace)
{
    expect_round_trip(command_line({"a", GetParam()}));
}

TEST_P(OddNames, StandInEveryPlaceOfAMerge)
{
    DiffMrgCommandLineInfo info = command_line({GetParam(), "x" + GetParam(), GetParam() + "y"});
    info.merge_mode = true;
    info.out_pname = "/d/" + GetParam();
    expect_round_trip(info);
}

TEST_P(OddNames, StandInTheWorkingDirectory)
{
    DiffMrgCommandLineInfo info = command_line({"a", "b", "c"});
    for (std::string& path : info.contributors)
        path.insert(0, "/" + GetParam());
    expect_round_trip(info);
}

TEST_P(OddNames, StandInADisplayNameOfItsOwn)
{
    DiffMrgCommandLineInfo info = command_line({"a", "b"});
    info.contributors[1] = "/d/" + GetParam();
    info.fnames[1] = "/d/" + GetParam();
    info.fnames[0] = "old version";
    expect_round_trip(info);
}

INSTANTIATE_TEST_SUITE_P(Fragments, OddNames,
                         testing::Values("<", "&", "&amp;", "a\nb", "caf\xe9", "</methodCall>",
                                         "x" + between_elements + "b",
                                         "x" + between_elements + "/b", "x" + between_arrays + "b",
                                         "x" + after_output + "b", "x" + document_end + "b",
                                         between_elements + between_elements + between_arrays));

TEST(DecodeRequest, AMissingContributorIsStillDecodedSoThatItCanBeTold)
{
    const DiffMrgCommandLineInfo info = command_line({"A", "gone"});

    const auto request = decode_request(info.construct_xml(),
                                        [](const std::string& path) { return path != "/d/gone"; });

    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->contributors, info.contributors);
}

TEST(DecodeRequest, ThousandsOfContributorsAreDecoded)
{
    Texts names;
    for (int i = 0; i < 20'000; ++i)
        names.push_back("file" + std::to_string(i));
    const DiffMrgCommandLineInfo info = command_line(names);

    const auto request =
        decode_request(info.construct_xml(), [](const std::string&) { return true; });

    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->contributors, info.contributors);
}

TEST(DecodeRequest, AFewOddNamesAmongHundredsAreFoundInTime)
{
    Texts names;
    for (int i = 0; i < 400; ++i)
        names.push_back((i % 100 == 0 ? "x" + between_elements : "x") + std::to_string(i));
    expect_round_trip(command_line(names));
}

TEST(DecodeRequest, OneOddNameGivenManyTimesIsFoundInTime)
{
    const DiffMrgCommandLineInfo info = command_line(Texts(40, between_elements));

    const auto request = decode_request(info.construct_xml(), files_of(info));

    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->contributors, info.contributors);
}

TEST(DecodeRequest, EveryDocumentThatIsCutShortIsNoRequest)
{
    const DiffMrgCommandLineInfo info = command_line({"A", "B"});
    const std::string document = info.construct_xml();

    for (std::size_t length = 0; length < document.size(); ++length)
        EXPECT_FALSE(decode_request(document.substr(0, length), files_of(info)).has_value())
            << length;
}

TEST(DecodeRequest, ArraysOfDifferentLengthAreNoRequest)
{
    DiffMrgCommandLineInfo info = command_line({"A", "B"});
    info.fnames.emplace_back("C");
    EXPECT_FALSE(decode_request(info.construct_xml(), files_of(info)).has_value());
}

TEST(DecodeRequest, EmptyArraysAreNoRequest)
{
    EXPECT_FALSE(decode_request(command_line({}).construct_xml(), [](const std::string&) {
                     return true;
                 }).has_value());
}

TEST(EndsRequest, ARequestEndsWithItsClosingTagAndALineFeed)
{
    const std::string document = command_line({"A", "B"}).construct_xml();

    EXPECT_TRUE(ends_request(document + "\n"));
    EXPECT_FALSE(ends_request(document));
    EXPECT_FALSE(ends_request(document + "\n "));
}

} // namespace
