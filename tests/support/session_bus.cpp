// The bus, by a configuration of its own: nothing of the computer's services is started on it.
#include "tests/support/session_bus.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "tests/support/files.h"
#include "tests/support/waiting.h"

namespace norvik {

namespace {

const char* const kDocumentType =
    "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
    " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n";

std::string configuration(const std::string& address, const std::string& services) {
  return std::string(kDocumentType) + "<busconfig>\n<type>session</type>\n<listen>" + address +
         "</listen>\n<servicedir>" + services +
         "</servicedir>\n<policy context=\"default\">\n<allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
         "<allow eavesdrop=\"true\"/>\n<allow own=\"*\"/>\n</policy>\n</busconfig>\n";
}

Words commandOf(const TemporaryFolder& folder, const std::string& address,
                const std::map<std::string, std::string>& programs) {
  const std::filesystem::path services = folder.path() / "services";
  const std::filesystem::path file = folder.path() / "bus.conf";
  std::filesystem::create_directory(services);
  for (const auto& [name, program] : programs)
    writeFile(services / (name + ".service"), "[D-BUS Service]\nName=" + name + "\nExec=" + program + "\n");
  writeFile(file, configuration(address, services));
  return {"dbus-daemon", "--config-file=" + file.string(), "--nofork", "--nopidfile"};
}

}  // namespace

bool takesConnections(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool connected = ::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  ::close(socket);
  return connected;
}

SessionBus::SessionBus(const std::map<std::string, std::string>& variables,
                       const std::map<std::string, std::string>& programs)
    : address_("unix:path=" + (folder_.path() / "bus").string()),
      daemon_(commandOf(folder_, address_, programs), {.environment = variables}) {
  EXPECT_TRUE(eventually([this] { return takesConnections(folder_.path() / "bus"); })) << "no message bus";
}

}  // namespace norvik
