/*
 * A sentence above the text, perhaps with one thing to do about it: that contributors differ in
 * nothing but their marks, that a file has changed on disk.
 */
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <functional>

class NoticeBar : public QWidget
{
  public:
    explicit NoticeBar(QWidget* parent = nullptr);

    void tell(const QString& sentence);

    /** `action` is called when the button is pressed; the notice goes then. */
    void offer(const QString& sentence, const QString& button_text, std::function<void()> action);

    void clear() { hide(); }
    QString text() const { return label.text(); }

  private:
    QLabel label;
    QPushButton button;
    std::function<void()> on_pressed{};
};
