#include "support/message_table.h"

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace
{

// Positions 1, 2, 6 and 8 are never printed, deliberately: other readers of the table count on
// every entry's position and number.
constexpr const char* _msg_txts[] = {
    "Usage: uquarndiffmrg [ -out output-pname ] [ -blank_ignore ] "
    "-encoding [utf-8|utf-16le|utf-16be|utf-32le|utf-32be] [ -base pname ] contrib-pname ..",
    "Unrecognized option",
    "A specified flag requires a parameter.",
    "You must supply the \"-favor_contrib\" option when the \"-blank_ignore\" option is used in "
    "merge mode.",
    "At least two objects must be supplied to compare.",
    "The favor contributor specified is invalid.",
    "If the /base command line switch is used, it must appear before the names of any contributor "
    "files or directories",
    "Incorrect Encoding Option was Specified",
    "Currently the UTF8 Compare / Merge UI is not available on this platform. However you can "
    "access this UTF8 Compare/Merge functionality from a command line interface. For additional "
    "details, please refer to the Release Notes",
};

constexpr std::uint16_t _msg_catnums[] = {1, 2, 3, 4, 5, 6, 7, 8, 10};

static_assert(std::size(_msg_txts) == std::size(_msg_catnums));

// The record's layout is the message library's, on 32-bit and 64-bit machines alike.
constexpr std::size_t pointer = sizeof(void*);
static_assert(offsetof(imsg_table, catalogue_name) == 0);
static_assert(offsetof(imsg_table, short_prefix) == pointer);
static_assert(offsetof(imsg_table, catalogue_id) == 2 * pointer);
static_assert(offsetof(imsg_table, count) == 2 * pointer + 2);
static_assert(offsetof(imsg_table, texts) == (pointer == 4 ? 12 : 24));
static_assert(offsetof(imsg_table, catalogue_numbers) == (pointer == 4 ? 16 : 32));
static_assert(sizeof(imsg_table) == (pointer == 4 ? 20 : 40));

} // namespace

// NOLINTNEXTLINE(bugprone-reserved-identifier): see the declaration
const imsg_table _uquarndiffmrg_uquarndiffmrg_msg_table = {
    .catalogue_name = "uquarndiffmrg_bin",
    .short_prefix = "qlx",
    .catalogue_id = 63,
    .count = std::size(_msg_txts),
    .texts = _msg_txts,
    .catalogue_numbers = _msg_catnums,
};

void print_message(MessagePosition position)
{
    imsg_print(IMSG_ERROR, &_uquarndiffmrg_uquarndiffmrg_msg_table, position);
}
