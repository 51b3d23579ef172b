// Stand-in for the tool that changes preference files: "write" of an integer, or of a dictionary of
// integers. Other keys of the file, of any type, are kept.
#include <charconv>
#include <optional>
#include <stdexcept>

#include "sandbox/processes.h"
#include "sandbox/program.h"
#include "src/adapters/property_lists/codec.h"

namespace norvik::sandbox {
namespace {

constexpr const char* kUsage =
    "defaults write DOMAIN KEY -int N | defaults write DOMAIN KEY -dict [KEY -int N]...";

int64_t integerOf(const std::string& word) {
  int64_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc{} || *end != '\0') throw std::runtime_error(word + ": not an integer");
  return number;
}

// The value that the words after the key give; nothing when they give none.
std::optional<PropertyList> valueOf(const Arguments& words) {
  if (words.size() == 2 && words[0] == "-int") return PropertyList(integerOf(words[1]));
  if (words.empty() || words[0] != "-dict" || words.size() % 3 != 1) return std::nullopt;
  PropertyList::Dictionary entries;
  for (std::size_t i = 1; i < words.size(); i += 3) {
    if (words[i + 1] != "-int") return std::nullopt;
    entries[words[i]] = integerOf(words[i + 2]);
  }
  return PropertyList(std::move(entries));
}

int run(const Root& root, const Arguments& arguments) {
  if (arguments.size() < 4 || arguments[0] != "write") return usage(kUsage);
  auto value = valueOf(Arguments(arguments.begin() + 3, arguments.end()));
  if (!value) return usage(kUsage);
  waitForEarlierFileTools(root);
  const std::filesystem::path file = root.inside(arguments[1] + ".plist");
  PropertyList list;
  if (std::filesystem::exists(file)) {
    auto decoded = decodePropertyList(readFile(file).value_or(""));
    // A fresh list would drop what others keep there.
    if (!decoded || !decoded->as<PropertyList::Dictionary>())
      throw std::runtime_error(arguments[1] + ": not a readable dictionary");
    list = std::move(*decoded);
  }
  (*list.as<PropertyList::Dictionary>())[arguments[2]] = std::move(*value);
  std::filesystem::create_directories(file.parent_path());
  replaceFile(file, encodeXmlPropertyList(list));
  logLine(root, "tools", "defaults wrote " + arguments[2] + " of " + arguments[1]);
  return 0;
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
