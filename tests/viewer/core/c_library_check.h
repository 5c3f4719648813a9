/*
 * Strict validity of text in one of the five encodings, fed in slices. The C library's converter
 * judges: truncated and overlong forms, surrogates, unpaired surrogates and values above 10FFFF are
 * all errors to it. (Its target is UTF-32 for that: the C library's wide characters take more.)
 */
#pragma once

#include <cstdint>
#include <iconv.h>
#include <string>
#include <string_view>

class CLibraryCheck
{
  public:
    /** `encoding` is a row of encoding_types. Throws std::system_error when the C library lacks its
        converter. */
    explicit CLibraryCheck(const char* encoding);
    ~CLibraryCheck();
    CLibraryCheck(const CLibraryCheck&) = delete;
    CLibraryCheck& operator=(const CLibraryCheck&) = delete;
    CLibraryCheck(CLibraryCheck&&) = delete;
    CLibraryCheck& operator=(CLibraryCheck&&) = delete;

    /** Takes the next bytes of the text; false when they hold an invalid sequence. */
    bool feed(std::string_view bytes);

    /** Tells that the text ends here; false when that cuts a character. */
    bool at_end() const { return unfinished.empty(); }

    /** How many bytes were valid: after a failure the offset of the first bad sequence. */
    std::uint64_t valid_bytes() const { return checked; }

  private:
    iconv_t converter;
    std::string unfinished; // the beginning of a character that a slice cut
    std::uint64_t checked = 0;
};
