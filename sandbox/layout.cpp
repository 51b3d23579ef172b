// The layout of a root, as tables.
#include "sandbox/layout.h"

#include <stdexcept>

#include "src/adapters/property_lists/codec.h"

namespace norvik::sandbox {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFolders[] = {
    ".norvik/log", "etc/norvik", "var/run", "tmp", "Library/Preferences", "Users/user/Library/Preferences",
    "usr/sbin",    "usr/bin",    "bin",     "sbin"};

struct Program {
  const char* name;
  const char* folder;
};
// Copies, not links: the program that a process runs must be in the root, and nothing done to the root may
// reach the original.
constexpr Program kPrograms[] = {
    {"nvkservice", "usr/sbin"},
    {"nvkserverd", "usr/sbin"},
    {"sysctl", "usr/sbin"},
    {"chown", "usr/sbin"},
    {"mv", "bin"},
    {"chmod", "bin"},
    {"defaults", "usr/bin"},
    {"reboot", "sbin"},
    {"nvkagent", "Applications/Norvik Agent.app/Contents/MacOS"},
    {"nvkmenua", "Applications/Norvik Menu Agent.app/Contents/MacOS"},
};

struct TextFile {
  const char* path;
  const char* content;
};
constexpr TextFile kTexts[] = {
    {".norvik/clock", "1\n"},
    {".norvik/authorization", "granted\n"},
    {".norvik/listen", "this-computer\n"},
    {".norvik/kernel", "kern.maxfiles 12288\nkern.maxfilesperproc 10240\n"},
    {"etc/launchd.conf", "# Limits that the system applies when it starts.\nlimit maxfiles 4096 8192\n"},
    {"Applications/Norvik Agent.app/Contents/PkgInfo", "APPLnvka"},
    {"Applications/Norvik Menu Agent.app/Contents/PkgInfo", "APPLnvkm"},
};

PropertyList integer(int64_t value) {
  return PropertyList(value);
}

PropertyList service(int64_t port) {
  return PropertyList::Dictionary{{"PortNumber", integer(port)},
                                  {"Disabled", false},
                                  {"ClipboardEnabled", true},
                                  {"SoundOutputEnabled", true},
                                  {"PrintSupportEnabled", true}};
}

PropertyList bundle(const char* name) {
  return PropertyList::Dictionary{{"CFBundleIdentifier", std::string("com.veltrane.") + name},
                                  {"CFBundleExecutable", name},
                                  {"CFBundlePackageType", "APPL"}};
}

struct ListFile {
  const char* path;
  PropertyList content;
};

// Like those of a real computer, each preference file holds a key that is not the pane's.
std::vector<ListFile> sampleLists() {
  PropertyList::Dictionary image{{"ImageQualityMode", integer(2)},  {"ImageColorDepth", integer(6)},
                                 {"ImageCaptPriority", integer(3)}, {"ImageCaptBuffer", integer(3)},
                                 {"ImageShadowSize", integer(4)},   {"NVKConfigVersion", "1.0"}};
  PropertyList::Dictionary server = image, agent = image;
  server.merge(PropertyList::Dictionary{{"SingleUser", true},
                                        {"ActionOnConnect", integer(0)},
                                        {"WakeupMode", integer(0)},
                                        {"NVKService", service(4073)},
                                        {"RDPService", service(3389)},
                                        {"LicenseHolder", "Sandbox"}});
  agent.merge(PropertyList::Dictionary{{"ImageUseDefaults", true},
                                       {"SwapMouseButtons", false},
                                       {"LastSession", PropertyList::Date{286632000}}});
  PropertyList tiles = PropertyList::Dictionary{{"tileHeight", integer(256)}, {"tileWidth", integer(256)}};
  return {
      {"etc/norvik/svr.cfg", std::move(server)},
      {"Users/user/Library/Preferences/com.veltrane.nvkagent.plist", std::move(agent)},
      {"Users/user/Library/Preferences/com.veltrane.nvkmenua.plist",
       PropertyList::Dictionary{{"NvkNotificationShowNews", true},
                                {"NvkNotificationRepeatTimeout", integer(3)},
                                {"NewsRead", integer(17)}}},
      {"Library/Preferences/com.apple.windowserver.plist",
       PropertyList::Dictionary{{"GLCompositor", std::move(tiles)}, {"DisplayCount", integer(1)}}},
      {"Library/Preferences/com.apple.screensaver.plist",
       PropertyList::Dictionary{{"loginWindowIdleTime", integer(1200)}, {"moduleName", "Clouds"}}},
      {"Applications/Norvik Agent.app/Contents/Info.plist", bundle("nvkagent")},
      {"Applications/Norvik Menu Agent.app/Contents/Info.plist", bundle("nvkmenua")},
  };
}

void writeIfMissing(const Root& root, const char* path, const std::string& content) {
  const fs::path file = root.inside("/" + std::string(path));
  if (!fs::exists(file)) replaceFile(file, content);
}

}  // namespace

Root createSandbox(const fs::path& folder, const fs::path& programs) {
  if (fs::exists(folder) && !Root::in(folder) && !(fs::is_directory(folder) && fs::is_empty(folder)))
    throw std::runtime_error(folder.string() + ": neither empty nor a sandbox");
  fs::create_directories(folder / kOwnFolder);
  Root root = *Root::in(folder);
  for (const char* name : kFolders) fs::create_directories(root.inside("/" + std::string(name)));
  for (const Program& program : kPrograms) {
    const fs::path place = root.inside("/" + std::string(program.folder));
    fs::create_directories(place);
    fs::copy_file(programs / program.name, place / program.name, fs::copy_options::skip_existing);
  }
  for (const TextFile& text : kTexts) writeIfMissing(root, text.path, text.content);
  for (const ListFile& list : sampleLists())
    writeIfMissing(root, list.path, encodeXmlPropertyList(list.content));
  return root;
}

}  // namespace norvik::sandbox
