// What norvikctl shows: status, show and get, as text and as JSON. None of it changes anything.
#include <gtest/gtest.h>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

class ReadingTest : public testing::Test {
 protected:
  // The line of a table that begins with this word.
  static std::string line(const std::string& table, const std::string& word) {
    const std::size_t at = table.find("  " + word + " ");
    return at == std::string::npos ? "" : table.substr(at + 2, table.find('\n', at) - at - 2);
  }

  nlohmann::json setting(const std::string& name) const {
    return box.json({"show", name})["pages"][0]["settings"][0];
  }

  SandboxRun box;
};

TEST_F(ReadingTest, StatusOfAStoppedServer) {
  const Result result = box.run({"status"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "Server state    Stopped\n"
            "Norvik clients  Norvik clients cannot connect to this computer.\n"
            "RDP clients     RDP clients cannot connect to this computer.\n"
            "Lock            Closed\n"
            "Pending         Nothing\n");
}

TEST_F(ReadingTest, StatusAsJson) {
  const auto status = box.json({"status"});
  EXPECT_EQ(status["state"], "Stopped");
  EXPECT_EQ(status["running"], false);
  EXPECT_TRUE(status["pid"].is_null());
  EXPECT_TRUE(status["addresses"]["nvk"]["address"].is_null());
  EXPECT_EQ(status["addresses"]["rdp"]["text"], "RDP clients cannot connect to this computer.");
  EXPECT_EQ(status["locked"], true);
  EXPECT_EQ(status["pending"], nlohmann::json::array());
}

TEST_F(ReadingTest, GetPrintsValuesAlone) {
  const Result result =
      box.run({"get", "nvk.port", "nvk.enabled", "image.quality", "connect.action", "notify.repeat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "4073\non\nHigh\nconsole\n1 hour\n");
}

TEST_F(ReadingTest, GetAsJsonKeepsTheKindsOfValues) {
  const auto values =
      box.json({"get", "nvk.port", "nvk.enabled", "image.depth", "image.quality", "connect.action"});
  EXPECT_EQ(values["values"], nlohmann::json({{"nvk.port", 4073},
                                              {"nvk.enabled", true},
                                              {"image.depth", 6},
                                              {"image.quality", "High"},
                                              {"connect.action", "console"}}));
}

TEST_F(ReadingTest, ShowHasARowForEverySetting) {
  const Result result = box.run({"show"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(line(result.out, "user.mouse.swap"),
            "user.mouse.swap             off         default  yes                                on, off");
  EXPECT_EQ(line(result.out, "user.image.depth"),
            "user.image.depth            6           default  no: needs user.image.defaults=off  4 to 8");
  EXPECT_EQ(line(result.out, "nvk.port"),
            "nvk.port                    4073        default  no: locked                         1 to 65535");
  EXPECT_EQ(line(result.out, "connect.action"),
            "connect.action              console     default  no: locked                         console, "
            "lock, hidden");
}

TEST_F(ReadingTest, ShowFindsSettingsByWords) {
  const auto found = box.json({"show", "--search", "speed"});
  ASSERT_FALSE(found["hits"].empty());
  EXPECT_NE(found["hits"].dump().find("\"image.quality\""), std::string::npos) << found;
  const auto port = box.json({"show", "--search", "3389"})["hits"];
  ASSERT_EQ(port.size(), 2U) << port;
  EXPECT_EQ(port[0]["setting"], "rdp.port.custom");
  EXPECT_EQ(port[1]["setting"], "rdp.port");
  EXPECT_EQ(port[1]["value"], 3389);
  EXPECT_EQ(port[1]["locked"], true);
  const std::string text = box.run({"show", "--search", "cliboard"}).out;
  EXPECT_EQ(text.find("nvk.clipboard  on  Share the clipboard  Locked: "), 0U) << text;
  EXPECT_EQ(box.run({"show", "--search", "xyzzy"}).out, "Nothing is found.\n");
  EXPECT_EQ(box.run({"show", "mouse", "--search", "x"}).status, 64);
}

TEST_F(ReadingTest, ShowMarksWhatIsNotTheDefault) {
  ASSERT_EQ(box.run({"set", "user.mouse.swap=on", "nvk.sound=off"}).status, 0);
  EXPECT_NE(line(box.run({"show", "mouse"}).out, "user.mouse.swap").find("changed"), std::string::npos);
  EXPECT_NE(line(box.run({"show", "nvk"}).out, "nvk.sound").find("changed"), std::string::npos);
  EXPECT_NE(line(box.run({"show", "nvk"}).out, "nvk.printing").find("default"), std::string::npos);
  EXPECT_EQ(setting("nvk.sound")["default"], false);
  EXPECT_EQ(setting("nvk.printing")["default"], true);
}

TEST_F(ReadingTest, APageIsNamedByItsTitleItsStartItsGroupOrItsSettings) {
  const auto pagesOf = [&](const std::string& name) {
    std::string titles;
    const auto shown = box.json({"show", name});
    for (const auto& page : shown["pages"]) {
      titles += page["group"].get<std::string>() + ":" + page["page"].get<std::string>() + " ";
    }
    return titles;
  };
  EXPECT_EQ(pagesOf("Norvik clients"), "admin:Norvik clients ");
  EXPECT_EQ(pagesOf("norvik-clients"), "admin:Norvik clients ");
  EXPECT_EQ(pagesOf("conn"), "admin:Connections ");
  EXPECT_EQ(pagesOf("image"), "user:Image admin:Image ");
  EXPECT_EQ(pagesOf("admin:Image"), "admin:Image ");
  EXPECT_EQ(pagesOf("user"), "user:Image user:Mouse ");
  EXPECT_EQ(pagesOf("rdp"), "admin:RDP clients ");
}

TEST_F(ReadingTest, ShowOfOneSettingHasItsHelp) {
  const Result result = box.run({"show", "user.image.depth"});
  EXPECT_EQ(result.out,
            "user.image.depth\n\n"
            "  Colour depth\n"
            "  More colours look better; fewer colours travel faster.\n\n"
            "  Page      Image\n"
            "  Value     6 (default)\n"
            "  Takes     a whole number from 4 to 8\n"
            "  Editable  no: needs user.image.defaults=off\n");
}

TEST_F(ReadingTest, ShowAsJson) {
  const auto depth = setting("user.image.depth");
  EXPECT_EQ(depth["minimum"], 4);
  EXPECT_EQ(depth["maximum"], 8);
  EXPECT_EQ(depth["editable"], false);
  EXPECT_EQ(depth["remark"], "needs user.image.defaults=off");
  EXPECT_EQ(setting("image.quality")["items"], nlohmann::json({"Low", "Medium", "High"}));
  EXPECT_EQ(setting("connect.action")["choices"][1]["name"], "lock");
  EXPECT_EQ(setting("nvk.port")["remark"], "locked");
  EXPECT_EQ(setting("user.mouse.swap")["editable"], true);
}

TEST_F(ReadingTest, LookingChangesNothing) {
  const auto before = box.files();
  for (const Words& words : {Words{"status"}, Words{"show"}, Words{"get", "nvk.port"}, Words{"limits"}}) {
    EXPECT_EQ(box.run(words).status, 0);
  }
  EXPECT_EQ(box.files(), before);
}

}  // namespace
}  // namespace norvik::command
