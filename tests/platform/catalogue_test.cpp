#include "support/message_table.h"
#include "tests/harness/program.h"
#include "tests/harness/scratch.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nl_types.h>
#include <optional>

namespace
{

namespace fs = std::filesystem;

const imsg_table& table = _uquarndiffmrg_uquarndiffmrg_msg_table;

constexpr const char* english = "At least two objects must be supplied to compare.\n";
constexpr const char* german =
    "Für einen Vergleich müssen mindestens zwei Objekte angegeben werden.\n";

/** A product tree of the test's own with the probe and the product's catalogues in it. */
class CatalogueLookUp : public testing::Test
{
  protected:
    Scratch scratch;

    void SetUp() override
    {
        fs::create_directory(scratch / "bin");
        fs::copy_file(PROBE, scratch / "bin/platform_probe");
        fs::create_symlink(PRODUCT_SHARE, scratch / "share");
    }

    std::string message(int position, const std::string& locale,
                        const std::string& nlspath = "") const
    {
        Invocation run = invocation(scratch, scratch / "bin/platform_probe",
                                    {"message", std::to_string(position)});
        run.environment["LOCPATH"] = LOCALE_FOLDER;
        run.environment["LC_ALL"] = locale;
        if (!nlspath.empty())
            run.environment["NLSPATH"] = nlspath;
        return Program(run).run().err;
    }
};

TEST_F(CatalogueLookUp, InTheCLocaleShowsTheBuiltInText)
{
    EXPECT_EQ(message(MSG_TOO_FEW_CONTRIBUTORS, "C"), english);
}

TEST_F(CatalogueLookUp, InAGermanLocaleShowsTheProductsGermanText)
{
    EXPECT_EQ(message(MSG_TOO_FEW_CONTRIBUTORS, "de_DE.UTF-8"), german);
}

TEST_F(CatalogueLookUp, WithoutACatalogueInTheProductShowsTheBuiltInText)
{
    fs::remove(scratch / "share");
    EXPECT_EQ(message(MSG_TOO_FEW_CONTRIBUTORS, "de_DE.UTF-8"), english);
}

// The catalogues of bare languages are UTF-8, which this locale cannot show.
TEST_F(CatalogueLookUp, InALocaleThatIsNotUtf8ShowsTheBuiltInText)
{
    EXPECT_EQ(message(MSG_TOO_FEW_CONTRIBUTORS, "de_DE.ISO-8859-1"), english);
}

TEST_F(CatalogueLookUp, InALocaleThatIsNotUtf8TakesACatalogueOfItsWholeName)
{
    fs::remove(scratch / "share");
    const std::string folder = scratch / "share/locale/de_DE.ISO-8859-1/LC_MESSAGES";
    fs::create_directories(folder);
    fs::copy_file(CATALOGUE_FOLDER "/uquarndiffmrg_bin.cat", folder + "/uquarndiffmrg_bin.cat");

    EXPECT_EQ(message(MSG_UI_NOT_AVAILABLE, "de_DE.ISO-8859-1"), "The last one from NLSPATH\n");
}

TEST_F(CatalogueLookUp, PrefersALanguageWithItsCountry)
{
    fs::remove(scratch / "share");
    fs::create_directories(scratch / "share");
    fs::copy(PRODUCT_SHARE, scratch / "share", fs::copy_options::recursive);
    const std::string folder = scratch / "share/locale/de_DE/LC_MESSAGES";
    fs::create_directories(folder);
    fs::copy_file(CATALOGUE_FOLDER "/uquarndiffmrg_bin.cat", folder + "/uquarndiffmrg_bin.cat");

    EXPECT_EQ(message(MSG_UI_NOT_AVAILABLE, "de_DE.UTF-8"), "The last one from NLSPATH\n");
}

TEST_F(CatalogueLookUp, ThroughNlspathFindsTheNumberInItsSet)
{
    const std::string path = CATALOGUE_FOLDER "/%N.cat";
    EXPECT_EQ(message(MSG_UI_NOT_AVAILABLE, "C", path), "The last one from NLSPATH\n");
}

TEST_F(CatalogueLookUp, TakesNoCataloguesTextForAFormat)
{
    const std::string path = CATALOGUE_FOLDER "/%N.cat";
    EXPECT_EQ(message(MSG_USAGE, "C", path), "Usage from NLSPATH: 100% %s %n\n");
}

TEST_F(CatalogueLookUp, FallsBackToTheBuiltInTextForANumberThatIsMissing)
{
    const std::string path = CATALOGUE_FOLDER "/%N.cat";
    EXPECT_EQ(message(MSG_INCORRECT_ENCODING, "C", path),
              "Incorrect Encoding Option was Specified\n");
}

TEST_F(CatalogueLookUp, GoesFromNlspathOnToTheProductForANumberThatIsMissing)
{
    const std::string path = CATALOGUE_FOLDER "/%N.cat";
    EXPECT_EQ(message(MSG_TOO_FEW_CONTRIBUTORS, "de_DE.UTF-8", path), german);
}

TEST_F(CatalogueLookUp, PrefersNlspathToTheProduct)
{
    const std::string path = CATALOGUE_FOLDER "/%N.cat";
    EXPECT_EQ(message(MSG_UI_NOT_AVAILABLE, "de_DE.UTF-8", path), "The last one from NLSPATH\n");
}

std::optional<std::string> product_text(const std::string& language, int number)
{
    const std::string file =
        PRODUCT_SHARE "/locale/" + language + "/LC_MESSAGES/uquarndiffmrg_bin.cat";
    nl_catd catalogue = ::catopen(file.c_str(), 0);
    const char* found = ::catgets(catalogue, table.catalogue_id, number, nullptr);
    auto text = found != nullptr ? std::optional<std::string>(found) : std::nullopt;
    ::catclose(catalogue);
    return text;
}

TEST(ProductCatalogues, HaveTheBuiltInTextsInEnglishByteForByte)
{
    for (int i = 0; i < table.count; ++i)
        EXPECT_EQ(product_text("en", table.catalogue_numbers[i]), table.texts[i]);
}

TEST(ProductCatalogues, HaveEveryNumberInGermanWithAnotherText)
{
    for (int i = 0; i < table.count; ++i) {
        const auto text = product_text("de", table.catalogue_numbers[i]);
        ASSERT_TRUE(text.has_value()) << i;
        EXPECT_NE(*text, table.texts[i]);
    }
}

} // namespace
