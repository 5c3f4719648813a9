#include "cmdline/command_line_info.h"

#include <gtest/gtest.h>

namespace
{

DiffMrgCommandLineInfo compare_of_two()
{
    DiffMrgCommandLineInfo command_line{};
    command_line.fnames = {"A", "B"};
    command_line.contributors = {"/d/A", "/d/B"};
    return command_line;
}

TEST(RequestDocument, OfACompareHoldsNamesContributorsAndTypeManager)
{
    EXPECT_EQ(compare_of_two().construct_xml(),
              "<methodCall><methodName>RequestHandler.Compare</methodName><params>"
              "<param><value><array>"
              "<data><value><string>A</string></value></data>"
              "<data><value><string>B</string></value></data>"
              "</array></value></param>"
              "<param><value><array>"
              "<data><value><string>/d/A</string></value></data>"
              "<data><value><string>/d/B</string></value></data>"
              "</array></value></param>"
              "<param><value><string>utf8_file_delta</string></value></param>"
              "</params></methodCall>");
}

TEST(RequestDocument, OfAMergeBeginsWithTheOutput)
{
    DiffMrgCommandLineInfo command_line = compare_of_two();
    command_line.fnames.emplace_back("C");
    command_line.contributors.emplace_back("/d/C");
    command_line.add_out("/d/O");
    command_line.encoding_given = true;
    command_line.type_manager = "utf16le_file_delta";

    EXPECT_EQ(command_line.construct_xml(),
              "<methodCall><methodName>RequestHandler.CompareMerge</methodName><params>"
              "<param><value><string>/d/O</string></value></param>"
              "<param><value><array>"
              "<data><value><string>A</string></value></data>"
              "<data><value><string>B</string></value></data>"
              "<data><value><string>C</string></value></data>"
              "</array></value></param>"
              "<param><value><array>"
              "<data><value><string>/d/A</string></value></data>"
              "<data><value><string>/d/B</string></value></data>"
              "<data><value><string>/d/C</string></value></data>"
              "</array></value></param>"
              "<param><value><string>utf16le_file_delta</string></value></param>"
              "</params></methodCall>");
}

TEST(RequestDocument, OfEmptyListsStillHasBothArrays)
{
    EXPECT_EQ(DiffMrgCommandLineInfo{}.construct_xml(),
              "<methodCall><methodName>RequestHandler.Compare</methodName><params>"
              "<param><value><array></array></value></param>"
              "<param><value><array></array></value></param>"
              "<param><value><string>utf8_file_delta</string></value></param>"
              "</params></methodCall>");
}

TEST(RequestDocument, OfAMergeWithoutAnOutputHasAnEmptyOne)
{
    DiffMrgCommandLineInfo command_line{};
    command_line.merge_mode = true;
    EXPECT_NE(command_line.construct_xml().find("<params><param><value><string></string></value>"),
              std::string::npos);
}

TEST(RequestDocument, OfManyContributorsWithoutAnOutputIsACompare)
{
    DiffMrgCommandLineInfo command_line{};
    command_line.contributors = {"a", "b", "c", "d"};
    command_line.out_pname = "/unused";
    const std::string document = command_line.construct_xml();
    EXPECT_NE(document.find("RequestHandler.Compare<"), std::string::npos);
    EXPECT_EQ(document.find("/unused"), std::string::npos);
}

TEST(RequestDocument, WithoutAnEncodingNamesTheDefaultWhateverTheTypeManagerHolds)
{
    DiffMrgCommandLineInfo command_line = compare_of_two();
    const std::string plain = command_line.construct_xml();

    command_line.type_manager = "utf32be_file_delta";

    EXPECT_EQ(command_line.construct_xml(), plain);
}

TEST(RequestDocument, WithAnEncodingNamesTheTypeManagerEvenWhenItIsEmpty)
{
    DiffMrgCommandLineInfo command_line{};
    command_line.encoding_given = true;
    const std::string document = command_line.construct_xml();
    EXPECT_TRUE(document.ends_with("<param><value><string></string></value></param>"
                                   "</params></methodCall>"));
}

TEST(RequestDocument, CarriesNamesByteForByte)
{
    const std::string odd = "<&>\"'\n\t </string>\xff\xc3\xa4";
    DiffMrgCommandLineInfo command_line{};
    command_line.add_out(odd.c_str());
    command_line.fnames = {odd};
    command_line.contributors = {odd};
    command_line.encoding_given = true;
    command_line.type_manager = odd;
    const std::string element = "<data><value><string>" + odd + "</string></value></data>";
    const std::string string = "<param><value><string>" + odd + "</string></value></param>";
    const std::string array = "<param><value><array>" + element + "</array></value></param>";

    EXPECT_EQ(command_line.construct_xml(),
              "<methodCall><methodName>RequestHandler.CompareMerge</methodName><params>" + string +
                  array + array + string + "</params></methodCall>");
}

TEST(RequestDocument, DoesNotShowFavouredContributorBlanksOrEncoding)
{
    DiffMrgCommandLineInfo command_line = compare_of_two();
    const std::string plain = command_line.construct_xml();

    command_line.favor_contrib_given = true;
    command_line.favor_contrib = "2";
    command_line.blank_ignore = true;
    command_line.encoding = "utf-32be";

    EXPECT_EQ(command_line.construct_xml(), plain);
}

} // namespace
