// The folder that stands for a whole computer: how a stand-in finds it, and how a path of that computer
// becomes one of ours. Everything that a stand-in reads or writes goes through here, so that nothing outside
// is touched.
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

// The folder in the root where the sandbox keeps what no real computer has. Where it stands, a sandbox is.
inline constexpr std::string_view kOwnFolder = ".norvik";

class Root {
 public:
  // The root that the environment variable NORVIK_ROOT names, else the nearest folder above the running
  // program that is a sandbox. Nothing when there is none; a NORVIK_ROOT that is no sandbox is not replaced
  // by another guess.
  static std::optional<Root> find();

  // The sandbox in a folder; nothing when the folder is none.
  static std::optional<Root> in(const std::filesystem::path& folder);

  const std::filesystem::path& folder() const { return folder_; }

  // Where a path of the sandbox's computer lies. Throws std::runtime_error for a path that is not absolute,
  // holds "..", or leads out through a symbolic link.
  std::filesystem::path inside(std::string_view path) const;

  // A file of the sandbox's own: "clock", "bus", "log/agent.log".
  std::filesystem::path own(std::string_view name) const { return folder_ / kOwnFolder / name; }

 private:
  explicit Root(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::filesystem::path folder_;  // absolute, without symbolic links
};

// The whole of a file; nothing when it cannot be read.
std::optional<std::string> readFile(const std::filesystem::path& path);

// Puts a file in place whole, so that no reader sees a part of it. Throws std::runtime_error when it cannot.
void replaceFile(const std::filesystem::path& path, std::string_view content);

}  // namespace norvik::sandbox
