/*
 * A window's manager takes its time to put a window on the screen. On X, this paints the window
 * meanwhile, and puts that picture into it when the display first asks for one, before the toolkit
 * has dealt with all else that comes with being on the screen, and paints.
 */
#pragma once

#include <QAbstractNativeEventFilter>
#include <QRegion>
#include <QWidget>
#include <chrono>
#include <functional>

class FirstPicture : public QAbstractNativeEventFilter
{
  public:
    explicit FirstPicture(QWidget& window);
    ~FirstPicture() override;
    FirstPicture(const FirstPicture&) = delete;
    FirstPicture& operator=(const FirstPicture&) = delete;
    FirstPicture(FirstPicture&&) = delete;
    FirstPicture& operator=(FirstPicture&&) = delete;

    /** Paints the window of a program that waits, before it is shown, without showing it. */
    void prepare();

    /** Paints that region of the window, or all of it where it was not prepared in this size,
       unless it is on the screen already. `then` is called once it is there; where that is not
       known, since there is no X, at once. */
    void paint_what_changed(const QRegion& changed, std::function<void()> then);

    bool is_being_painted() const { return painting; }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  private:
    void paint(const QRegion& region);
    void put_on_screen(std::chrono::milliseconds rest);

    QWidget& shown;
    bool painting = false;
    std::function<void()> next{}; // what waits for a painted window to be on the screen
};
