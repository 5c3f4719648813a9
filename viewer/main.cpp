#include "viewer/attended.h"
#include "viewer/display.h"
#include "viewer/unattended.h"

#include <QCoreApplication>
#include <cstdio>

namespace
{

std::vector<std::string> plugin_folders()
{
    std::vector<std::string> folders;
    for (const QString& folder : QCoreApplication::libraryPaths())
        folders.push_back(folder.toStdString());
    return folders;
}

} // namespace

int main(int argc, char* argv[])
{
    if (!has_display())
        return serve_unattended();
    const auto platform = platform_of_display(plugin_folders());
    if (!platform) {
        std::fputs("quarnview: cannot open the display\n", stderr);
        return 1;
    }
    if (!platform->empty())
        qputenv("QT_QPA_PLATFORM", platform->c_str());
    return serve_attended(argc, argv);
}
