#include "viewer/window/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <memory>

namespace
{

/** Keeps a translation that could be loaded as long as the application lives. */
bool install(const QLocale& language, const QString& name, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(language, name, QStringLiteral("_"), folder))
        return false;
    translator->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace

void install_translations(const std::string& product_directory, const QStringList& languages)
{
    const QString folder = QString::fromLocal8Bit(product_directory.c_str());
    for (const QString& name : languages) {
        const QLocale locale(name);
        const QString language = QLocale::languageToCode(locale.language());
        if (locale.language() == QLocale::C || locale.language() == QLocale::English)
            return; // what the words are without a translation
        if (install(locale, QStringLiteral("quarnview"),
                    folder + "/share/locale/" + language + "/LC_MESSAGES")) {
            install(locale, QStringLiteral("qtbase"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath));
            return;
        }
    }
}
