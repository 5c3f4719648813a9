/*
 * A second reading of the command line's grammar, for comparison with the product's parser. It has
 * no states: a table tells what each flag means, and a flag with a value looks ahead for it.
 */
#pragma once

#include "cmdline/command_line_info.h"

#include <iosfwd>
#include <string>
#include <vector>

/** All that one parse leaves behind. */
struct ParseResult {
    bool error = false;
    bool merge = false;
    bool blank_ignore = false;
    bool favor_given = false;
    bool encoding_given = false;
    int awaited = 0;
    std::vector<std::string> contributors = {};
    std::vector<std::string> names = {};
    std::string out = {};
    std::string favor = {};
    std::string encoding = {};

    bool operator==(const ParseResult&) const = default;
};

std::ostream& operator<<(std::ostream& out, const ParseResult& result);

/** What the grammar says about the words after the program's name. */
ParseResult model_parse(const std::vector<std::string>& words);

/** The product's parse in the same form. */
ParseResult result_of(const DiffMrgCommandLineInfo& command_line);
