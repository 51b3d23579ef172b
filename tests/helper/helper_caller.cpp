// A program that calls the helper, for tests: does what its words say, one after another, and prints what
// came of each.
//   check | unlock | lock     asks polkit silently, with a person, or gives up
//   run TOOL [WORD]... end    has a line carried out; `ask` in place of `run` allows a person to be asked
//   read TOOL [WORD]... end   the same, and prints what it says
//   touch FILE | await FILE   makes a file; waits until there is one
//   ends                      waits until all lines have ended, and prints how
//   take                      takes the lock for changes, which is handed to the helper from then on
//   flood COUNT SIZE          sends so many calls with so long a word, and waits for no reply
//   hand PATH                 hands a descriptor of that file in its place
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "src/adapters/linux/helper_client.h"
#include "src/adapters/linux/helper_interface.h"
#include "src/adapters/linux/polkit_authorization.h"
#include "src/adapters/linux/tool_launcher.h"
#include "src/adapters/posix/change_locks.h"
#include "tests/support/waiting.h"

namespace norvik {
namespace {

using Words = std::vector<std::string>;

const char* nameOf(AuthorizationRefusal refusal) {
  switch (refusal) {
    case AuthorizationRefusal::none:
      return "granted";
    case AuthorizationRefusal::refused:
      return "refused";
    case AuthorizationRefusal::dismissed:
      return "dismissed";
    case AuthorizationRefusal::noAgent:
      return "no agent";
    case AuthorizationRefusal::noService:
      return "no service";
  }
  return "";
}

const char* nameOf(PrivilegedLines::Answer answer) {
  switch (answer) {
    case PrivilegedLines::Answer::launched:
      return "launched";
    case PrivilegedLines::Answer::refused:
      return "refused";
    case PrivilegedLines::Answer::notPossible:
      return "not possible";
  }
  return "";
}

class Calls {
 public:
  void carryOut(Words::const_iterator word, Words::const_iterator end) {
    while (word != end) {
      const std::string name = *word++;
      Words own;
      if (name == "run" || name == "ask" || name == "read") {
        while (word != end && *word != "end") own.push_back(*word++);
        ++word;
        line(name, own);
      } else if (name == "touch" || name == "await") {
        file(name, *word++);
      } else if (name == "ends") {
        ends();
      } else if (name == "flood") {
        const int count = std::stoi(*word++);
        flood(count, std::stoul(*word++));
      } else if (name == "take") {
        held_ = locks_.lock(std::chrono::milliseconds(100));
        say(held_ ? "take: done" : "take: busy");
      } else if (name == "hand") {
        handed_ = std::make_shared<const Descriptor>(::open((word++)->c_str(), O_RDONLY | O_CLOEXEC));
      } else {
        rights(name);
      }
    }
  }

 private:
  void say(const std::string& text) { std::cout << text << std::endl; }

  void rights(const std::string& name) {
    constexpr std::string_view kRight = "system.privilege.admin";
    const AuthorizationItem item{kRight, "", 0};
    if (name == "lock") {
      authorization_.AuthorizationFree(reference_, kAuthorizationFlagDestroyRights);
      reference_ = nullptr;
      return say("lock: done");
    }
    if (reference_ == nullptr) authorization_.AuthorizationCreate({}, 0, reference_);
    const AuthorizationFlags flags = name == "unlock" ? kAuthorizationFlagInteractionAllowed : 0;
    authorization_.AuthorizationCopyRights(reference_, {&item, 1}, flags);
    say(name + ": " + nameOf(authorization_.lastRefusal()));
  }

  void line(const std::string& name, const Words& words) {
    Descriptor output;
    const auto answer = client_.run(words[0], Words(words.begin() + 1, words.end()), name == "ask",
                                    name == "read" ? &output : nullptr);
    say(words[0] + ": " + nameOf(answer));
    std::array<char, 256> block;
    for (ssize_t count = 1; output && count > 0;) {
      count = ::read(output.number(), block.data(), block.size());
      if (count > 0) std::cout << std::string(block.data(), static_cast<std::size_t>(count));
    }
  }

  void file(const std::string& name, const std::string& path) {
    if (name == "touch") {
      std::ofstream(path).flush();
    } else if (!eventually([&] { return std::filesystem::exists(path); })) {
      say(path + ": does not come");
    }
  }

  void flood(int count, std::size_t size) {
    const std::string text(size, 'x');
    for (int i = 0; i < count; ++i) {
      const BusMessage call = bus_.newCall(kHelperName, kHelperPath, kHelperInterface, "Run");
      sd_bus_message_append(call.get(), "sasah", "/usr/sbin/nvkservice", 1, text.c_str(), 0);
      sd_bus_message_set_expect_reply(call.get(), 0);
      sd_bus_send(bus_.connection(), call.get(), nullptr);
      sd_bus_flush(bus_.connection());
    }
    say("flood: done");
  }

  void ends() {
    if (!client_.wait(kPatience)) say("some have not ended");
    for (const ToolOutcome& outcome : client_.outcomes()) {
      std::string text = outcome.tool +
                         (outcome.end == ToolOutcome::End::exited ? ": status " : ": signal ") +
                         std::to_string(outcome.status);
      if (!outcome.words.empty()) text += ": " + outcome.words;
      say(text);
    }
    client_.forget();
  }

  SystemBus bus_{{}};
  ToolLauncher tools_{RootFolder(), kPatience};
  PosixChangeLocks locks_{RootFolder(),
                          [this](std::weak_ptr<const Descriptor> held) { tools_.keepOpen(std::move(held)); }};
  std::unique_ptr<HeldLock> held_;
  std::shared_ptr<const Descriptor> handed_;
  HelperClient client_{bus_, [this] { return handed_ ? handed_ : tools_.heldOpen(); }};
  PolkitAuthorization authorization_{bus_, client_, {.isSuperUser = false, .textAgent = true}};
  AuthorizationRef reference_ = nullptr;
};

}  // namespace
}  // namespace norvik

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  norvik::Calls().carryOut(words.begin(), words.end());
  return 0;
}
