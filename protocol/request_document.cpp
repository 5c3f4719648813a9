#include "cmdline/command_line_info.h"
#include "cmdline/encodings.h"
#include "protocol/request_fragments.h"

namespace
{

namespace fragments = request_fragments;

constexpr std::size_t typical_size = 1024;

void append_string(std::string& document, std::string_view text)
{
    document += fragments::string_start;
    document += text;
    document += fragments::string_end;
}

void append_array(std::string& document, const std::vector<std::string>& texts)
{
    document += fragments::array_start;
    for (const std::string& text : texts) {
        document += fragments::element_start;
        document += text;
        document += fragments::element_end;
    }
    document += fragments::array_end;
}

} // namespace

std::string DiffMrgCommandLineInfo::construct_xml() const
{
    std::string document;
    document.reserve(typical_size);
    document += fragments::call_start;
    document += merge_mode ? fragments::method_merge : fragments::method_compare;
    document += fragments::params_start;
    if (merge_mode)
        append_string(document, out_pname);
    append_array(document, fnames);
    append_array(document, contributors);
    append_string(document, encoding_given ? type_manager : type_manager_names[0]);
    document += fragments::document_end;
    return document;
}
