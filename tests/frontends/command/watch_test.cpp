// norvikctl watch: a line for each change, until it is interrupted.
#include <gtest/gtest.h>

#include <csignal>
#include <regex>
#include <sstream>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

// A running watch; ended with the object where it still runs.
class Watch {
 public:
  Watch(const SandboxRun& box, const Words& words) : box_(box), program_(box.start(words, "watch")) {}

  std::string text() const { return contentOf(box_.beside("watch")); }
  bool shows(const std::string& text_part) const {
    return eventually([&] { return text().find(text_part) != std::string::npos; });
  }
  // Its exit status, or -1 where the signal ended it.
  int end(int signal) {
    program_.send(signal);
    return program_.status();
  }

 private:
  const SandboxRun& box_;
  RunningProgram program_;
};

TEST(WatchTest, ShowsStateAddressAndLock) {
  const SandboxRun box;
  const std::string first = std::to_string(freePort()), second = std::to_string(freePort());
  ASSERT_EQ(box.run({"set", "nvk.port=" + first, "rdp.port=" + std::to_string(freePort())}).status, 0);
  Watch watch(box, {"watch"});
  ASSERT_TRUE(watch.shows("Lock            Closed\n"));
  ASSERT_EQ(box.run({"start"}).status, 0);
  EXPECT_TRUE(watch.shows("Server state    Started, process "));
  EXPECT_TRUE(watch.shows(":" + first + "\n"));
  ASSERT_EQ(box.run({"set", "nvk.port=" + second}).status, 0);
  EXPECT_TRUE(watch.shows(":" + second + "\n"));
  ASSERT_EQ(box.run({"stop"}).status, 0);
  EXPECT_TRUE(eventually([&] { return countOf(watch.text(), "Server state    Stopped\n") == 2; }));
  EXPECT_EQ(watch.end(SIGINT), 0);
  // What does not change is shown once.
  EXPECT_EQ(countOf(watch.text(), "Lock "), 1);
}

std::vector<nlohmann::json> objectsIn(const std::string& text) {
  std::istringstream lines(text);
  std::vector<nlohmann::json> objects;
  for (std::string line; std::getline(lines, line);) {
    objects.push_back(nlohmann::json::parse(line, nullptr, false));
  }
  return objects;
}

const std::regex kTime("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z");

TEST(WatchTest, AnObjectForEachChangeAsJson) {
  const SandboxRun box;
  const int nvk = freePort(), rdp = freePort();
  box.write(kServerFile, serverConfiguration(nvk, rdp));
  Watch watch(box, {"watch", "--json"});
  ASSERT_TRUE(watch.shows("\"Stopped\""));
  ASSERT_EQ(box.run({"start"}).status, 0);
  ASSERT_TRUE(watch.shows("\"listens\""));
  const int edited = freePort();
  box.write(kServerFile, serverConfiguration(edited, rdp));
  ASSERT_TRUE(watch.shows("\"differs\":true"));
  EXPECT_EQ(watch.end(SIGTERM), 0);

  const auto objects = objectsIn(watch.text());
  ASSERT_EQ(objects.size(), 3U) << watch.text();
  for (const auto& object : objects) {
    EXPECT_TRUE(std::regex_match(object["time"].get<std::string>(), kTime)) << object["time"];
    EXPECT_EQ(object["schema"], 1);
    EXPECT_EQ(object["ok"], true);
    EXPECT_TRUE(object["error"].is_null());
    EXPECT_EQ(object["warnings"], nlohmann::json::array());
    EXPECT_EQ(object["locked"], true);
  }
  EXPECT_EQ(objects[0]["running"], false);
  EXPECT_TRUE(objects[0]["pid"].is_null());
  EXPECT_EQ(objects[0]["inForce"]["nvk"]["seen"], "stopped");
  EXPECT_EQ(objects[1]["running"], true);
  EXPECT_TRUE(
      objects[1]["addresses"]["nvk"]["address"].get<std::string>().ends_with(":" + std::to_string(nvk)));
  EXPECT_EQ(objects[2]["pid"], objects[1]["pid"]);
  EXPECT_EQ(objects[2]["inForce"]["nvk"]["stored"]["port"], edited);
  EXPECT_EQ(objects[2]["inForce"]["nvk"]["ports"], nlohmann::json({nvk}));
}

TEST(WatchTest, TheLinesSayWhereWhatIsStoredIsNotInForce) {
  const SandboxRun box;
  const int nvk = freePort(), rdp = freePort(), edited = freePort();
  box.write(kServerFile, serverConfiguration(nvk, rdp));
  ASSERT_EQ(box.run({"start"}).status, 0);
  Watch watch(box, {"watch"});
  ASSERT_TRUE(watch.shows(":" + std::to_string(nvk) + "\n"));
  box.write(kServerFile, serverConfiguration(edited, rdp));
  EXPECT_TRUE(watch.shows("Norvik clients  Norvik clients: stored " + std::to_string(edited) + ", in force " +
                          std::to_string(nvk) + "; apply to take it up.\n"))
      << watch.text();
  ASSERT_EQ(box.run({"apply"}).status, 0);
  EXPECT_TRUE(watch.shows(":" + std::to_string(edited) + "\n")) << watch.text();
  EXPECT_EQ(watch.end(SIGINT), 0);
}

}  // namespace
}  // namespace norvik::command
