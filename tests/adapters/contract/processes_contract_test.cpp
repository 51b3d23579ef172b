// The contracts of the process manager and of the process services of POSIX.
#include <algorithm>
#include <limits>

#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {
namespace {

const ApplicationKind kAgent{"APPL", "nvka", "com.veltrane.nvkagent"};
const ApplicationKind kSetup{"NVKI", "nvki", "com.veltrane.setup"};

class ProcessesContract : public ContractTest {
 protected:
  std::vector<ProcessSerialNumber> listed() {
    std::vector<ProcessSerialNumber> found;
    for (ProcessSerialNumber process; interfaces.processManager.GetNextProcess(process) == noErr;) {
      found.push_back(process);
      if (found.size() > 1000) throw std::runtime_error("a list without an end");
    }
    return found;
  }
  int32_t pidOf(const ProcessSerialNumber& process) {
    int32_t pid = -7;
    EXPECT_EQ(interfaces.processManager.GetProcessPID(process, pid), noErr);
    return pid;
  }
  std::vector<int32_t> listedPids() {
    std::vector<int32_t> pids;
    for (const ProcessSerialNumber& process : listed()) pids.push_back(pidOf(process));
    return pids;
  }
};

INSTANTIATE_TEST_SUITE_P(Every, ProcessesContract, everyAdapter(), adapterName);

TEST_P(ProcessesContract, EndsAnEmptyListAtOnce) {
  ProcessSerialNumber process;
  EXPECT_EQ(interfaces.processManager.GetNextProcess(process), procNotFound);
  EXPECT_EQ(process.highLongOfPSN, 0u);
  EXPECT_EQ(process.lowLongOfPSN, kNoProcess);
}

TEST_P(ProcessesContract, ListsApplicationsInOrder) {
  const int32_t first = computer->startApplication(kAgent);
  computer->startOutsideOfBundles();
  const int32_t second = computer->startApplication(kSetup);
  const int32_t third = computer->startApplication(kAgent);
  EXPECT_EQ(listedPids(), (std::vector<int32_t>{first, second, third}));
}

TEST_P(ProcessesContract, StartsAnewAfterTheLast) {
  computer->startApplication(kAgent);
  ProcessSerialNumber process;
  ASSERT_EQ(interfaces.processManager.GetNextProcess(process), noErr);
  const ProcessSerialNumber first = process;
  EXPECT_EQ(interfaces.processManager.GetNextProcess(process), procNotFound);
  EXPECT_EQ(process.highLongOfPSN, 0u);
  EXPECT_EQ(process.lowLongOfPSN, kNoProcess);
  ASSERT_EQ(interfaces.processManager.GetNextProcess(process), noErr);
  EXPECT_EQ(process.lowLongOfPSN, first.lowLongOfPSN);
}

TEST_P(ProcessesContract, ReturnsTypeAndCreatorWhateverTheLength) {
  computer->startApplication(kSetup);
  for (const uint32_t length : {0u, static_cast<uint32_t>(sizeof(ProcessInfoRec))}) {
    ProcessInfoRec information;
    information.processInfoLength = length;
    const ProcessSerialNumber process = listed().at(0);
    ASSERT_EQ(interfaces.processManager.GetProcessInformation(process, information), noErr);
    EXPECT_EQ(information.processType, fourCharCode("NVKI"));
    EXPECT_EQ(information.processSignature, fourCharCode("nvki"));
    EXPECT_EQ(information.processNumber.lowLongOfPSN, process.lowLongOfPSN);
    EXPECT_EQ(information.processNumber.highLongOfPSN, process.highLongOfPSN);
  }
}

TEST_P(ProcessesContract, ReturnsTheIdentifierOfTheBundle) {
  computer->startApplication(kAgent);
  const auto known = interfaces.processManager.ProcessInformationCopyDictionary(listed().at(0));
  ASSERT_TRUE(known);
  const PropertyList* identifier = known->find("CFBundleIdentifier");
  ASSERT_NE(identifier, nullptr);
  EXPECT_EQ(*identifier, PropertyList("com.veltrane.nvkagent"));
}

TEST_P(ProcessesContract, KnowsNothingOfNoProcess) {
  computer->startApplication(kAgent);
  for (const ProcessSerialNumber& process :
       {ProcessSerialNumber{}, ProcessSerialNumber{0, 0x7ffffff0}, ProcessSerialNumber{1, 1}}) {
    ProcessInfoRec information;
    int32_t pid = -7;
    EXPECT_NE(interfaces.processManager.GetProcessInformation(process, information), noErr);
    EXPECT_FALSE(interfaces.processManager.ProcessInformationCopyDictionary(process));
    EXPECT_NE(interfaces.processManager.GetProcessPID(process, pid), noErr);
    EXPECT_EQ(pid, -7);
  }
}

TEST_P(ProcessesContract, SendsASignalToOneProcess) {
  const int32_t meant = computer->startApplication(kAgent);
  const int32_t other = computer->startApplication(kAgent);
  EXPECT_EQ(interfaces.posix.kill(meant, Signal::user2), KillResult::sent);
  EXPECT_TRUE(computer->wasSignalled(meant));
  EXPECT_TRUE(computer->isUndisturbed(other));
}

TEST_P(ProcessesContract, AsksForAProcessWithoutDisturbingIt) {
  const int32_t pid = computer->startOutsideOfBundles();
  EXPECT_EQ(interfaces.posix.kill(pid, Signal::none), KillResult::sent);
  EXPECT_TRUE(computer->isUndisturbed(pid));
  EXPECT_EQ(interfaces.posix.kill(pid, Signal::none), KillResult::sent);
}

TEST_P(ProcessesContract, MissesAProcessThatEnded) {
  const int32_t pid = computer->startOutsideOfBundles();
  computer->end(pid);
  EXPECT_EQ(interfaces.posix.kill(pid, Signal::none), KillResult::noSuchProcess);
  EXPECT_EQ(interfaces.posix.kill(pid, Signal::user2), KillResult::noSuchProcess);
  EXPECT_EQ(interfaces.posix.kill(std::numeric_limits<int32_t>::max(), Signal::none),
            KillResult::noSuchProcess);
}

// A pid file may hold any number, and one of these would mean a group of processes, or all, to the system.
TEST_P(ProcessesContract, TakesNoNumberForMoreThanOneProcess) {
  EXPECT_EQ(interfaces.posix.kill(0, Signal::none), KillResult::sent);
  for (const int32_t pid : {-1, -2, std::numeric_limits<int32_t>::min()}) {
    EXPECT_EQ(interfaces.posix.kill(pid, Signal::none), KillResult::noSuchProcess) << pid;
    EXPECT_EQ(interfaces.posix.kill(pid, Signal::user2), KillResult::noSuchProcess) << pid;
  }
}

TEST_P(ProcessesContract, ExistsItself) {
  const int32_t self = interfaces.posix.getpid();
  EXPECT_GT(self, 0);
  EXPECT_EQ(interfaces.posix.getpid(), self);
  EXPECT_EQ(interfaces.posix.kill(self, Signal::none), KillResult::sent);
}

TEST_P(ProcessesContract, SleepsForTheGivenTime) {
  const auto before = computer->now();
  interfaces.posix.usleep(20000);
  EXPECT_GE(computer->now() - before, std::chrono::microseconds(20000));
  interfaces.posix.usleep(0);
}

}  // namespace
}  // namespace norvik
