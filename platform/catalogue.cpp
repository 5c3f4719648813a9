#include "platform/catalogue.h"

#include "platform/ks.h"

#include <array>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <langinfo.h>
#include <nl_types.h>
#include <string_view>
#include <vector>

namespace
{

class Catalogue
{
  public:
    explicit Catalogue(const std::string& name) : catalogue(::catopen(name.c_str(), NL_CAT_LOCALE))
    {
    }
    ~Catalogue()
    {
        if (is_open())
            ::catclose(catalogue);
    }
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;
    Catalogue(Catalogue&&) = delete;
    Catalogue& operator=(Catalogue&&) = delete;

    std::optional<std::string> text(int set, int number) const
    {
        if (!is_open())
            return std::nullopt;
        const char* found = ::catgets(catalogue, set, number, nullptr);
        return found != nullptr ? std::optional<std::string>(found) : std::nullopt;
    }

  private:
    // catopen answers (nl_catd)-1 for "none"
    bool is_open() const { return reinterpret_cast<std::intptr_t>(catalogue) != -1; }

    nl_catd catalogue;
};

/** Locale names to try, the most specific first: "de_DE.UTF-8", "de_DE", "de". The shorter ones
   name UTF-8 catalogues, which only a UTF-8 locale can show. */
std::vector<std::string> locale_names()
{
    const std::string_view locale = std::setlocale(LC_MESSAGES, nullptr);
    std::vector<std::string> names{std::string(locale)};
    if (::nl_langinfo(CODESET) == std::string_view("UTF-8")) {
        names.emplace_back(locale.substr(0, locale.find_first_of(".@")));
        names.emplace_back(locale.substr(0, locale.find_first_of("_.@")));
    }
    return names;
}

std::vector<std::string> catalogue_files(const std::string& name)
{
    std::vector<std::string> files;
    if (std::getenv("NLSPATH") != nullptr)
        files.push_back(name);
    std::array<char, 4096> product{};
    const std::string folder = std::string(ks_product_dir(product.data(), 0)) + "/share/locale/";
    const std::string file = "/LC_MESSAGES/" + name + ".cat";
    for (const std::string& locale : locale_names())
        files.emplace_back(folder).append(locale).append(file);
    return files;
}

} // namespace

std::optional<std::string> catalogue_text(const char* name, int set, int number)
{
    for (const std::string& file : catalogue_files(name))
        if (auto text = Catalogue(file).text(set, number))
            return text;
    return std::nullopt;
}
