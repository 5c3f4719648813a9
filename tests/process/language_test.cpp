// The language of the launcher's messages, with the catalogues of the product tree.
#include "tests/process/launcher_process.h"

namespace
{

class Language : public LauncherProcess
{
  protected:
    /** The product's launcher without contributors, which prints two messages. */
    Outcome run_in(const std::string& variable, const std::string& locale)
    {
        Invocation rejected = invocation(scratch, PRODUCT_LAUNCHER);
        rejected.environment.erase("LC_ALL");
        rejected.environment["LOCPATH"] = LOCALE_FOLDER;
        rejected.environment[variable] = locale;
        return run(rejected);
    }
};

TEST_F(Language, IsGermanInAGermanLocale)
{
    EXPECT_EQ(
        run_in("LC_ALL", "de_DE.UTF-8"),
        (Outcome{.exit_status = 255,
                 .err = "Für einen Vergleich müssen mindestens zwei Objekte angegeben werden.\n"
                        "Aufruf: uquarndiffmrg [ -out Ausgabepfad ] [ -blank_ignore ] -encoding "
                        "[utf-8|utf-16le|utf-16be|utf-32le|utf-32be] [ -base Pfad ] "
                        "Beitragspfad ..\n"}));
}

TEST_F(Language, IsEnglishWhereOnlyNumbersAreGerman)
{
    EXPECT_EQ(run_in("LC_NUMERIC", "de_DE.UTF-8"), too_few_contributors);
}

TEST_F(Language, IsEnglishInALocaleThatTheSystemLacks)
{
    EXPECT_EQ(run_in("LC_ALL", "xx_XX.UTF-8"), too_few_contributors);
}

} // namespace
