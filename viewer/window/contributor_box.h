/*
 * One contributor's place in a window: its header, and beneath it its column of text, or the reason
 * why there is none.
 */
#pragma once

#include "viewer/window/column_header.h"
#include "viewer/window/contributor.h"
#include "viewer/window/problem_panel.h"
#include "viewer/window/text_column.h"

#include <QStackedLayout>
#include <QWidget>

class ContributorBox : public QWidget
{
  public:
    explicit ContributorBox(const SharedStyle& style, QWidget* parent = nullptr);

    /** `source` must live as long as the box shows it. */
    void show_contributor(const Contributor& contributor, const RowSource* source);

    TextColumn& column() { return text; }
    ColumnHeader& header() { return title; }

  private:
    ColumnHeader title;
    QWidget place;
    TextColumn text;
    ProblemPanel problem;
    QStackedLayout* stack;
};
