/*
 * The literal fragments of a request document, which the launcher writes and the service decodes
 * by.
 *
 *   compare: call_start method_compare params_start
 *            names contributors type_manager document_end
 *   merge:   call_start method_merge params_start string_start OUTPUT string_end
 *            names contributors type_manager document_end
 *
 * `names` and `contributors` are array_start, element_start NAME element_end for each, array_end;
 * `type_manager` is string_start NAME string_end. There is no white space and no escaping.
 */
#pragma once

#include <string_view>

namespace request_fragments
{

inline constexpr std::string_view call_start = "<methodCall>";
inline constexpr std::string_view method_compare =
    "<methodName>RequestHandler.Compare</methodName>";
inline constexpr std::string_view method_merge =
    "<methodName>RequestHandler.CompareMerge</methodName>";
inline constexpr std::string_view params_start = "<params>";
inline constexpr std::string_view string_start = "<param><value><string>";
inline constexpr std::string_view string_end = "</string></value></param>";
inline constexpr std::string_view array_start = "<param><value><array>";
// One <data> per value departs on purpose from the usual XML-RPC array: the service parses exactly
// this form.
inline constexpr std::string_view element_start = "<data><value><string>";
inline constexpr std::string_view element_end = "</string></value></data>";
inline constexpr std::string_view array_end = "</array></value></param>";
inline constexpr std::string_view document_end = "</params></methodCall>";

} // namespace request_fragments
