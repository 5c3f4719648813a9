/*
 * Bytes of the five encodings to UTF-8 and back, strictly. These are our own decoders: the C
 * library's converter judges alike, as a test shows, but takes longer than all the rest of showing
 * a text, and does not tell what is wrong. Byte-order marks are characters here like others.
 */
#pragma once

#include "viewer/core/text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

struct BadSequence {
    TextFault fault;
    std::size_t offset; // of its first byte
};

struct Decoded {
    std::string content;            // valid UTF-8: all, or what is before the bad sequence
    std::optional<BadSequence> bad; // the first one
};

/** `encoding` is a row of encoding_types, here and below. */
Decoded to_utf8(std::string bytes, int encoding);

/** `content` is valid UTF-8. */
std::string from_utf8(std::string_view content, int encoding);
