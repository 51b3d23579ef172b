// One row for each operation; one function for each form of arguments.
#include "src/frontends/scenario/operations.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>

#include "src/frontends/scenario/forms.h"
#include "src/frontends/scenario/malformed.h"
#include "src/server/mac/os/nvkos.h"

namespace norvik::scenario {

namespace {

using P = NVKServerPrefs;

// Calls an operation of the pane, or a plain function, with these values, and prints its result, if it has
// one.
template <auto operation, typename... Values>
void callAndPrint(Session& session, Values... values) {
  const auto call = [&] {
    if constexpr (std::is_member_function_pointer_v<decltype(operation)>) {
      return (session.pane().*operation)(values...);
    } else {
      return operation(values...);
    }
  };
  if constexpr (std::is_void_v<decltype(call())>) {
    call();
  } else {
    session.print(form(call()));
  }
}

template <auto operation>
void plain(Session& session, Arguments& arguments) {
  arguments.end();
  callAndPrint<operation>(session);
}

template <auto operation>
void twoBooleans(Session& session, Arguments& arguments) {
  const bool first = arguments.yesOrNo();
  const bool second = arguments.yesOrNo();
  arguments.end();
  callAndPrint<operation>(session, first, second);
}

template <auto operation>
void number(Session& session, Arguments& arguments) {
  const int64_t value = arguments.integer();
  arguments.end();
  callAndPrint<operation>(session, value);
}

template <auto operation>
void twoNumbers(Session& session, Arguments& arguments) {
  const auto first = arguments.integer<int32_t>();
  const auto second = arguments.integer<int32_t>();
  arguments.end();
  callAndPrint<operation>(session, first, second);
}

const char* pointerTo(const std::optional<std::string>& text) {
  return text ? text->c_str() : nullptr;
}

template <auto operation>
void textOrNull(Session& session, Arguments& arguments) {
  const auto text = arguments.textOr("null");
  arguments.end();
  callAndPrint<operation>(session, pointerTo(text));
}

void updateSystemVersion(Session&, Arguments& arguments) {
  arguments.end();
  nvkos_update_sysver();
}

void doResizeFrame(Session& session, Arguments& arguments) {
  const bool isSelf = arguments.takes("self");
  if (!isSelf && !arguments.takes("other")) throw Malformed("expected self or other");
  session.pane().doResizeFrame(isSelf ? &session.pane() : nullptr);
}

// ---- tools

// The argument slots of a runner, missing ones null.
template <std::size_t count>
class Slots {
 public:
  explicit Slots(Arguments& arguments) : texts_(arguments.textsOr("null")) {
    if (texts_.size() > count)
      throw Malformed("expected at most " + std::to_string(count) + " arguments of the tool");
    texts_.resize(count);
  }
  const char* operator[](std::size_t slot) const { return pointerTo(texts_[slot]); }

 private:
  std::vector<std::optional<std::string>> texts_;
};

void runCmd(Session& session, Arguments& arguments) {
  const std::string tool = arguments.text();
  const Slots<5> a(arguments);
  session.print(form(session.pane().runCmd(tool.c_str(), a[0], a[1], a[2], a[3], a[4])));
}

void runCmdEx(Session& session, Arguments& arguments) {
  const std::string tool = arguments.text();
  const Slots<10> a(arguments);
  session.print(form(
      session.pane().runCmdEx(tool.c_str(), a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9])));
}

constexpr int32_t kMostBufferBytes = 1 << 26;

// A buffer with a text that shows whether it was written, truncated to fit, then zeros. Has exactly the given
// size, so that a checked build notices a byte too many.
class Buffer {
 public:
  explicit Buffer(int32_t size) : bytes_(static_cast<std::size_t>(std::max(size, 0)), '\0') {
    constexpr std::string_view kUntouched = "untouched";
    bytes_.shrink_to_fit();
    std::copy_n(kUntouched.begin(), std::min(bytes_.size(), kUntouched.size()), bytes_.begin());
  }
  char* data() { return bytes_.data(); }
  // Up to its first null or its end.
  std::string text() const { return {bytes_.begin(), std::find(bytes_.begin(), bytes_.end(), '\0')}; }

 private:
  std::vector<char> bytes_;
};

// A null buffer may have any size.
int32_t bufferSizeOf(Arguments& arguments, bool isNull) {
  using Limits = std::numeric_limits<int32_t>;
  return arguments.integer<int32_t>(Limits::min(), isNull ? Limits::max() : kMostBufferBytes);
}

void runCmdToBuf(Session& session, Arguments& arguments) {
  const bool isNull = arguments.takes("null");
  const int32_t length = bufferSizeOf(arguments, isNull);
  const std::string tool = arguments.text();
  const Slots<5> a(arguments);
  Buffer buffer(isNull ? 0 : length);
  char nothing = '\0';  // an empty buffer is not a null one
  char* bytes = length > 0 ? buffer.data() : &nothing;
  const bool launched = session.pane().runCmdToBuf(isNull ? nullptr : bytes, length, tool.c_str(), a[0], a[1],
                                                   a[2], a[3], a[4]);
  const bool hasText = !isNull && length > 0;
  session.print(form(launched) + (hasText ? ' ' + quoted(buffer.text()) : ""));
}

// ---- line files

void loadStringsArray(Session& session, Arguments& arguments) {
  const auto path = arguments.textOr("null");
  const auto lines = session.pane().loadStringsArray(pointerTo(path));
  if (!lines) return session.print("null");
  session.print(std::to_string(lines->size()) + " lines");
  for (const std::string& line : *lines) session.print(quoted(line));
}

void saveStringsArray(Session& session, Arguments& arguments) {
  const auto path = arguments.textOr("null");
  const bool isNull = arguments.takes("null");
  const StringsArray lines = isNull ? StringsArray() : arguments.texts();
  session.print(form(session.pane().saveStringsArray(pointerTo(path), isNull ? nullptr : &lines)));
}

// ---- addresses and versions

void getNetAddr(Session& session, Arguments& arguments) {
  const bool isNull = arguments.takes("null");
  const int32_t size = bufferSizeOf(arguments, isNull);
  Buffer buffer(isNull ? 0 : size);
  char nothing = '\0';
  char* bytes = size > 0 ? buffer.data() : &nothing;
  const int result = get_net_addr(isNull ? nullptr : bytes, size);
  session.print(form(result) + (isNull ? "" : ' ' + quoted(buffer.text())));
}

// Three outputs of a version query, each of which may be passed as null.
class VersionOutputs {
 public:
  explicit VersionOutputs(Arguments& arguments) {
    for (std::size_t i = 0; i < values_.size() && !arguments.atEnd(); ++i) {
      passed_[i] = !arguments.takes("-");
      if (passed_[i]) arguments.integer();  // any number
    }
  }
  int32_t* operator[](std::size_t i) { return passed_[i] ? &values_[i] : nullptr; }
  std::string form() const {
    std::string line;
    for (std::size_t i = 0; i < values_.size(); ++i)
      line += passed_[i] ? ' ' + std::to_string(values_[i]) : " -";
    return line;
  }

 private:
  std::array<int32_t, 3> values_ = {-7, -7, -7};
  std::array<bool, 3> passed_ = {true, true, true};
};

void systemVersion(Session& session, Arguments& arguments) {
  VersionOutputs outputs(arguments);
  const int32_t result = NVKOS_SystemVersion(outputs[0], outputs[1], outputs[2]);
  session.print(form(result) + outputs.form());
}

void bundleVersion(Session& session, Arguments& arguments) {
  const auto identifier = arguments.textOr("null");
  VersionOutputs outputs(arguments);
  const int32_t result = NVKOS_BundleVersion(pointerTo(identifier), outputs[0], outputs[1], outputs[2]);
  session.print(form(result) + outputs.form());
}

// clang-format off
constexpr CommandRow kOperations[] = {
    {"authorized",                  plain<&P::authorized>},
    {"authorize",                   twoBooleans<&P::authorize>},
    {"deauthorize",                 plain<&P::deauthorize>},
    {"applyAllChanges",             plain<&P::applyAllChanges>},
    {"isSetupActive",               plain<&P::isSetupActive>},
    {"apply_user_config",           plain<apply_user_config>},
    {"loadUserConfig",              plain<&P::loadUserConfig>},
    {"userConfigChanged",           plain<&P::userConfigChanged>},
    {"saveUserConfig",              plain<&P::saveUserConfig>},
    {"loadAdminConfig",             plain<&P::loadAdminConfig>},
    {"adminConfigChanged",          plain<&P::adminConfigChanged>},
    {"saveAdminConfig",             plain<&P::saveAdminConfig>},
    {"loadNotificationSettings",    plain<&P::loadNotificationSettings>},
    {"notificationSettingsChanged", plain<&P::notificationSettingsChanged>},
    {"saveNotificationSettings",    plain<&P::saveNotificationSettings>},
    {"loadMaxFiles",                plain<&P::loadMaxFiles>},
    {"displayMaxFiles",             plain<&P::displayMaxFiles>},
    {"changeMaxFiles",              plain<&P::changeMaxFiles>},
    {"maxFilesChanged",             plain<&P::maxFilesChanged>},
    {"saveMaxFiles",                plain<&P::saveMaxFiles>},
    {"loadStringsArray",            loadStringsArray},
    {"saveStringsArray",            saveStringsArray},
    {"runCmd",                      runCmd},
    {"runCmdEx",                    runCmdEx},
    {"runCmdToBuf",                 runCmdToBuf},
    {"getTempFilePath",             textOrNull<&P::getTempFilePath>},
    {"startServer",                 plain<&P::startServer>},
    {"stopServer",                  plain<&P::stopServer>},
    {"restartServer",               plain<&P::restartServer>},
    {"runDispManager",              plain<&P::runDispManager>},
    {"runAccessManager",            plain<&P::runAccessManager>},
    {"nvkd_pid",                    plain<nvkd_pid>},
    {"loadConfBar",                 plain<&P::loadConfBar>},
    {"resizeFrame",                 plain<&P::resizeFrame>},
    {"doResizeFrame",               doResizeFrame},
    {"updateGui",                   twoBooleans<&P::updateGui>},
    {"enableGui",                   twoBooleans<&P::enableGui>},
    {"updateNvkAddr",               number<&P::updateNvkAddr>},
    {"updateRdpAddr",               number<&P::updateRdpAddr>},
    {"get_net_addr",                getNetAddr},
    {"is_valid_host",               textOrNull<is_valid_host>},
    {"is_ipv4_address",             textOrNull<is_ipv4_address>},
    {"nvkos_update_sysver",         updateSystemVersion},
    {"NVKOS_SystemVersion",         systemVersion},
    {"NVKOS_SysName",               plain<NVKOS_SysName>},
    {"NVKOS_SysVerEqualOrGreater",  twoNumbers<NVKOS_SysVerEqualOrGreater>},
    {"NVKOS_SysVerEqual",           twoNumbers<NVKOS_SysVerEqual>},
    {"NVKOS_SysVerGreater",         twoNumbers<NVKOS_SysVerGreater>},
    {"NVKOS_BundleVersion",         bundleVersion},
};
// clang-format on

}  // namespace

std::span<const CommandRow> operations() {
  return kOperations;
}

}  // namespace norvik::scenario
