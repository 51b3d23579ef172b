// The sandbox through its own programs and files.
#include "tests/support/sandbox.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "src/adapters/property_lists/codec.h"
#include "tests/support/files.h"

namespace norvik {

namespace {

PropertyList service(int port) {
  return PropertyList::Dictionary{{"PortNumber", int64_t{port}}, {"Disabled", port == 0}};
}

}  // namespace

Sandbox::Sandbox(const std::string& speed) : root_(folder_.path() / "box") {
  const ProgramResult result = control("start", {"--speed", speed});
  if (result.status == 0) return;
  control("stop");  // what has started, as there is no object that does it
  throw std::runtime_error("norvik-sandbox start: " + result.output);
}

Sandbox::~Sandbox() {
  const ProgramResult result = control("stop");
  EXPECT_EQ(result.status, 0) << result.output;
}

ProgramResult Sandbox::control(const std::string& command, const Words& more) const {
  Words words{builtProgram("norvik-sandbox"), command, root_};
  words.insert(words.end(), more.begin(), more.end());
  return runProgram(words, {}, ErrorOutput::withOutput);
}

ProgramResult Sandbox::tool(const std::string& path, const Words& arguments) const {
  Words words{onDisk(path)};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return runProgram(words, {}, ErrorOutput::withOutput);
}

std::string Sandbox::read(const std::string& path) const {
  return contentOf(onDisk(path));
}

void Sandbox::write(const std::string& path, const std::string& bytes) const {
  writeFile(onDisk(path), bytes);
}

PropertyList Sandbox::list(const std::string& path) const {
  return decodePropertyList(read(path)).value_or(PropertyList("no property list"));
}

void Sandbox::replaceProgram(const std::string& path, const std::string& commands) const {
  writeScript(onDisk(path), commands);
}

void Sandbox::setPorts(int nvk, int rdp) const {
  write("/etc/norvik/svr.cfg", serverConfiguration(nvk, rdp));
}

std::string Sandbox::log(const std::string& name) const {
  return read("/.norvik/log/" + name + ".log");
}

bool Sandbox::logSays(const std::string& name, const std::string& text) const {
  return eventually([&] { return log(name).find(text) != std::string::npos; });
}

std::string serverConfiguration(int nvk, int rdp) {
  return encodeXmlPropertyList(PropertyList::Dictionary{
      {"SingleUser", true}, {"NVKService", service(nvk)}, {"RDPService", service(rdp)}});
}

}  // namespace norvik
