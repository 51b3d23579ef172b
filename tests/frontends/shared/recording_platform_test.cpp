// What the recording platform records and what it withholds, over the simulated computer.
#include "src/frontends/shared/change/recording_platform.h"

#include <gtest/gtest.h>

#include "src/adapters/simulated/simulated_computer.h"

namespace norvik {
namespace {

constexpr const char* kList = "/Users/user/Library/Preferences/x.plist";

class RecordingPlatformTest : public testing::Test {
 protected:
  // Writes eight bytes to a file in two steps, as the pane does.
  static void write(const char* path) {
    Files& files = platform().files;
    const FileRef file = files.fopen(path, FileMode::writeBinary);
    if (file == nullptr) return;
    for (int i = 0; i < 2; ++i) {
      if (files.fwrite("text", 4, file) != 4) break;
    }
    files.fclose(file);
  }

  SimulatedComputer computer;
};

TEST_F(RecordingPlatformTest, RecordsWhichFilesCouldNotBeWritten) {
  computer.fileFaults.set(FileOperation::openWrite, "/tmp/closed", true);
  computer.fileFaults.set(FileOperation::write, "/tmp/full", true);
  computer.fileFaults.set(FileOperation::openWrite, kList, true);
  const RecordingPlatform recording(computer.platform(), computer.alerts, computer.drawing,
                                    RecordingMode::real);
  write("/tmp/good");
  EXPECT_TRUE(platform().propertyLists.writeToFile(PropertyList(), "/tmp/good.plist"));
  EXPECT_EQ(recording.effects().unwritten, std::vector<UnwrittenFile>{});
  write("/tmp/closed");
  write("/tmp/full");
  EXPECT_FALSE(platform().propertyLists.writeToFile(PropertyList(), kList));
  EXPECT_EQ(recording.effects().unwritten,
            (std::vector<UnwrittenFile>{{"/tmp/closed", ""}, {"/tmp/full", ""}, {kList, ""}}));
}

TEST_F(RecordingPlatformTest, RecordsAFileWhoseClosingFailsOnce) {
  computer.fileFaults.set(FileOperation::close, "/tmp/unsynced", true);
  computer.fileFaults.set(FileOperation::close, "/tmp/full", true);
  computer.fileFaults.set(FileOperation::write, "/tmp/full", true);
  const RecordingPlatform recording(computer.platform(), computer.alerts, computer.drawing,
                                    RecordingMode::real);
  write("/tmp/unsynced");
  write("/tmp/full");
  EXPECT_EQ(recording.effects().unwritten,
            (std::vector<UnwrittenFile>{{"/tmp/unsynced", ""}, {"/tmp/full", ""}}));
}

// Reading is no change: a file that cannot be read is none that could not be written.
TEST_F(RecordingPlatformTest, RecordsNoFileThatIsOnlyRead) {
  const RecordingPlatform recording(computer.platform(), computer.alerts, computer.drawing,
                                    RecordingMode::real);
  EXPECT_EQ(platform().files.fopen("/no/file", FileMode::readBinary), nullptr);
  EXPECT_EQ(recording.effects().unwritten, std::vector<UnwrittenFile>{});
}

TEST_F(RecordingPlatformTest, WithholdsEveryChangeWhileLookingOrPretending) {
  for (const RecordingMode mode : {RecordingMode::looking, RecordingMode::pretending}) {
    computer.fileFaults.set(FileOperation::write, "/tmp/full", true);
    const RecordingPlatform recording(computer.platform(), computer.alerts, computer.drawing, mode);
    write("/tmp/file");
    write("/tmp/full");
    EXPECT_TRUE(platform().propertyLists.writeToFile(PropertyList(), kList));
    EXPECT_EQ(platform().files.mkdir("/tmp/folder", 0755), 0);
    platform().notifications.postNotificationName("Name", nullptr, 0);
    EXPECT_EQ(computer.fileSystem.find("/tmp/file"), nullptr);
    EXPECT_EQ(computer.fileSystem.find(kList), nullptr);
    EXPECT_FALSE(computer.fileSystem.isDirectory("/tmp/folder"));
    EXPECT_EQ(recording.effects().unwritten, std::vector<UnwrittenFile>{});
    EXPECT_EQ(recording.effects().posted, std::vector<std::string>{"Name"});
  }
}

TEST_F(RecordingPlatformTest, ShowsNoPanelWhileItIsUnattended) {
  RecordingPlatform recording(computer.platform(), computer.alerts, computer.drawing, RecordingMode::real);
  int answer = NSAlertOtherReturn;
  recording.answered = [&answer](int given) { answer = given; };
  const auto ask = [] { return platform().alerts.NSRunAlertPanel("Title", "Words?", "Yes", "No", nullptr); };
  computer.alerts.addAnswer(NSAlertAlternateReturn);
  recording.isUnattended = true;
  EXPECT_EQ(ask(), NSAlertDefaultReturn);
  EXPECT_EQ(answer, NSAlertDefaultReturn);
  recording.isUnattended = false;
  EXPECT_EQ(ask(), NSAlertAlternateReturn) << "the answer was not used up";
}

}  // namespace
}  // namespace norvik
