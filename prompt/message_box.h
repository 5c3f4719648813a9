/*
 * The prompt as a window.
 */
#pragma once

#include "prompt/prompt_request.h"

#include <QMessageBox>

/** A message box that shows the request's text and a button for each answer offered. The first is
   the default; Escape and closing the window stand for "nobody agreed". */
class MessageBox : public QMessageBox
{
  public:
    explicit MessageBox(const PromptRequest& request);

    /** The answer whose button was pressed, once the box is closed. */
    Answer answer() const;

  private:
    Answer without_button;
};
