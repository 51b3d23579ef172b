// The standard input may be a pipe, whose length nobody knows before its end.
#include "src/frontends/command/typed_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

constexpr const char* kTooLarge = english("it is too large");

TypedFile notEmpty(std::string bytes) {
  const std::string damage = bytes.empty() ? translated("it is empty") : "";
  return {std::move(bytes), damage};
}

TypedFile readStandardInput(std::size_t most) {
  std::string bytes(most + 1, '\0');
  std::cin.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(std::cin.gcount()));
  if (bytes.size() > most) return {"", translated(kTooLarge)};
  return notEmpty(std::move(bytes));
}

}  // namespace

TypedFile readTypedFile(const std::string& path, std::size_t most) {
  if (path == "-") return readStandardInput(most);
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    return {"", translated("it is no regular file")};
  }
  const auto size = std::filesystem::file_size(path, error);
  if (!error && size > most) return {"", translated(kTooLarge)};
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (!file.is_open() || file.bad()) return {"", sentence("it cannot be read ({1})", {std::strerror(errno)})};
  return notEmpty(std::move(bytes));
}

}  // namespace norvik::command
