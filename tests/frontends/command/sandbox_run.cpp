// Runs norvikctl and reads what it leaves.
#include "tests/frontends/command/sandbox_run.h"

#include <algorithm>

#include "tests/support/files.h"

namespace norvik::command {

namespace fs = std::filesystem;

namespace {

Result resultOf(const ProgramResult& result) {
  return {result.status, result.output, result.errors};
}

std::string programPath(const std::string& name) {
  return name.starts_with('/') ? name : builtProgram(name);
}

}  // namespace

Result runProgram(const std::string& name, const Words& words, const fs::path& home) {
  Words all{programPath(name)};
  all.insert(all.end(), words.begin(), words.end());
  return resultOf(norvik::runProgram(all, {.environment = {{"HOME", home}}}));
}

ProgramOptions SandboxRun::inHome() const {
  ProgramOptions options{.environment = environment};
  options.environment["HOME"] = beside("");
  return options;
}

Words SandboxRun::commandLine(const Words& words) const {
  Words all{builtProgram("norvikctl"), "--root", folder()};
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

Result SandboxRun::run(const Words& words) const {
  return runWith({}, words);
}

Result SandboxRun::runWith(const Fault& fault, const Words& words) const {
  ProgramOptions options = inHome();
  if (fault.effect != Fault().effect || !fault.log.empty()) options.environment.merge(environmentOf(fault));
  Result result = resultOf(norvik::runProgram(commandLine(words), options));
  const auto has = [&](const char* word) { return std::ranges::count(words, word) > 0; };
  if (has("--json") && !has("--help")) outputs_.keep(result.out);
  return result;
}

RunningProgram SandboxRun::start(const Words& words, const std::string& outputName) const {
  return RunningProgram(commandLine(words), inHome(), beside(outputName));
}

Result SandboxRun::runAtTerminal(const Words& words, const std::string& typed) const {
  return resultOf(norvik::runAtTerminal(commandLine(words), typed, inHome()));
}

nlohmann::json SandboxRun::json(Words words) const {
  words.emplace_back("--json");
  return nlohmann::json::parse(run(words).out, nullptr, false);
}

std::map<std::string, std::string> SandboxRun::files() const {
  std::map<std::string, std::string> all;
  for (const auto& entry : fs::recursive_directory_iterator(folder())) {
    const std::string path = entry.path().lexically_relative(folder()).string();
    if (entry.is_regular_file() && !path.starts_with(".norvik/")) all[path] = contentOf(entry.path());
  }
  return all;
}

bool SandboxRun::areFilesWhole() const {
  const auto isWhole = [&](const char* path) {
    return !fs::exists(folder() / (path + 1)) || list(path).as<PropertyList::Dictionary>() != nullptr;
  };
  return isWhole(kServerFile) && isWhole(kAgentFile) && isWhole(kMenuAgentFile) &&
         list(kServerFile).find("LicenseHolder") != nullptr;
}

bool SandboxRun::log(const std::string& name, const std::string& text) const {
  return read("/.norvik/log/" + name).find(text) != std::string::npos;
}

int countOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

}  // namespace norvik::command
