// norvikctl status --prometheus: each metric against what the sandbox is made to do, and the text against the
// program that Prometheus checks it with.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/sandbox.h"

namespace norvik::command {
namespace {

class MetricsTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(box.run({"set", "nvk.port=" + std::to_string(nvk), "rdp.enabled=off"}).status, 0);
  }
  // The samples by their names with labels, after promtool has found nothing wrong with the text.
  std::map<std::string, std::string> samples() const {
    const Result result = box.run({"status", "--prometheus"});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string file = box.beside("norvik.prom");
    std::ofstream(file) << result.out;
    const Result check =
        runProgram("/bin/sh", {"-c", "promtool check metrics < " + file + " 2>&1"}, box.beside(""));
    EXPECT_EQ(check.status, 0) << check.out;
    EXPECT_EQ(check.out, "");
    std::map<std::string, std::string> samples;
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("#")) continue;
      const std::size_t blank = line.rfind(' ');
      samples[line.substr(0, blank)] = line.substr(blank + 1);
    }
    return samples;
  }

  SandboxRun box;
  const int nvk = freePort();
};

TEST_F(MetricsTest, AStoppedServer) {
  auto all = samples();
  EXPECT_EQ(all["norvik_server_running"], "0");
  EXPECT_EQ(all["norvik_server_pending_restart"], "0");
  EXPECT_EQ(all["norvik_service_enabled{service=\"nvk\"}"], "1");
  EXPECT_EQ(all["norvik_service_enabled{service=\"rdp\"}"], "0");
  EXPECT_EQ(all["norvik_service_port{service=\"nvk\"}"], std::to_string(nvk));
  EXPECT_EQ(all["norvik_service_in_force{service=\"nvk\"}"], "0");
  EXPECT_EQ(all["norvik_service_in_force{service=\"rdp\"}"], "1");
  EXPECT_EQ(all["norvik_service_reachable{service=\"nvk\"}"], "0");
  EXPECT_EQ(all["norvik_settings_file_damaged{file=\"/etc/norvik/svr.cfg\"}"], "0");
  EXPECT_EQ(all["norvik_impossible_values"], "0");
  const std::string version = box.json({"--version"})["version"];
  EXPECT_EQ(all["norvik_panel_info{version=\"" + version + "\"}"], "1");
}

TEST_F(MetricsTest, ARunningServerAndOneThatHasNotTakenUpWhatIsStored) {
  ASSERT_EQ(box.run({"start"}).status, 0);
  auto all = samples();
  EXPECT_EQ(all["norvik_server_running"], "1");
  EXPECT_EQ(all["norvik_server_pending_restart"], "0");
  EXPECT_EQ(all["norvik_service_in_force{service=\"nvk\"}"], "1");
  box.write(kServerFile, serverConfiguration(freePort(), 0));
  all = samples();
  EXPECT_EQ(all["norvik_server_pending_restart"], "1");
  EXPECT_EQ(all["norvik_service_in_force{service=\"nvk\"}"], "0");
  ASSERT_EQ(box.run({"apply"}).status, 0);
  EXPECT_EQ(samples()["norvik_server_pending_restart"], "0");
}

TEST_F(MetricsTest, WhatIsWrongWithTheFiles) {
  box.write(kServerFile, serverConfiguration(70000, 0));
  EXPECT_EQ(samples()["norvik_impossible_values"], "1");
  box.write(kServerFile, "<plist");
  auto all = samples();
  EXPECT_EQ(all["norvik_settings_file_damaged{file=\"/etc/norvik/svr.cfg\"}"], "1");
  EXPECT_EQ(all["norvik_settings_file_damaged{file=\"/etc/launchd.conf\"}"], "0");
  EXPECT_EQ(all["norvik_impossible_values"], "0");
}

TEST_F(MetricsTest, MetricsAreNoJson) {
  EXPECT_EQ(box.run({"status", "--prometheus", "--json"}).status, 64);
  EXPECT_EQ(box.run({"show", "--prometheus"}).status, 64);
}

}  // namespace
}  // namespace norvik::command
