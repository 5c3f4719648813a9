#include "tests/viewer/window/window_test.h"

#include <QApplication>
#include <QFontDatabase>
#include <QKeySequence>
#include <QSettings>

namespace
{

QWidget* receiver(QWidget& window)
{
    return window.focusWidget() != nullptr ? window.focusWidget() : &window;
}

} // namespace

SharedStyle style_with(const ViewOptions& options)
{
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    return std::make_shared<const ViewStyle>(ViewStyle{
        GlyphMetrics(font, 1, options.tab_cells), ViewerPalette(QApplication::palette()), options});
}

WindowTest::WindowTest()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QString::fromStdString(scratch.path()));
}

std::vector<std::string> WindowTest::files(std::initializer_list<std::string_view> contents) const
{
    std::vector<std::string> paths;
    for (const std::string_view content : contents)
        paths.push_back(scratch.write_file(std::to_string(paths.size() + 1), content));
    return paths;
}

Contributors WindowTest::contributors(std::initializer_list<std::string_view> contents) const
{
    return read_contributors(files(contents), {}, 0);
}

void press(QWidget& window, const char* keys)
{
    const QKeyCombination key = QKeySequence(QLatin1String(keys))[0];
    QTest::keyClick(receiver(window), key.key(), key.keyboardModifiers());
}

void type(QWidget& window, const char* text)
{
    QTest::keyClicks(receiver(window), QLatin1String(text));
}

int main(int argc, char* argv[])
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
