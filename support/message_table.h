/*
 * The launcher's messages: every text that it shows its user on the console, in the record that the
 * message library reads.
 */
#pragma once

#include "platform/imsg.h"

/** Positions in the message table; the catalogue number beside each where it is not position + 1.
 */
enum MessagePosition {
    MSG_USAGE,
    MSG_UNRECOGNIZED_OPTION,
    MSG_FLAG_REQUIRES_PARAMETER,
    MSG_FAVOR_CONTRIB_REQUIRED,
    MSG_TOO_FEW_CONTRIBUTORS,
    MSG_FAVOR_CONTRIB_INVALID,
    MSG_BASE_AFTER_CONTRIBUTOR,
    MSG_INCORRECT_ENCODING,
    MSG_UI_NOT_AVAILABLE // 10
};

// The family's message library finds the table by this name.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const imsg_table _uquarndiffmrg_uquarndiffmrg_msg_table;

/** Shows the message at `position` on standard error, in the user's language. */
void print_message(MessagePosition position);
