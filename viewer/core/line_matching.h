/*
 * Which lines count as equal. Each distinct line gets a number, the same one in all texts, and from
 * there on only numbers are compared. What is to be ignored is taken out before numbering.
 */
#pragma once

#include "viewer/core/text.h"

#include <cstdint>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

enum class WhiteSpace : std::uint8_t { counts, amount_ignored, ignored };

/** White space is space, tab, vertical tab and form feed. */
struct CompareOptions {
    WhiteSpace white_space = WhiteSpace::counts;
    bool ignore_case = false;
    bool ignore_line_ends = false;
    bool ignore_blank_lines = false;

    bool operator==(const CompareOptions&) const = default;
};

/** A number for each line of a text. */
using LineNumbers = std::vector<std::uint32_t>;

/** One vector for each text. Equal numbers mean equal lines; blank lines are not left out. What is
    returned after a stop is of no use. */
std::vector<LineNumbers> number_lines(const Texts& texts, const CompareOptions& options,
                                      const std::stop_token& stop = {});

/** Whether a line holds nothing but white space. */
bool is_blank(std::string_view line);
