/*
 * The examples of a manual page, as commands that a shell takes.
 */
#pragma once

#include <string>
#include <vector>

/** What stands behind "$ " in the page's section EXAMPLES, up to the next such line, with mdoc's
    escapes resolved. `page` is a file's name in docs/. */
std::vector<std::string> examples_of(const std::string& page);
