/*
 * Stands in place of a contributor that cannot be shown, and says why: which bytes of the file are
 * no text in the encoding that was named, and where, or what the system answered.
 */
#pragma once

#include "viewer/core/text.h"

#include <QLabel>

/** The problem in whole sentences. */
QString describe(const TextProblem& problem, int encoding);

class ProblemPanel : public QLabel
{
  public:
    explicit ProblemPanel(QWidget* parent = nullptr);

    void show_problem(const TextProblem& problem, const QString& path, int encoding);
};
