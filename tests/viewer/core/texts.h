/*
 * Texts for tests: from literals, and at random but the same in every run.
 */
#pragma once

#include "viewer/core/merge.h"
#include "viewer/core/text.h"

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

/** A text in UTF-8 without a mark. */
std::shared_ptr<const Text> text_of(std::string_view content);

Texts texts_of(std::initializer_list<std::string_view> contents);

/** An ancestor and two sides that were edited from it. Few different lines, many of them alike, so
    that there is often more than one way to match them; the sides often edit the same places. */
struct Triple {
    std::string ancestor;
    std::string first;
    std::string second;

    Texts texts() const { return texts_of({ancestor, first, second}); }
};

class TripleMaker
{
  public:
    explicit TripleMaker(unsigned seed) : engine(seed) {}

    Triple make();

    /** The text with a few edits. */
    std::string next_version(const std::string& content);

  private:
    using Lines = std::vector<std::string>;

    std::size_t below(std::size_t limit) { return engine() % limit; }
    std::string line();
    void edit(Lines& lines, std::size_t at);
    Lines edited(const Lines& ancestor, const std::vector<std::size_t>& places);
    std::string joined_lines(const Lines& lines);

    std::mt19937 engine;
};

/** The texts of all regions, with git's markers around conflicts. */
std::string with_markers(const Triple& triple, const MergePlan& plan);
