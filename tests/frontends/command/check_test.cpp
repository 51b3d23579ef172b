// norvikctl check in a sandbox: the exit status of each question that a sandbox can fail, waiting, and the
// code to scan. What the network of this machine is like decides the questions about the network, which are
// tested over the simulated computer.
#include <gtest/gtest.h>

#include "src/frontends/shared/qr/qr_code.h"
#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

class CheckTest : public testing::Test {
 protected:
  CheckTest() {
    EXPECT_EQ(
        box.run({"set", "nvk.port=" + std::to_string(port), "rdp.port=" + std::to_string(freePort())}).status,
        0);
    box.write("/.norvik/listen", "everyone\n");
  }
  // The verdicts in the order of the ladder, as far as the port.
  static std::vector<std::string> verdicts(const nlohmann::json& service) {
    std::vector<std::string> found;
    for (std::size_t i = 0; i < 5; ++i) found.push_back(service["rungs"][i]["verdict"]);
    return found;
  }

  const int port = freePort();
  SandboxRun box;
};

TEST_F(CheckTest, AStoppedServer) {
  const Result result = box.run({"check", "nvk"});
  EXPECT_EQ(result.status, 11);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "Norvik clients cannot connect. The server does not run.\n"
            "  yes  The server is installed.\n"
            "  no   The server does not run.\n"
            "       Start the server.\n"
            "  -    The service is switched on\n"
            "  -    What is stored is in force\n"
            "  -    The server listens on the port\n"
            "  -    This computer has an address for others\n"
            "  -    Its name leads to that address\n"
            "  -    Connections are accepted\n"
            "  -    The firewall lets them in\n");
}

TEST_F(CheckTest, AServerThatIsNotInstalled) {
  std::filesystem::remove(box.folder() / "usr/sbin/nvkservice");
  EXPECT_EQ(box.run({"check"}).status, 10);
}

TEST_F(CheckTest, ARunningServerListensAsItIsStored) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  const auto service = box.json({"check"})["reach"]["nvk"];
  EXPECT_EQ(verdicts(service), std::vector<std::string>(5, "passes")) << service;
  EXPECT_EQ(service["port"], port);
  for (const auto& address : service["addresses"]) {
    const bool isFor4 = address["address"].get<std::string>().find(':') == std::string::npos;
    // The sandbox's server listens on IPv4 only. Where an earlier question fails, no connection is tried.
    const bool isAccepted = service["failed"].is_null() && address["usable"] && isFor4;
    EXPECT_EQ(address["accepts"], isAccepted) << address;
  }
}

TEST_F(CheckTest, AServiceThatIsOffCountsOnlyWhereItIsNamed) {
  ASSERT_EQ(box.run({"set", "rdp.enabled=off"}).status, 0);
  ASSERT_EQ(box.run({"start"}).status, 0);
  EXPECT_EQ(box.run({"check", "rdp"}).status, 12);
  EXPECT_NE(box.run({"check"}).status, 12);
  ASSERT_EQ(box.run({"set", "nvk.enabled=off"}).status, 0);
  EXPECT_EQ(box.run({"check"}).status, 12);
}

TEST_F(CheckTest, APortThatIsNotTakenUpAndOneThatIsTaken) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  const TcpListener other;
  std::string stored = box.read("/etc/norvik/svr.cfg");
  const auto change = [&](int from, int to) {
    const std::string number = std::to_string(from);
    stored.replace(stored.find(number), number.size(), std::to_string(to));
    box.write("/etc/norvik/svr.cfg", stored);
  };
  const int unused = freePort();
  change(port, unused);
  EXPECT_EQ(box.run({"check", "nvk"}).status, 13);
  change(unused, other.port());
  const Result taken = box.run({"check", "nvk"});
  EXPECT_EQ(taken.status, 14);
  EXPECT_NE(taken.out.find("Port " + std::to_string(other.port()) + " is taken by "), std::string::npos);
}

TEST_F(CheckTest, WaitsUntilTheServerRuns) {
  RunningProgram waiting = box.start({"check", "nvk", "--wait", "60"}, "check");
  ASSERT_EQ(box.run({"start"}).status, 0);
  if (box.run({"check", "nvk"}).status != 0) GTEST_SKIP() << "this machine has no network";
  EXPECT_EQ(waiting.status(), 0);
  EXPECT_NE(contentOf(box.beside("check")).find("Norvik clients can connect to "), std::string::npos);
}

TEST_F(CheckTest, WaitsNoLongerThanItIsTold) {
  EXPECT_EQ(box.run({"check", "--wait", "1"}).status, 11);
  EXPECT_EQ(box.run({"check", "--wait", "soon"}).status, 64);
  EXPECT_EQ(box.run({"status", "--wait", "1"}).status, 64);
}

TEST(QrCode, HoldsTheTextInASquareWithItsMarks) {
  const auto code = qrCodeOf("192.0.2.7:4500");
  ASSERT_TRUE(code);
  EXPECT_EQ(code->size(), 21);
  // The marks at three corners: a dark frame around a light one around a dark square.
  for (const auto& [column, row] : {std::pair{0, 0}, std::pair{14, 0}, std::pair{0, 14}}) {
    EXPECT_TRUE(code->isDark(column, row));
    EXPECT_FALSE(code->isDark(column + 1, row + 1));
    EXPECT_TRUE(code->isDark(column + 3, row + 3));
  }
  EXPECT_FALSE(code->isDark(-1, 0));
  EXPECT_FALSE(code->isDark(0, 21));
}

TEST(QrCode, ThereIsNoneForNothingAndForTooMuch) {
  EXPECT_FALSE(qrCodeOf(""));
  EXPECT_FALSE(qrCodeOf(std::string(5000, 'x')));
}

TEST(QrCode, InBlocksHasItsMarginInLight) {
  const std::string blocks = inBlocks(*qrCodeOf("a"));
  const std::string first = blocks.substr(0, blocks.find('\n'));
  std::string light;
  for (int i = 0; i < 21 + 2 * kQrMargin; ++i) light += "\u2588";
  EXPECT_EQ(first, light);
}

}  // namespace
}  // namespace norvik::command
