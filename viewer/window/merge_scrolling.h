/*
 * The two halves of a merge, the contributors above and the result below, which scroll as one:
 * whichever is moved, the other one follows to the same region.
 */
#pragma once

#include "viewer/core/merge_result.h"
#include "viewer/window/result_pane.h"
#include "viewer/window/side_by_side.h"

class MergeScrolling
{
  public:
    /** Neither half follows while there is no result. */
    MergeScrolling(SideBySide& above, ResultPane& below) : side(above), pane(below) {}

    /** Null while there is none. */
    void set_result(const MergeResult* merged) { result = merged; }

    /** To be called when a half was scrolled. */
    void follow_contributors();
    void follow_result();

    /** Shows a region in both halves. */
    void go_to_region(std::size_t region);

  private:
    SideBySide& side;
    ResultPane& pane;
    const MergeResult* result = nullptr;
    bool is_following = false; // one half scrolls since the other one did
};
