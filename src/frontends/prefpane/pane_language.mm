// On the Mac the system keeps a list of language codes. In GNUstep a person may write a list of English names
// into the defaults of all programs; the toolkit invents one where nobody has, so only a list that is stored
// counts.
#import "src/frontends/prefpane/pane_language.h"

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/language/choice.h"

namespace norvik::prefpane {

namespace {

struct LanguageName {
  std::string_view name;
  std::string_view code;
};
constexpr LanguageName kLanguageNames[] = {{"English", "en"}, {"German", "de"},   {"French", "fr"},
                                           {"Spanish", "es"}, {"Japanese", "ja"}, {"Arabic", "ar"}};

// "de" of "German", of "de-AT" and of "de_AT".
std::string codeOf(std::string_view language) {
  for (const LanguageName& known : kLanguageNames) {
    if (known.name == language) return std::string(known.code);
  }
  return std::string(language.substr(0, language.find_first_of("-_.@")));
}

std::vector<std::string> storedLanguages() {
  NSDictionary* everywhere = [[NSUserDefaults standardUserDefaults] persistentDomainForName:NSGlobalDomain];
  const id list = [everywhere objectForKey:languageListKey()];
  std::vector<std::string> languages;
  if (![list isKindOfClass:[NSArray class]]) return languages;
  for (NSUInteger i = 0; i < [list count]; ++i) {
    const id each = [list objectAtIndex:i];
    if ([each isKindOfClass:[NSString class]]) languages.push_back(codeOf(utf8(each)));
  }
  return languages;
}

}  // namespace

void choosePaneLanguage() {
  std::vector<std::string> wanted = storedLanguages();
  if (wanted.empty()) wanted = wantedLanguages();
  chooseLanguage(wanted);
}

}  // namespace norvik::prefpane
