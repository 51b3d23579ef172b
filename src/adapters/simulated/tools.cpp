// One member function for each tool, found by its path.
#include "src/adapters/simulated/tools.h"

#include <charconv>

#include "src/adapters/property_lists/codec.h"

namespace norvik {

namespace {

// A value in the words of a `defaults` command line.
using WordIterator = Tools::Arguments::const_iterator;

PropertyList integerWord(const std::string& word) {
  return leadingInteger(word);
}
PropertyList realWord(const std::string& word) {
  double value = 0;
  std::from_chars(word.data(), word.data() + word.size(), value);
  return value;
}
PropertyList booleanWord(const std::string& word) {
  const PropertyList text(word);
  return boolValue(&text);
}
PropertyList textWord(const std::string& word) {
  return word;
}

struct TypeWord {
  std::string_view word;
  PropertyList (*value)(const std::string& word);
};

constexpr TypeWord kTypeWords[] = {
    {"-int", integerWord},  {"-integer", integerWord}, {"-float", realWord},
    {"-bool", booleanWord}, {"-boolean", booleanWord}, {"-string", textWord},
};

// Removes one value from the words; nothing if they end too early.
std::optional<PropertyList> takeValue(WordIterator& word, WordIterator end) {
  if (word == end) return std::nullopt;
  for (const TypeWord& type : kTypeWords) {
    if (*word != type.word) continue;
    if (++word == end) return std::nullopt;
    return type.value(*word++);
  }
  return textWord(*word++);
}

// The rest of the words as keys and values.
std::optional<PropertyList> takeDictionary(WordIterator word, WordIterator end) {
  PropertyList::Dictionary dictionary;
  while (word != end) {
    const std::string& key = *word++;
    auto value = takeValue(word, end);
    if (!value) return std::nullopt;
    dictionary.insert_or_assign(key, std::move(*value));
  }
  return dictionary;
}

std::optional<PropertyList> valueOf(WordIterator word, WordIterator end) {
  if (word != end && *word == "-dict") return takeDictionary(word + 1, end);
  auto value = takeValue(word, end);
  return word == end ? value : std::nullopt;
}

std::optional<unsigned> octal(const std::string& digits) {
  unsigned mode = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), mode, 8);
  if (error != std::errc{} || end != digits.data() + digits.size() || mode > 07777) return std::nullopt;
  return mode;
}

}  // namespace

const Tools::Tool Tools::kTools[] = {
    {"/bin/mv", &Tools::mv},
    {"/bin/chmod", &Tools::chmod},
    {"/usr/sbin/chown", &Tools::chown},
    {"/usr/bin/defaults", &Tools::defaults},
    {"/usr/sbin/sysctl", &Tools::sysctl},
    {"/usr/sbin/nvkservice", &Tools::nvkservice},
};

Tools::Tools(FileSystem& fileSystem, ServerService& service) : fileSystem_(fileSystem), service_(service) {
  kernel_ = {{"kern.maxfiles", "12288"}, {"kern.maxfilesperproc", "10240"}};
}

void Tools::setOutput(const std::string& tool, const Arguments& arguments, std::string output) {
  outputs_.insert_or_assign({tool, arguments}, std::move(output));
}

void Tools::setKernelValue(const std::string& name, std::optional<std::string> value) {
  if (value) {
    kernel_.insert_or_assign(name, std::move(*value));
  } else {
    kernel_.erase(name);
  }
}

std::string Tools::run(const std::string& path, const Arguments& arguments) {
  std::string output;
  for (const Tool& tool : kTools) {
    if (tool.path == path) output = (this->*tool.run)(arguments);
  }
  const auto set = outputs_.find({path, arguments});
  return set == outputs_.end() ? output : set->second;
}

std::string Tools::mv(const Arguments& arguments) {
  const std::size_t options = !arguments.empty() && arguments[0] == "-f" ? 1 : 0;
  if (arguments.size() == options + 2) fileSystem_.move(arguments[options], arguments[options + 1]);
  return {};
}

std::string Tools::chmod(const Arguments& arguments) {
  if (arguments.size() != 2) return {};
  const auto mode = octal(arguments[0]);
  const auto file = fileSystem_.find(arguments[1]);
  if (mode && file != nullptr) file->mode = *mode;
  return {};
}

std::string Tools::chown(const Arguments& arguments) {
  if (arguments.size() != 2) return {};
  const auto file = fileSystem_.find(arguments[1]);
  // A group may follow a colon; files here have none.
  if (file != nullptr) file->owner = arguments[0].substr(0, arguments[0].find(':'));
  return {};
}

// `defaults write DOMAIN KEY VALUE`, where a domain is the path of a file without its extension.
std::string Tools::defaults(const Arguments& arguments) {
  if (arguments.size() < 4 || arguments[0] != "write" || !arguments[1].starts_with('/')) return {};
  auto value = valueOf(arguments.begin() + 3, arguments.end());
  const std::string path = arguments[1] + ".plist";
  auto file = fileSystem_.find(path);
  if (value && file == nullptr) file = fileSystem_.create(path, FileSystem::kRoot);
  if (!value || file == nullptr) return {};
  const auto list = decodePropertyList(file->bytes);
  const auto* known = list ? list->as<PropertyList::Dictionary>() : nullptr;
  PropertyList::Dictionary domain = known != nullptr ? *known : PropertyList::Dictionary{};
  domain.insert_or_assign(arguments[2], std::move(*value));
  file->bytes = encodeXmlPropertyList(domain);
  return {};
}

std::string Tools::sysctl(const Arguments& arguments) {
  if (arguments.size() != 2 || arguments[0] != "-n") return {};
  const auto value = kernel_.find(arguments[1]);
  return value == kernel_.end() ? "" : value->second + '\n';
}

std::string Tools::nvkservice(const Arguments& arguments) {
  service_.run(arguments);
  return {};
}

}  // namespace norvik
