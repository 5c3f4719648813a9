#include "viewer/window/option_menus.h"

#include "viewer/window/actions.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

namespace
{

struct Translated {
    Q_DECLARE_TR_FUNCTIONS(OptionMenus)
};

constexpr std::array tab_widths{2, 3, 4, 8};

/** An entry for one flag of the options. */
void add_flag(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
              const OptionChanges& options, const std::function<bool&(ViewOptions&)>& flag)
{
    ViewOptions now = options.current();
    add_switch(menu, text, keys, flag(now), [options, flag](bool on) {
        ViewOptions changed = options.current();
        flag(changed) = on;
        options.change(changed);
    });
}

void add_font_sizes(QMenu& menu, const OptionChanges& options)
{
    const auto grow = [options](int points) {
        options.change(with_font_growth(options.current(), points));
    };
    add_entry(menu, Translated::tr("&Larger Letters"),
              {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")}, [grow] { grow(1); });
    add_entry(menu, Translated::tr("&Smaller Letters"), {QKeySequence("Ctrl+-")},
              [grow] { grow(-1); });
    add_entry(menu, Translated::tr("&Normal Letters"), {QKeySequence("Ctrl+0")}, [options] {
        ViewOptions changed = options.current();
        changed.font_growth = 0;
        options.change(changed);
    });
}

void add_tab_widths(QMenu& menu, const OptionChanges& options)
{
    QStringList texts;
    for (const int width : tab_widths)
        texts.append(QString::number(width));
    const auto* const chosen = std::ranges::find(tab_widths, options.current().tab_cells);
    add_choices(*menu.addMenu(Translated::tr("&Tab Width")), texts,
                static_cast<int>(chosen - tab_widths.begin()), [options](int index) {
                    ViewOptions changed = options.current();
                    changed.tab_cells = tab_widths.at(static_cast<std::size_t>(index));
                    options.change(changed);
                });
}

} // namespace

ViewOptions with_font_growth(ViewOptions options, int points)
{
    options.font_growth =
        std::clamp(options.font_growth + points, least_font_growth, most_font_growth);
    return options;
}

void add_view_options(QMenu& menu, const OptionChanges& options)
{
    add_flag(menu, Translated::tr("&Wrap Long Lines"), {QKeySequence("Alt+Z")}, options,
             [](ViewOptions& all) -> bool& { return all.wrap; });
    add_flag(menu, Translated::tr("Show White S&pace"), {QKeySequence("Alt+W")}, options,
             [](ViewOptions& all) -> bool& { return all.white_space; });
    add_flag(menu, Translated::tr("&Collapse Equal Lines"), {QKeySequence("Alt+C")}, options,
             [](ViewOptions& all) -> bool& { return all.collapse; });
    menu.addSeparator();
    add_font_sizes(menu, options);
    add_tab_widths(menu, options);
}

void add_compare_options(QMenu& menu, const OptionChanges& options)
{
    const QStringList texts{Translated::tr("White Space &Counts"),
                            Translated::tr("Ignore the &Amount of White Space"),
                            Translated::tr("Ignore &All White Space")};
    add_choices(menu, texts, static_cast<int>(options.current().compare.white_space),
                [options](int index) {
                    ViewOptions changed = options.current();
                    changed.compare.white_space = static_cast<WhiteSpace>(index);
                    options.change(changed);
                });
    menu.addSeparator();
    add_flag(menu, Translated::tr("Ignore Upper and &Lower Case"), {}, options,
             [](ViewOptions& all) -> bool& { return all.compare.ignore_case; });
    add_flag(menu, Translated::tr("Ignore Line &Ends"), {}, options,
             [](ViewOptions& all) -> bool& { return all.compare.ignore_line_ends; });
    add_flag(menu, Translated::tr("Ignore &Blank Lines"), {}, options,
             [](ViewOptions& all) -> bool& { return all.compare.ignore_blank_lines; });
}
