// The agent of a person's session, which a desktop has: registers with polkit and gives the same password
// each time. Prints a line when it is ready and when it is asked.
//   session_agent PASSWORD
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <iostream>
#include <string>

namespace {

constexpr const char* kPath = "/com/veltrane/norvik/Agent";
constexpr const char* kInterface = "org.freedesktop.PolicyKit1.AuthenticationAgent";

std::string password;

// polkit's own program checks the password and tells polkit.
bool prove(const char* cookie) {
  for (const char* program :
       {"/usr/lib/polkit-1/polkit-agent-helper-1", "/usr/libexec/polkit-agent-helper-1"}) {
    if (::access(program, X_OK) != 0) continue;
    const std::string command = std::string(program) + " norvik-admin >/dev/null";
    std::FILE* input = ::popen(command.c_str(), "w");
    std::fprintf(input, "%s\n%s\n", cookie, password.c_str());
    return ::pclose(input) == 0;
  }
  return false;
}

int beginAuthentication(sd_bus_message* call, void*, sd_bus_error*) {
  std::array<const char*, 3> texts{};
  const char* cookie = nullptr;
  sd_bus_message_read(call, "sss", &texts[0], &texts[1], &texts[2]);
  sd_bus_message_skip(call, "a{ss}");
  sd_bus_message_read(call, "s", &cookie);
  std::cout << "asked: " << texts[1] << std::endl;
  return prove(cookie) ? sd_bus_reply_method_return(call, "")
                       : sd_bus_reply_method_errorf(call, "org.freedesktop.PolicyKit1.Error.Failed", "wrong");
}

int cancelAuthentication(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "");
}

constexpr sd_bus_vtable kMethods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("BeginAuthentication", "sssa{ss}sa(sa{sv})", "", beginAuthentication,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("CancelAuthentication", "s", "", cancelAuthentication, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};

}  // namespace

int main(int argc, char** argv) {
  password = argc > 1 ? argv[1] : "";
  sd_bus* bus = nullptr;
  sd_bus_error error = SD_BUS_ERROR_NULL;
  if (sd_bus_open_system(&bus) < 0) return 1;
  sd_bus_add_object_vtable(bus, nullptr, kPath, kInterface, kMethods, nullptr);
  if (sd_bus_call_method(bus, "org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
                         "org.freedesktop.PolicyKit1.Authority", "RegisterAuthenticationAgent", &error,
                         nullptr, "(sa{sv})ss", "unix-session", 1, "session-id", "s", "1", "C", kPath) < 0) {
    std::cout << error.message << std::endl;
    return 1;
  }
  std::cout << "ready" << std::endl;
  while (sd_bus_wait(bus, UINT64_MAX) >= 0) {
    while (sd_bus_process(bus, nullptr) > 0) continue;
  }
  return 0;
}
