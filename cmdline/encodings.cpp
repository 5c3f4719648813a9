#include "cmdline/encodings.h"

const char encoding_types[encoding_rows][10] = {
    "utf-8", "utf-16le", "utf-16be", "utf-32le", "utf-32be", " ",
};

const char type_manager_names[encoding_rows][25] = {
    "utf8_file_delta",    "utf16le_file_delta", "utf16be_file_delta",
    "utf32le_file_delta", "utf32be_file_delta", " ",
};
