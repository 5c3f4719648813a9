#include "viewer/window/translations.h"

#include <QCoreApplication>
#include <QTranslator>
#include <gtest/gtest.h>

namespace
{

class Translations : public testing::Test
{
  public:
    Translations() = default;
    ~Translations() override
    {
        for (QTranslator* translator : QCoreApplication::instance()->findChildren<QTranslator*>())
            delete translator;
    }
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;
    Translations(Translations&&) = delete;
    Translations& operator=(Translations&&) = delete;

    static std::string words_in(const QStringList& languages)
    {
        install_translations(PRODUCT_TREE, languages);
        return QCoreApplication::translate("CompareView", "No differences").toStdString();
    }
};

TEST_F(Translations, AreInTheProductForARegionsLanguage)
{
    EXPECT_EQ(words_in({"de-CH", "de"}), "Keine Unterschiede");
}

TEST_F(Translations, ALanguageThatIsNotThereGivesWayToTheNext)
{
    EXPECT_EQ(words_in({"eo", "de"}), "Keine Unterschiede");
}

TEST_F(Translations, WhoPrefersEnglishGetsIt)
{
    EXPECT_EQ(words_in({"en-GB", "de"}), "No differences");
}

TEST_F(Translations, WithoutALocaleTheWordsAreEnglish)
{
    EXPECT_EQ(words_in({"C"}), "No differences");
}

} // namespace
