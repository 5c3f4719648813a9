/*
 * The words of the windows in the user's language, as far as the product has them.
 */
#pragma once

#include <QStringList>
#include <string>

/** Loads the first of these languages, as QLocale::uiLanguages has them, for which there is
    `<product>/share/locale/<language>/LC_MESSAGES/quarnview.qm`, and what the toolkit has for its
    own buttons. Without one, or from English on, the words stay English. To be called once, after
    the application is made. */
void install_translations(const std::string& product_directory, const QStringList& languages);
