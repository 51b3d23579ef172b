// One member function for each tool, found by its path.
#include "src/adapters/simulated/tools.h"

#include <algorithm>
#include <charconv>

#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/text/reals.h"

namespace norvik {

namespace {

// A value in the words of a `defaults` command line.
using WordIterator = Tools::Arguments::const_iterator;

PropertyList integerWord(const std::string& word) {
  return leadingInteger(word);
}
PropertyList realWord(const std::string& word) {
  const auto number = leadingReal(word);
  return number && number->inRange ? number->value : 0.0;
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

Tools::Tools(FileSystem& fileSystem, ServerService& service, SimulatedClock& clock)
    : fileSystem_(fileSystem), service_(service), clock_(clock) {
  kernel_ = {{"kern.maxfiles", "12288"}, {"kern.maxfilesperproc", "10240"}};
  clock.addSleepListener([this](uint32_t) { proceed(); });
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

Tools::Behaviour& Tools::behaviourToSet(const std::string& tool,
                                        const std::optional<std::string>& firstArgument) {
  return behaviours_[{tool, firstArgument}];
}

void Tools::setFailure(const std::string& tool, const std::optional<std::string>& firstArgument, int status,
                       std::string words) {
  behaviourToSet(tool, firstArgument).ending =
      ToolOutcome{tool, {}, ToolOutcome::End::exited, status, std::move(words)};
}

void Tools::setKilled(const std::string& tool, const std::optional<std::string>& firstArgument, int signal) {
  behaviourToSet(tool, firstArgument).ending = ToolOutcome{tool, {}, ToolOutcome::End::killed, signal, ""};
}

void Tools::setUsual(const std::string& tool, const std::optional<std::string>& firstArgument) {
  behaviours_.erase({tool, firstArgument});
}

void Tools::setDuration(const std::string& tool, const std::optional<std::string>& firstArgument,
                        std::optional<std::chrono::milliseconds> duration) {
  behaviourToSet(tool, firstArgument).duration = duration;
}

Tools::Behaviour Tools::behaviourOf(const std::string& tool, const Arguments& arguments) const {
  auto found = arguments.empty() ? behaviours_.end() : behaviours_.find({tool, arguments[0]});
  if (found == behaviours_.end()) found = behaviours_.find({tool, std::nullopt});
  return found == behaviours_.end() ? Behaviour{} : found->second;
}

std::shared_ptr<Tools::Launched> Tools::add(const std::string& tool, const Arguments& arguments) {
  auto launched = std::make_shared<Launched>();
  launched->outcome.tool = tool;
  launched->outcome.arguments = arguments;
  launched->outcome.end = queue_.empty() ? ToolOutcome::End::running : ToolOutcome::End::waiting;
  launched->behaviour = behaviourOf(tool, arguments);
  launched->shared = shared_.lock();
  launched->launchedAt = launched->beganAt = clock_.microseconds();
  reported_.push_back(launched);
  return launched;
}

void Tools::launch(const std::string& tool, const Arguments& arguments) {
  queue_.push_back(add(tool, arguments));
  proceed();
}

std::string Tools::launchAndRead(const std::string& tool, const Arguments& arguments) {
  const int64_t asked = clock_.microseconds();
  const std::shared_ptr<Launched> launched = add(tool, arguments);
  constexpr int64_t kDelay = std::chrono::microseconds(kLongestReportDelay).count();
  const int64_t latest = queue_.empty() ? asked : queue_.back()->launchedAt + kDelay;
  waitUntil(latest);
  launched->outcome.end = ToolOutcome::End::running;
  if (!launched->behaviour.duration) return {};
  clock_.sleepUntil(clock_.microseconds() + launched->behaviour.duration->count());
  return end(*launched);
}

void Tools::proceed() {
  while (!queue_.empty()) {
    const std::shared_ptr<Launched> first = queue_.front();
    first->outcome.end = ToolOutcome::End::running;
    const auto duration = first->behaviour.duration;
    if (!duration || first->beganAt + duration->count() > clock_.microseconds()) return;
    const int64_t endedAt = first->beganAt + duration->count();
    queue_.pop_front();
    end(*first);
    if (!queue_.empty()) queue_.front()->beganAt = std::max(queue_.front()->launchedAt, endedAt);
  }
}

std::string Tools::end(Launched& launched) {
  ToolOutcome& outcome = launched.outcome;
  launched.shared.reset();
  if (const auto& ending = launched.behaviour.ending) {
    outcome.end = ending->end;
    outcome.status = ending->status;
    outcome.words = ending->words;
    return {};
  }
  Result result = run(outcome.tool, outcome.arguments);
  outcome.end = ToolOutcome::End::exited;
  outcome.status = result.status;
  outcome.words = std::move(result.words);
  return std::move(result.output);
}

bool Tools::waitUntil(int64_t latest) {
  while (!queue_.empty() && clock_.microseconds() < latest) {
    const Launched& first = *queue_.front();
    const auto duration = first.behaviour.duration;
    clock_.sleepUntil(duration ? std::min(latest, first.beganAt + duration->count()) : latest);
  }
  return queue_.empty();
}

bool Tools::wait(std::chrono::milliseconds limit) {
  return waitUntil(clock_.microseconds() + std::chrono::microseconds(limit).count());
}

std::vector<ToolOutcome> Tools::outcomes() {
  std::vector<ToolOutcome> result;
  result.reserve(reported_.size());
  for (const auto& launched : reported_) result.push_back(launched->outcome);
  return result;
}

Tools::Result Tools::run(const std::string& path, const Arguments& arguments) {
  Result result;
  for (const Tool& tool : kTools) {
    if (tool.path == path) result = (this->*tool.run)(arguments);
  }
  const auto set = outputs_.find({path, arguments});
  return set == outputs_.end() ? result : Result{set->second, 0, ""};
}

Tools::Result Tools::mv(const Arguments& arguments) {
  const std::size_t options = !arguments.empty() && arguments[0] == "-f" ? 1 : 0;
  if (arguments.size() != options + 2) return failure("mv: usage");
  const std::string& from = arguments[options];
  return fileSystem_.move(from, arguments[options + 1]) ? Result{} : failure("mv: cannot move " + from);
}

Tools::Result Tools::chmod(const Arguments& arguments) {
  const auto mode = arguments.size() == 2 ? octal(arguments[0]) : std::nullopt;
  if (!mode) return failure("chmod: usage");
  const auto file = fileSystem_.find(arguments[1]);
  if (file == nullptr) return failure("chmod: no such file: " + arguments[1]);
  file->mode = *mode;
  return {};
}

Tools::Result Tools::chown(const Arguments& arguments) {
  if (arguments.size() != 2) return failure("chown: usage");
  const auto file = fileSystem_.find(arguments[1]);
  if (file == nullptr) return failure("chown: no such file: " + arguments[1]);
  // A group may follow a colon; files here have none.
  file->owner = arguments[0].substr(0, arguments[0].find(':'));
  return {};
}

// `defaults write DOMAIN KEY VALUE`, where a domain is the path of a file without its extension.
Tools::Result Tools::defaults(const Arguments& arguments) {
  if (arguments.size() < 4 || arguments[0] != "write" || !arguments[1].starts_with('/'))
    return failure("defaults: usage");
  auto value = valueOf(arguments.begin() + 3, arguments.end());
  const std::string path = arguments[1] + ".plist";
  auto file = fileSystem_.find(path);
  if (value && file == nullptr) file = fileSystem_.create(path, FileSystem::kRoot);
  if (!value || file == nullptr) return failure("defaults: cannot write " + arguments[1]);
  const auto list = decodePropertyList(file->bytes);
  const auto* known = list ? list->as<PropertyList::Dictionary>() : nullptr;
  PropertyList::Dictionary domain = known != nullptr ? *known : PropertyList::Dictionary{};
  domain.insert_or_assign(arguments[2], std::move(*value));
  file->bytes = encodeXmlPropertyList(domain);
  return {};
}

Tools::Result Tools::sysctl(const Arguments& arguments) {
  if (arguments.size() != 2 || arguments[0] != "-n") return failure("sysctl: usage");
  const auto value = kernel_.find(arguments[1]);
  if (value == kernel_.end()) return failure("sysctl: no such name: " + arguments[1]);
  return {value->second + '\n', 0, ""};
}

Tools::Result Tools::nvkservice(const Arguments& arguments) {
  service_.run(arguments);
  return {};
}

Tools::Result Tools::failure(std::string words) {
  return {"", 1, std::move(words)};
}

}  // namespace norvik
