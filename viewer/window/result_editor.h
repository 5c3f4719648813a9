/*
 * The column in which a merge's result is edited. What is typed goes to the MergeResult at once,
 * which knows how to take it back; nothing of the text is kept here.
 */
#pragma once

#include "viewer/core/merge_result.h"
#include "viewer/window/text_column.h"

#include <functional>

class ResultEditor : public TextColumn
{
  public:
    explicit ResultEditor(SharedStyle shared, QWidget* parent = nullptr);

    /** Null while there is nothing to edit. */
    void edit(MergeResult* merged) { result = merged; }

    void cut();
    void paste();

    /** The result has changed, by typing here. */
    std::function<void()> on_edited;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void replace(TextPosition begin, TextPosition end, const QString& text, bool join);
    void type(const QString& text);
    void erase(TextPosition to);

    MergeResult* result = nullptr;
    QString composed{};      // by the input method, not part of the text yet
    TextPosition typed_to{}; // where typing last ended; typing on there is one step
    bool goes_on = false;
};
