#include "viewer/window/view_options.h"

#include <QSettings>
#include <algorithm>

namespace
{

constexpr const char* organisation = "Quarnfold";
constexpr const char* program = "quarnview";

QString geometry_key(const char* window)
{
    return QStringLiteral("window/") + QLatin1String(window);
}

} // namespace

ViewOptions load_view_options()
{
    const QSettings kept(QSettings::IniFormat, QSettings::UserScope, organisation, program);
    const auto number = [&](const char* name, int otherwise, int least, int most) {
        return std::clamp(kept.value(QLatin1String(name), otherwise).toInt(), least, most);
    };
    const auto flag = [&](const char* name) {
        return kept.value(QLatin1String(name), false).toBool();
    };
    return {
        .wrap = flag("view/wrap"),
        .white_space = flag("view/white_space"),
        .collapse = flag("view/collapse"),
        .font_growth = number("view/font_growth", 0, least_font_growth, most_font_growth),
        .tab_cells = number("view/tab_cells", 8, 1, 16),
        .compare = {.white_space = static_cast<WhiteSpace>(number("compare/white_space", 0, 0, 2)),
                    .ignore_case = flag("compare/ignore_case"),
                    .ignore_line_ends = flag("compare/ignore_line_ends"),
                    .ignore_blank_lines = flag("compare/ignore_blank_lines")}};
}

void save_view_options(const ViewOptions& options)
{
    QSettings kept(QSettings::IniFormat, QSettings::UserScope, organisation, program);
    kept.setValue("view/wrap", options.wrap);
    kept.setValue("view/white_space", options.white_space);
    kept.setValue("view/collapse", options.collapse);
    kept.setValue("view/font_growth", options.font_growth);
    kept.setValue("view/tab_cells", options.tab_cells);
    kept.setValue("compare/white_space", static_cast<int>(options.compare.white_space));
    kept.setValue("compare/ignore_case", options.compare.ignore_case);
    kept.setValue("compare/ignore_line_ends", options.compare.ignore_line_ends);
    kept.setValue("compare/ignore_blank_lines", options.compare.ignore_blank_lines);
}

QByteArray load_geometry(const char* window)
{
    const QSettings kept(QSettings::IniFormat, QSettings::UserScope, organisation, program);
    return kept.value(geometry_key(window)).toByteArray();
}

void save_geometry(const char* window, const QByteArray& geometry)
{
    QSettings kept(QSettings::IniFormat, QSettings::UserScope, organisation, program);
    kept.setValue(geometry_key(window), geometry);
}
