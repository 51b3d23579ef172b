// Words of a locale: language, country, character set, variant: "de_AT.UTF-8@euro".
#include "src/frontends/shared/language/choice.h"

#include <algorithm>
#include <cstdlib>

#include "resources/resources.h"
#include "src/frontends/shared/language/catalogue.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

constexpr std::string_view kLanguages[] = {"de", "fr", "es", "ja", "ar"};
constexpr std::string_view kEnglish = "en";
constexpr std::string_view kFromTheRight[] = {"ar"};

std::string_view& spoken() {
  static std::string_view language = kEnglish;
  return language;
}

// "de_AT" and "de" of "de_AT.UTF-8@euro"; "en" of the locale that is nobody's.
void addLocale(std::vector<std::string>& languages, std::string_view locale) {
  const bool hasCharacterSet = locale.find('.') != std::string_view::npos;
  locale = locale.substr(0, locale.find_first_of(".@"));
  if (locale.empty()) return;
  // "C.UTF-8" is what systems without locales have.
  if (locale == "C" || locale == "POSIX") {
    if (!hasCharacterSet) languages.emplace_back(kEnglish);
    return;
  }
  languages.emplace_back(locale);
  const std::string_view language = locale.substr(0, locale.find_first_of("_-"));
  if (language != locale) languages.emplace_back(language);
}

}  // namespace

std::span<const std::string_view> shippedLanguages() {
  return kLanguages;
}

std::vector<std::string> wantedLanguages(const std::function<std::string(const char* name)>& value) {
  std::vector<std::string> ofLocale;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const std::string locale = value(name);
    if (locale.empty()) continue;
    addLocale(ofLocale, locale);
    break;
  }
  if (!ofLocale.empty() && ofLocale.front() == kEnglish) return ofLocale;
  std::vector<std::string> languages;
  const std::string list = value("LANGUAGE");
  for (std::string_view rest = list; !rest.empty();) {
    const std::size_t colon = std::min(rest.find(':'), rest.size());
    addLocale(languages, rest.substr(0, colon));
    rest.remove_prefix(std::min(colon + 1, rest.size()));
  }
  languages.insert(languages.end(), ofLocale.begin(), ofLocale.end());
  return languages;
}

std::vector<std::string> wantedLanguages() {
  return wantedLanguages([](const char* name) -> std::string {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
  });
}

std::string_view chooseLanguage(const std::vector<std::string>& wanted) {
  spoken() = kEnglish;
  speak(std::nullopt);
  for (const std::string& language : wanted) {
    if (language == kEnglish) break;
    const auto* const known = std::ranges::find(kLanguages, std::string_view(language));
    if (known == std::end(kLanguages)) continue;
    const auto bytes = resourceFile(*known, "mo");
    const auto catalogue = bytes ? Catalogue::read(*bytes) : std::nullopt;
    if (!catalogue) continue;
    speak(catalogue);
    spoken() = *known;
    break;
  }
  return spoken();
}

std::string_view spokenLanguage() {
  return spoken();
}

bool isRightToLeft() {
  return std::ranges::find(kFromTheRight, spoken()) != std::end(kFromTheRight);
}

}  // namespace norvik
