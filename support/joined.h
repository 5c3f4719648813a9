/*
 * Putting texts together, in one allocation.
 */
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

/** The texts, one directly after the other. */
inline std::string joined(std::initializer_list<std::string_view> texts)
{
    std::size_t size = 0;
    for (const std::string_view text : texts)
        size += text.size();
    std::string whole;
    whole.reserve(size);
    for (const std::string_view text : texts)
        whole += text;
    return whole;
}
