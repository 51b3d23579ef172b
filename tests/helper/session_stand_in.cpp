// Stands for the system's list of sessions, which polkit asks about its callers: loaded into polkit before
// the library that it asks. The person "norvik-user" has one session, as the file /run/session says: "active"
// or "inactive"; none where there is no such file.
#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>

namespace {

constexpr uid_t kUser = 4242;

std::string state() {
  std::string word;
  std::ifstream("/run/session") >> word;
  return word;
}

int copied(char** place, const char* text) {
  if (place != nullptr) *place = ::strdup(text);
  return 0;
}

}  // namespace

extern "C" {

int sd_pid_get_session(pid_t process, char** session) {
  struct stat status {};
  const std::string folder = "/proc/" + std::to_string(process);
  const bool isUsers = ::stat(folder.c_str(), &status) == 0 && status.st_uid == kUser;
  return isUsers && !state().empty() ? copied(session, "1") : -ENODATA;
}

int sd_session_get_uid(const char*, uid_t* user) {
  *user = kUser;
  return 0;
}

int sd_session_is_active(const char*) {
  return state() == "active" ? 1 : 0;
}

int sd_session_get_seat(const char*, char** seat) {
  return copied(seat, "seat0");
}

int sd_uid_get_state(uid_t, char** text) {
  return copied(text, state() == "active" ? "active" : "online");
}

int sd_uid_get_display(uid_t, char**) {
  return -ENODATA;
}
}
