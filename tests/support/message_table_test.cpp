#include "support/message_table.h"

#include "tests/support/captured_messages.h"

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <ostream>

namespace
{

const imsg_table& table = _uquarndiffmrg_uquarndiffmrg_msg_table;

struct Entry {
    MessagePosition position;
    int index;
    int number;
    const char* text;
};

void PrintTo(const Entry& entry, std::ostream* out)
{
    *out << "number_" << entry.number;
}

constexpr Entry entries[] = {
    {MSG_USAGE, 0, 1,
     "Usage: uquarndiffmrg [ -out output-pname ] [ -blank_ignore ] -encoding "
     "[utf-8|utf-16le|utf-16be|utf-32le|utf-32be] [ -base pname ] contrib-pname .."},
    {MSG_UNRECOGNIZED_OPTION, 1, 2, "Unrecognized option"},
    {MSG_FLAG_REQUIRES_PARAMETER, 2, 3, "A specified flag requires a parameter."},
    {MSG_FAVOR_CONTRIB_REQUIRED, 3, 4,
     R"(You must supply the "-favor_contrib" option when the "-blank_ignore" option is used in )"
     "merge mode."},
    {MSG_TOO_FEW_CONTRIBUTORS, 4, 5, "At least two objects must be supplied to compare."},
    {MSG_FAVOR_CONTRIB_INVALID, 5, 6, "The favor contributor specified is invalid."},
    {MSG_BASE_AFTER_CONTRIBUTOR, 6, 7,
     "If the /base command line switch is used, it must appear before the names of any "
     "contributor files or directories"},
    {MSG_INCORRECT_ENCODING, 7, 8, "Incorrect Encoding Option was Specified"},
    {MSG_UI_NOT_AVAILABLE, 8, 10,
     "Currently the UTF8 Compare / Merge UI is not available on this platform. However you can "
     "access this UTF8 Compare/Merge functionality from a command line interface. For additional "
     "details, please refer to the Release Notes"},
};

class MessageTableEntry : public testing::TestWithParam<Entry>
{};

TEST_P(MessageTableEntry, HasItsPositionItsCatalogueNumberAndItsText)
{
    const Entry& entry = GetParam();
    EXPECT_EQ(entry.position, entry.index);
    ASSERT_LT(entry.index, table.count);
    EXPECT_EQ(table.catalogue_numbers[entry.index], entry.number);
    EXPECT_STREQ(table.texts[entry.index], entry.text);
}

INSTANTIATE_TEST_SUITE_P(All, MessageTableEntry, testing::ValuesIn(entries));

TEST(MessageTable, NamesItsCatalogueItsPrefixAndItsSet)
{
    EXPECT_STREQ(table.catalogue_name, "uquarndiffmrg_bin");
    EXPECT_STREQ(table.short_prefix, "qlx");
    EXPECT_EQ(table.catalogue_id, 63);
}

TEST(MessageTable, HoldsNineEntries)
{
    EXPECT_EQ(table.count, 9);
}

// Read by hand, as a message library that knows only the record's layout does.
TEST(MessageTable, CanBeReadByOffsetsAlone)
{
    const auto* record = reinterpret_cast<const char*>(&table);
    constexpr std::size_t pointer = sizeof(void*);
    const char* name = nullptr;
    const char* prefix = nullptr;
    std::uint16_t id = 0;
    std::uint16_t count = 0;
    const char* const* texts = nullptr;
    const std::uint16_t* numbers = nullptr;
    constexpr std::size_t arrays = pointer == 4 ? 12 : 24;

    std::memcpy(&name, record, pointer);
    std::memcpy(&prefix, record + pointer, pointer);
    std::memcpy(&id, record + 2 * pointer, 2);
    std::memcpy(&count, record + 2 * pointer + 2, 2);
    std::memcpy(&texts, record + arrays, pointer);
    std::memcpy(&numbers, record + arrays + pointer, pointer);

    EXPECT_STREQ(name, "uquarndiffmrg_bin");
    EXPECT_STREQ(prefix, "qlx");
    EXPECT_EQ(id, 63);
    EXPECT_EQ(count, 9);
    EXPECT_STREQ(texts[1], "Unrecognized option");
    EXPECT_EQ(numbers[8], 10);
}

TEST(PrintMessage, ShowsTheEntryAndALineEndOnStandardError)
{
    const CapturedMessages captured;

    print_message(MSG_INCORRECT_ENCODING);

    EXPECT_EQ(uquarndiffmrg_err_msg, "Incorrect Encoding Option was Specified\n");
    EXPECT_EQ(uquarndiffmrg_out_msg, "");
}

} // namespace
