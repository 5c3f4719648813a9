/*
 * Asks for a phrase to find, beneath the text. It searches nothing itself.
 */
#pragma once

#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <functional>

class FindBar : public QWidget
{
    Q_DECLARE_TR_FUNCTIONS(FindBar)

  public:
    explicit FindBar(QWidget* parent = nullptr);

    /** Shows the bar, with a phrase to begin with where that is not empty. */
    void ask(const QString& begin_with);

    QString phrase() const { return line.text(); }
    bool match_case() const { return case_box.isChecked(); }
    bool wraps() const { return wrap_box.isChecked(); }

    /** Says so when nothing was found. */
    void tell(bool found);

    std::function<void(bool forward)> on_find;
    std::function<void()> on_changed; // the phrase or what it means
    std::function<void()> on_closed;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void close_bar();

    QLineEdit line;
    QCheckBox case_box;
    QCheckBox wrap_box;
    QLabel outcome;
};
