// The files of the simulated computer, and what fails on them.
#include "src/adapters/property_lists/codec.h"
#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/known_words.h"
#include "src/frontends/scenario/property_list_leaves.h"
#include "src/server/mac/text/escape.h"

namespace norvik::scenario {

namespace {

void file(Session& session, Arguments& arguments) {
  FileSystem& files = session.computer.fileSystem;
  const std::string path = arguments.text();
  if (arguments.hasBody()) return files.put(path, arguments.body());
  if (const auto text = arguments.textOr("none")) return files.put(path, *text);
  files.remove(path);
}

void directory(Session& session, Arguments& arguments) {
  FileSystem& files = session.computer.fileSystem;
  const std::string path = arguments.text();
  if (arguments.takes("none")) return files.removeDirectory(path);
  files.addDirectory(path);
}

// With lines below it, puts the list there; without, prints its leaves.
void plist(Session& session, Arguments& arguments) {
  FileSystem& files = session.computer.fileSystem;
  const std::string path = arguments.text();
  if (arguments.hasBody()) {
    const bool isBinary = arguments.takes("binary");
    const PropertyList list = listOfLeaves(arguments.body());
    return files.put(path, isBinary ? encodeBinaryPropertyList(list) : encodeXmlPropertyList(list));
  }
  const auto found = files.find(path);
  if (found == nullptr) return session.print("none");
  const auto list = decodePropertyList(found->bytes);
  const bool isContainer = list && (list->as<PropertyList::Dictionary>() || list->as<PropertyList::Array>());
  if (!isContainer) return session.print("not a property list");
  for (const std::string& leaf : leavesOf(*list)) session.print(leaf);
}

struct Operation {
  std::string_view name;
  FileOperation operation;
};

constexpr Operation kFileOperations[] = {
    {"open-read", FileOperation::openRead},  {"open-write", FileOperation::openWrite},
    {"seek", FileOperation::seek},           {"tell", FileOperation::tell},
    {"read", FileOperation::read},           {"write", FileOperation::write},
    {"mkdir", FileOperation::makeDirectory},
};

void fail(Session& session, Arguments& arguments) {
  const FileOperation operation =
      rowNamed<Operation>("file operation", arguments.word(), kFileOperations).operation;
  const std::string path = arguments.text();
  session.computer.fileFaults.set(operation, path, !arguments.takes("none"));
}

void home(Session& session, Arguments& arguments) {
  session.computer.fileSystem.setHome(arguments.text());
}

void cat(Session& session, Arguments& arguments) {
  const auto found = session.computer.fileSystem.find(arguments.text());
  session.print(found == nullptr ? "none" : quoted(found->bytes));
}

void stat(Session& session, Arguments& arguments) {
  const auto found = session.computer.fileSystem.find(arguments.text());
  if (found == nullptr) return session.print("none");
  std::string digits;
  for (int shift = found->mode > 0777 ? 9 : 6; shift >= 0; shift -= 3) {
    digits += static_cast<char>('0' + (found->mode >> shift & 7));
  }
  session.print("owner=" + found->owner + " mode=" + digits);
}

constexpr CommandRow kFileCommands[] = {
    {"file", file}, {"directory", directory}, {"plist", plist}, {"fail", fail}, {"home", home},
    {"cat", cat},   {"stat", stat},
};

}  // namespace

std::span<const CommandRow> fileCommands() {
  return kFileCommands;
}

}  // namespace norvik::scenario
