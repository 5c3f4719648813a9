/*
 * What every fuzzer has: its entry, which libFuzzer or replay.cpp calls with one input, and the
 * check by which it fails. An input that only makes no sense is none to fail at.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/** Tries one input; always 0. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/** Ends the process by a signal when what must hold of every input does not of this one. */
inline void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "not true of this input: %s\n", what);
    std::abort();
}

/** The input as text. */
inline std::string_view text_of(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}
