/*
 * What a window can show for one request: a compare, a merge, directories. A page has its own menus
 * and answers for the request when the window closes.
 */
#pragma once

#include "viewer/window/view_style.h"

#include <QMenuBar>
#include <QString>
#include <QToolBar>
#include <QWidget>
#include <functional>

class ViewerPage : public QWidget
{
  public:
    using QWidget::QWidget;

    virtual void set_style(SharedStyle shared) = 0;
    virtual void add_menus(QMenuBar& menus, QToolBar& tools) = 0;

    /** Takes the keyboard. */
    virtual void take_focus() = 0;

    /** Called once the page's first content can be seen: what need not come before. */
    virtual void after_shown() {}

    /** Whether work would be lost if the window closed now. */
    virtual bool has_unsaved_work() const { return false; }

    virtual bool can_save() const { return false; }
    virtual void save() {}

    /** The answer to the request if the window closed now. */
    virtual bool succeeds() const = 0;

    std::function<void(const QString& text)> on_status; // 'difference 3 of 17' and the like
    std::function<void(const QString& text)> on_place;  // of the caret
    std::function<void(bool busy)> on_busy;             // a comparison runs; can be cancelled
    std::function<void(const ViewOptions&)> on_options; // the user chose others
    std::function<void()> on_close_wanted;

    /** Stops what on_busy told of. */
    virtual void cancel() {}
};
