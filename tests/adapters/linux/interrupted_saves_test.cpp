// Saves of property lists that are interrupted: by a kill at every operation and at random times, by
// operations that fail, by a limit of the size of files; and readers meanwhile. Real processes, whose file
// operations a preloaded library makes fail.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include "src/adapters/linux/property_list_files.h"
#include "src/adapters/posix/descriptors.h"
#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/text/trim.h"
#include "tests/adapters/linux/saved_list.h"
#include "tests/support/failing_calls.h"
#include "tests/support/files.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSavedPath = "/Users/user/Library/Preferences/list.plist";
constexpr const char* kEveryOperation = "all";

// An old list and the new one in its place. Their lengths are the cases: longer, shorter, the same.
struct Pair {
  const char* name;
  std::optional<int> before;
  int after;
};
constexpr Pair kPairs[] = {
    {"longer", 1, 4}, {"shorter", 4, 1}, {"same", 12, 23}, {"missing", std::nullopt, 1}};

std::string textOf(int number) {
  return encodeXmlPropertyList(savedList(number));
}

// Without the white space that may be left behind the end.
std::string trimmedText(std::string_view text) {
  return std::string(withoutTrailing(text, kBlanks)) + '\n';
}

class InterruptedSave : public testing::Test {
 protected:
  Words saver(int first, int last) const {
    return {builtProgram("norvik_save_lists"), folder.path(), kSavedPath, std::to_string(first),
            std::to_string(last)};
  }
  void putBefore(const Pair& pair) {
    fs::remove(folder.onDisk(kSavedPath));
    if (pair.before) folder.put(kSavedPath, textOf(*pair.before));
  }
  ProgramResult save(const Pair& pair, const Fault& fault) {
    return runProgram(saver(pair.after, pair.after), {.environment = environmentOf(fault)});
  }
  std::optional<std::string> before(const Pair& pair) const {
    return pair.before ? std::optional(textOf(*pair.before)) : std::nullopt;
  }
  // Whether the file holds the old list or the new one, whole; a missing one may be empty, which is read
  // alike.
  testing::AssertionResult isOldOrNew(const Pair& pair) const {
    const std::optional<std::string> now = folder.read(kSavedPath);
    if (!now || now->empty()) {
      if (!pair.before) return testing::AssertionSuccess();
      return testing::AssertionFailure() << (now ? "is empty" : "is missing");
    }
    const std::string text = trimmedText(*now);
    if (text == textOf(pair.after) || (pair.before && text == textOf(*pair.before)))
      return testing::AssertionSuccess();
    return testing::AssertionFailure() << "is neither old nor new: " << *now;
  }

  SandboxFolder folder;
};

TEST_F(InterruptedSave, LeavesTheOldListOrTheNewOneWhereverItIsKilled) {
  for (const Pair& pair : kPairs) {
    SCOPED_TRACE(pair.name);
    int kills = 0;
    while (true) {
      putBefore(pair);
      const Fault fault{.calls = kEveryOperation,
                        .effect = "KILL",
                        .number = std::to_string(kills + 1),
                        .path = "*/list.plist"};
      if (save(pair, fault).status == 0) break;
      EXPECT_TRUE(isOldOrNew(pair)) << "killed before operation " << kills + 1;
      ASSERT_LT(++kills, 100);
    }
    EXPECT_EQ(folder.read(kSavedPath), textOf(pair.after));
    EXPECT_GE(kills, 3);
  }
}

// NORVIK_KILLS=1000 makes it a long test.
TEST_F(InterruptedSave, LeavesAWholeListWhenItIsKilledAtAnyTime) {
  const char* chosen = std::getenv("NORVIK_KILLS");
  const int rounds = chosen != nullptr ? std::atoi(chosen) : 60;
  std::mt19937 random(8);
  std::uniform_int_distribution<useconds_t> microseconds(0, 3000);
  int killedAmongSaves = 0;
  for (int round = 0; round < rounds; ++round) {
    folder.put(kSavedPath, textOf(0));
    RunningProgram program(saver(1, 1'000'000));
    ASSERT_TRUE(eventually([&] { return folder.read(kSavedPath) != textOf(0); }));
    ::usleep(microseconds(random));
    program.send(SIGKILL);
    ASSERT_TRUE(program.ending());
    const std::string text = folder.read(kSavedPath).value_or("");
    const std::optional<PropertyList> list = decodePropertyList(text);
    ASSERT_TRUE(list) << "round " << round << ": " << text.size() << " bytes: " << text;
    const auto number = static_cast<int>(integerValue(list->find("Number")));
    EXPECT_EQ(list, savedList(number));
    killedAmongSaves += number > 1 ? 1 : 0;
  }
  EXPECT_GT(killedAmongSaves, rounds / 2);
}

TEST_F(InterruptedSave, RemovesTheTargetOfALinkThatPointedNowhere) {
  const std::string target = folder.onDisk("/Users/user/Library/Preferences/target");
  fs::create_symlink(target, folder.onDisk(kSavedPath));
  const Pair missing{"missing", std::nullopt, 1};
  EXPECT_EQ(save(missing, {.calls = "fsync", .effect = "EIO"}).status, 1);
  EXPECT_FALSE(fs::exists(target));
  EXPECT_TRUE(fs::is_symlink(folder.onDisk(kSavedPath)));
  EXPECT_EQ(save(missing, {}).status, 0);
  EXPECT_EQ(contentOf(target), textOf(1));
  EXPECT_TRUE(fs::is_symlink(folder.onDisk(kSavedPath)));
}

// A file that no reader takes, as it is too large, is not read into memory to be put back: only its beginning
// is.
TEST_F(InterruptedSave, WritesOverAFileThatIsTooLargeForAList) {
  const std::uintmax_t large = kMaxPropertyListBytes + 1;
  const std::string disk = folder.onDisk(kSavedPath);
  folder.put(kSavedPath, "beginning");
  fs::resize_file(disk, large);
  for (const char* calls : {"write", "fsync", "close", "ftruncate"}) {
    EXPECT_EQ(
        save(kPairs[0], {.calls = calls, .effect = "EIO", .number = "1", .path = "*/list.plist"}).status, 1);
    EXPECT_EQ(fs::file_size(disk), large) << calls;
    EXPECT_EQ(folder.read(kSavedPath)->substr(0, 20), "beginning" + std::string(11, '\0')) << calls;
  }
  EXPECT_EQ(save(kPairs[0], {}).status, 0);
  EXPECT_EQ(folder.read(kSavedPath), textOf(kPairs[0].after));
}

// The limit is one for the whole process, so a shell sets it for the program alone. It is smaller than the
// list.
TEST_F(InterruptedSave, FailsBeyondTheSizeThatFilesMayHaveInsteadOfEnding) {
  for (const Pair& pair : {kPairs[0], kPairs[1], kPairs[3]}) {
    putBefore(pair);
    Words words{"sh", "-c", "ulimit -S -f 1; exec \"$@\"", "sh"};
    for (const std::string& word : saver(4, 4)) words.push_back(word);
    EXPECT_EQ(runProgram(words).status, 1) << pair.name;
    EXPECT_EQ(folder.read(kSavedPath), before(pair)) << pair.name;
  }
}

struct Failing {
  const char* calls;
  const char* effect;
  const char* number;
};
constexpr Failing kFailing[] = {{"open-write", "EROFS", "1+"},
                                {"open-write", "EACCES", "1+"},
                                {"open-write", "EDQUOT", "1+"},
                                {"open-write", "EMFILE", "1+"},
                                {"fallocate", "ENOSPC", "1"},
                                {"fallocate", "EDQUOT", "1"},
                                {"write", "ENOSPC", "1"},
                                {"write", "EIO", "1"},
                                {"write", "EDQUOT", "1"},
                                {"write", "EFBIG", "1"},
                                {"write", "SHORT,ENOSPC", "1"},
                                {"write", "SHORT,SHORT,EIO", "1"},
                                {"fsync", "EIO", "1"},
                                {"fsync", "ENOSPC", "1"},
                                {"fsync", "EDQUOT", "1"},
                                {"close", "EIO", "1"},
                                {"close", "ENOSPC", "1"},
                                {"close", "EDQUOT", "1"},
                                {"write,fsync,close", "EIO", "1"},
                                {"write", "ENOSPC", "1+"},
                                {"fsync,close", "ENOSPC", "1+"}};

TEST_F(InterruptedSave, PutsTheOldBytesBackWhereAnOperationFails) {
  for (const Pair& pair : kPairs) {
    for (const Failing& failing : kFailing) {
      SCOPED_TRACE(std::string(pair.name) + ", " + failing.calls + ": " + failing.effect);
      putBefore(pair);
      const Fault fault{
          .calls = failing.calls, .effect = failing.effect, .number = failing.number, .path = "*/list.plist"};
      EXPECT_EQ(save(pair, fault).status, 1);
      EXPECT_EQ(folder.read(kSavedPath), before(pair));
    }
  }
}

TEST_F(InterruptedSave, PutsTheOldBytesBackWhereTheFileCannotBeCut) {
  const Pair shorter = kPairs[1];
  for (const char* error : {"EIO", "EROFS", "ENOSPC"}) {
    putBefore(shorter);
    EXPECT_EQ(
        save(shorter, {.calls = "ftruncate", .effect = error, .number = "1", .path = "*/list.plist"}).status,
        1);
    EXPECT_EQ(folder.read(kSavedPath), before(shorter));
  }
}

TEST_F(InterruptedSave, PutsTheOldBytesBackWhereTheyCannotBeRead) {
  for (const Pair& pair : {kPairs[0], kPairs[1]}) {
    putBefore(pair);
    EXPECT_EQ(save(pair, {.calls = "read", .effect = "EIO", .path = "*/list.plist"}).status, 1);
    EXPECT_EQ(folder.read(kSavedPath), before(pair));
  }
}

TEST_F(InterruptedSave, GoesOnAfterASignalAndAShortWrite) {
  for (const Pair& pair : kPairs) {
    SCOPED_TRACE(pair.name);
    for (const char* effect : {"EINTR,EINTR", "SHORT", "SHORT,EINTR,SHORT"}) {
      putBefore(pair);
      EXPECT_EQ(
          save(pair, {.calls = "write", .effect = effect, .number = "1", .path = "*/list.plist"}).status, 0);
      EXPECT_EQ(folder.read(kSavedPath), textOf(pair.after));
    }
    putBefore(pair);
    const Fault interrupted{
        .calls = "read,fallocate,ftruncate,fsync", .effect = "EINTR", .number = "1", .path = "*/list.plist"};
    EXPECT_EQ(save(pair, interrupted).status, 0);
    EXPECT_EQ(folder.read(kSavedPath), textOf(pair.after));
  }
}

TEST_F(InterruptedSave, DoesWithoutReservedSpaceWhereTheDiskCannotReserveIt) {
  for (const Pair& pair : kPairs) {
    putBefore(pair);
    EXPECT_EQ(save(pair, {.calls = "fallocate", .effect = "EOPNOTSUPP", .path = "*/list.plist"}).status, 0);
    EXPECT_EQ(folder.read(kSavedPath), textOf(pair.after));
  }
}

// Somebody who has the list open for writing appends to it when the new one has been written and not yet cut.
class AppendedSave : public InterruptedSave {
 protected:
  // Saves a shorter list, and returns the exit status. The effects are those of the sync and of the cut.
  int saveWhileSomebodyAppends(const std::string& effects) {
    putBefore(kPairs[1]);
    const Descriptor other(::open(folder.onDisk(kSavedPath).c_str(), O_WRONLY | O_APPEND));
    const Fault fault{.calls = "fsync,ftruncate", .effect = effects, .number = "1", .path = "*/list.plist"};
    RunningProgram program(saver(1, 1), {.environment = environmentOf(fault)});
    EXPECT_TRUE(eventually([&] { return isStopped(program.pid()); }));
    EXPECT_TRUE(writeAll(other, "more"));
    program.send(SIGCONT);
    return program.status();
  }
  static bool isStopped(pid_t pid) {
    return contentOf("/proc/" + std::to_string(pid) + "/stat").find(") T ") != std::string::npos;
  }
};

TEST_F(AppendedSave, CutsOffWhatBelongedToTheOldList) {
  EXPECT_EQ(saveWhileSomebodyAppends("STOP,NONE"), 0);
  EXPECT_EQ(folder.read(kSavedPath), textOf(1));
}

TEST_F(AppendedSave, LeavesItBehindTheOldListWhereTheSaveFails) {
  EXPECT_EQ(saveWhileSomebodyAppends("STOP,EIO"), 1);
  EXPECT_EQ(folder.read(kSavedPath), textOf(4) + "more");
}

TEST_F(InterruptedSave, IsNeverSeenEmptyOrCutByAReader) {
  LinuxPropertyListFiles files{RootFolder(folder.path()), "/Users/user"};
  ASSERT_TRUE(files.writeToFile(savedList(0), kSavedPath));
  std::atomic<bool> over = false;
  std::atomic<long> looks = 0, empty = 0, cut = 0;
  const auto read = [&] {
    while (!over) {
      const std::string text = folder.read(kSavedPath).value_or("");
      ++looks;
      if (text.empty())
        ++empty;
      else if (!decodePropertyList(text))
        ++cut;
    }
  };
  std::thread one(read), two(read);
  const bool looking = eventually([&] { return looks > 2; });
  bool saved = true;
  for (int number = 1; number <= 500; ++number)
    saved = files.writeToFile(savedList(number), kSavedPath) && saved;
  over = true;
  one.join();
  two.join();
  EXPECT_TRUE(looking && saved);
  EXPECT_EQ(empty, 0) << "of " << looks;
  EXPECT_EQ(cut, 0) << "of " << looks;
}

struct FailingStream {
  const char* calls;
  const char* effect;
  const char* number;
  int status;
};
constexpr FailingStream kFailingStreams[] = {
    {"open-write", "EROFS", "1", 1}, {"write", "ENOSPC", "1", 2}, {"write", "EIO", "2", 2},
    {"write", "SHORT", "2", 2},      {"fsync", "EIO", "1", 3},    {"fsync", "EDQUOT", "1", 3},
    {"close", "EIO", "1", 3},        {"fsync", "EINTR", "1", 0},  {"fsync", "EINVAL", "1", 0}};

// What the pane writes with a stream it has moved by a tool, so it must be on the disk, or known not to be.
TEST_F(InterruptedSave, TellsWhatBecameOfAStream) {
  for (const FailingStream& failing : kFailingStreams) {
    const Fault fault{
        .calls = failing.calls, .effect = failing.effect, .number = failing.number, .path = "*/lines.txt"};
    const ProgramResult result =
        runProgram({builtProgram("norvik_save_lists"), folder.path(), "/tmp/lines.txt"},
                   {.environment = environmentOf(fault)});
    EXPECT_EQ(result.status, failing.status) << failing.calls << ": " << failing.effect;
  }
  EXPECT_EQ(folder.read("/tmp/lines.txt"), "one\ntwo\n");
}

TEST_F(InterruptedSave, FailsToWriteAStreamBeyondTheSizeThatFilesMayHaveInsteadOfEnding) {
  const ProgramResult result =
      runProgram({"sh", "-c", "ulimit -S -f 0; exec \"$@\"", "sh", builtProgram("norvik_save_lists"),
                  folder.path(), "/tmp/lines.txt"});
  EXPECT_EQ(result.status, 2);
}

}  // namespace
}  // namespace norvik
