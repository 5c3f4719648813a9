#include "viewer/window/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <memory>
#include <utility>

namespace
{

/** Keeps a translation as long as the application lives. */
void install(std::unique_ptr<QTranslator> translator)
{
    translator->setParent(QCoreApplication::instance());
    QCoreApplication::installTranslator(translator.release());
}

bool install_own(const QString& product_directory, const QString& language)
{
    auto words = std::make_unique<QTranslator>();
    if (!words->load(product_directory + "/share/locale/" + language + "/LC_MESSAGES/quarnview.qm"))
        return false;
    install(std::move(words));
    return true;
}

void install_toolkits(const QLocale& locale)
{
    auto words = std::make_unique<QTranslator>();
    if (words->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        install(std::move(words));
}

} // namespace

void install_translations(const std::string& product_directory, const QStringList& languages)
{
    const QString folder = QString::fromLocal8Bit(product_directory.c_str());
    for (const QString& name : languages) {
        const QLocale locale(name);
        if (locale.language() == QLocale::C || locale.language() == QLocale::English)
            return; // what the words are without a translation
        if (install_own(folder, QLocale::languageToCode(locale.language()))) {
            install_toolkits(locale);
            return;
        }
    }
}
