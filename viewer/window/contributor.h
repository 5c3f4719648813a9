/*
 * One contributor as a window shows it, and the reading of all of a request's at once.
 */
#pragma once

#include "viewer/core/text.h"

#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct Contributor {
    std::string path{}; // absolute
    QString name{};     // for display
    QString facts{};    // encoding, mark, ends of lines
    int encoding = 0;
    std::shared_ptr<const Text> text{}; // empty where there is a problem
    std::optional<TextProblem> problem{};
    bool is_directory = false;
};

using Contributors = std::vector<Contributor>;

/** The contributors as they are known before they are read; the names may be fewer than the paths.
 */
Contributors name_contributors(const std::vector<std::string>& paths,
                               const std::vector<std::string>& names, int encoding);

/** The contributors with the first lines of those that take long to read; nothing where none does.
 */
std::optional<Contributors> read_beginnings(Contributors named);

/** Reads the contributors side by side; the names may be fewer than the paths. */
Contributors read_contributors(const std::vector<std::string>& paths,
                               const std::vector<std::string>& names, int encoding);

Texts texts_of(const Contributors& contributors);

bool all_shown(const Contributors& contributors);
