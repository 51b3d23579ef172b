// The folder that represents a whole computer: how a stand-in finds it, and where a path of that computer is
// on the disk. Stand-ins read and write only through this, so that nothing outside is touched.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace norvik::sandbox {

// Paths on the sandbox's computer that more than one program knows.
inline constexpr std::string_view kServerConfig = "/etc/norvik/svr.cfg";
inline constexpr std::string_view kPidFile = "/var/run/nvkserverd.pid";
inline constexpr std::string_view kServerDaemon = "/usr/sbin/nvkserverd";
inline constexpr std::string_view kHome = "/Users/user";

// The folder in the root where the sandbox keeps what no real computer has. A folder with it is a sandbox.
inline constexpr std::string_view kOwnFolder = ".norvik";

class Root {
 public:
  // The sandbox that the environment variable NORVIK_ROOT names, else the nearest one above the running
  // program. Nothing when there is none, also when NORVIK_ROOT names something else.
  static std::optional<Root> find();

  // The sandbox in a folder; nothing when the folder is not one.
  static std::optional<Root> in(const std::filesystem::path& folder);

  const std::filesystem::path& folder() const { return folder_; }

  // Where a path of the sandbox's computer is on the disk. Throws std::runtime_error for a path that is not
  // absolute, contains "..", or leads out through a symbolic link.
  std::filesystem::path inside(std::string_view path) const;

  // A file of the sandbox's own: "clock", "bus", "log/agent.log".
  std::filesystem::path own(std::string_view name) const { return folder_ / kOwnFolder / name; }

 private:
  explicit Root(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::filesystem::path folder_;  // absolute, without symbolic links
};

// The whole content of a file; nothing when it cannot be read or is larger than any file of a sandbox.
std::optional<std::string> readFile(const std::filesystem::path& path);

// Replaces a file in one step, so that no reader sees only part of it. Throws std::runtime_error when it
// cannot.
void replaceFile(const std::filesystem::path& path, std::string_view content);

}  // namespace norvik::sandbox
