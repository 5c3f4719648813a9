/*
 * What tests of windows share: an application on a platform without a screen, settings of their
 * own, and keys for whatever has the focus. Waiting means running the event loop until something is
 * so.
 */
#pragma once

#include "tests/harness/scratch.h"
#include "viewer/window/contributor.h"
#include "viewer/window/view_style.h"

#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

SharedStyle style_with(const ViewOptions& options = {});

class WindowTest : public testing::Test
{
  public:
    WindowTest();

    /** Files "1", "2", ... with these contents, in UTF-8. */
    std::vector<std::string> files(std::initializer_list<std::string_view> contents) const;

    /** The same, read. */
    Contributors contributors(std::initializer_list<std::string_view> contents) const;

    Scratch scratch;
};

/** Presses a key, with shortcuts and all, in the widget that has the focus in `window`. */
void press(QWidget& window, const char* keys);

/** Types text there. */
void type(QWidget& window, const char* text);
