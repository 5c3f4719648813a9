#include "viewer/window/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace
{

/** Keeps a translation that could be loaded as long as the application lives. */
void install(QTranslator* translator, bool is_loaded)
{
    if (is_loaded)
        QCoreApplication::installTranslator(translator);
}

} // namespace

void install_translations(const std::string& product_directory)
{
    const QLocale locale;
    const QString language = QLocale::languageToCode(locale.language());
    const QString folder = QString::fromLocal8Bit(product_directory.c_str()) +
                           QStringLiteral("/share/locale/") + language +
                           QStringLiteral("/LC_MESSAGES");
    auto* toolkit = new QTranslator(QCoreApplication::instance());
    install(toolkit, toolkit->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                                   QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
    auto* own = new QTranslator(QCoreApplication::instance());
    install(own, own->load(folder + QStringLiteral("/quarnview.qm")));
}
