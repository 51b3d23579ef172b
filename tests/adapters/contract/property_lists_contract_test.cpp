// The contract of the property lists interface.
#include "src/adapters/property_lists/codec.h"
#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {
namespace {

using namespace std::string_literals;
using Dictionary = PropertyList::Dictionary;

constexpr const char* kPath = "/Users/user/Library/Preferences/com.example.plist";

// Every type, the ends of its range, and nesting.
PropertyList everyKind() {
  return PropertyList(Dictionary{
      {"text", PropertyList("<&> \xc3\xa9 \xf0\x9f\x98\x80\n")},
      {"", PropertyList("under the empty key")},
      {"yes", PropertyList(true)},
      {"no", PropertyList(false)},
      {"least", PropertyList(INT64_MIN)},
      {"most", PropertyList(UINT64_MAX)},
      {"real", PropertyList(0.1)},
      {"date", PropertyList(PropertyList::Date{-86400})},
      {"data", PropertyList(PropertyList::Data{"\0\xff<"s})},
      {"array", PropertyList(PropertyList::Array{PropertyList(int64_t{1}), PropertyList("two"),
                                                 PropertyList(PropertyList::Array{})})},
      {"dictionary", PropertyList(Dictionary{{"inner", PropertyList(Dictionary{})}})},
  });
}

class PropertyListsContract : public ContractTest {
 protected:
  std::optional<PropertyList> read(const std::string& path = kPath) {
    return interfaces.propertyLists.dictionaryWithContentsOfFile(path);
  }
  bool readsAsNothing(const std::string& bytes) {
    computer->putFile(kPath, bytes);
    return !read().has_value();
  }
  bool write(const std::string& path) { return interfaces.propertyLists.writeToFile(everyKind(), path); }
};

INSTANTIATE_TEST_SUITE_P(Every, PropertyListsContract, everyAdapter(), adapterName);

TEST_P(PropertyListsContract, BringsEveryKindBackFromAFile) {
  ASSERT_TRUE(write(kPath));
  EXPECT_EQ(read(), everyKind());
}

TEST_P(PropertyListsContract, WritesXml) {
  ASSERT_TRUE(write(kPath));
  const auto bytes = computer->bytesOf(kPath);
  ASSERT_TRUE(bytes);
  EXPECT_TRUE(bytes->starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) << *bytes;
  EXPECT_NE(bytes->find("<plist version=\"1.0\">"), std::string::npos) << *bytes;
}

TEST_P(PropertyListsContract, ReadsEveryEncoding) {
  computer->putFile(kPath, encodeBinaryPropertyList(everyKind()));
  EXPECT_EQ(read(), everyKind());
  computer->putFile(kPath, encodeXmlPropertyList(everyKind()));
  EXPECT_EQ(read(), everyKind());
  computer->putFile(kPath, "{ Port = \"4073\"; List = (a, b); }");
  const auto old = read();
  ASSERT_TRUE(old);
  EXPECT_EQ(intValue(old->find("Port")), 4073);
}

TEST_P(PropertyListsContract, ReadsAnEmptyDictionary) {
  ASSERT_TRUE(interfaces.propertyLists.writeToFile(PropertyList(), kPath));
  EXPECT_EQ(read(), PropertyList());
}

TEST_P(PropertyListsContract, ReadsNothingWhereThereIsNoFile) {
  EXPECT_FALSE(read());
  EXPECT_FALSE(read("/tmp/missing/file"));
  computer->makeDirectory("/tmp/folder");
  EXPECT_FALSE(read("/tmp/folder"));
}

TEST_P(PropertyListsContract, ReadsNothingThatCannotBeOpened) {
  computer->putUnreadable(kPath);
  EXPECT_FALSE(read());
  EXPECT_FALSE(write(kPath));
}

TEST_P(PropertyListsContract, ReadsNoRootThatIsNoDictionary) {
  EXPECT_TRUE(readsAsNothing(encodeXmlPropertyList(PropertyList("text"))));
  EXPECT_TRUE(readsAsNothing(encodeBinaryPropertyList(PropertyList(PropertyList::Array{}))));
}

TEST_P(PropertyListsContract, ReadsNothingFromAnEmptyOrForeignFile) {
  EXPECT_TRUE(readsAsNothing(""));
  EXPECT_TRUE(readsAsNothing("limit maxfiles 1024 2048\n"));
  EXPECT_TRUE(readsAsNothing("\x7f"s + "ELF\x02\x01\x01\0\0\0"s));
}

TEST_P(PropertyListsContract, ReadsNothingFromATruncatedFile) {
  const std::string xml = encodeXmlPropertyList(everyKind());
  const std::string binary = encodeBinaryPropertyList(everyKind());
  for (const std::size_t part : {2u, 3u, 10u}) {
    EXPECT_TRUE(readsAsNothing(xml.substr(0, xml.size() - xml.size() / part))) << part;
    EXPECT_TRUE(readsAsNothing(binary.substr(0, binary.size() - binary.size() / part))) << part;
  }
}

TEST_P(PropertyListsContract, ReadsNothingThatIsNestedTooDeeply) {
  std::string opening = "<plist version=\"1.0\"><dict><key>k</key>";
  for (int level = 0; level < kMaxPropertyListDepth + 1; ++level) opening += "<array>";
  EXPECT_TRUE(readsAsNothing(opening));
}

// How large is too large is the reader's to say.
TEST_P(PropertyListsContract, ReadsALargeFileWholeOrNotAtAll) {
  std::string xml = encodeXmlPropertyList(PropertyList());
  EXPECT_FALSE(readsAsNothing(xml));
  xml.resize(kMaxPropertyListBytes + 1, '\n');
  computer->putFile(kPath, xml);
  EXPECT_EQ(read().value_or(PropertyList()), PropertyList());
}

TEST_P(PropertyListsContract, WritesOverAFileWhole) {
  computer->putFile(kPath, std::string(100000, ' '));
  ASSERT_TRUE(write(kPath));
  EXPECT_EQ(read(), everyKind());
  EXPECT_TRUE(computer->bytesOf(kPath)->ends_with("</plist>\n"));
}

TEST_P(PropertyListsContract, ReportsAFileThatCannotBeWritten) {
  computer->makeDirectory("/tmp/folder");
  computer->putReadOnly("/tmp/read-only");
  computer->putFull("/tmp/full");
  EXPECT_FALSE(write("/tmp/missing/file"));
  EXPECT_FALSE(write("/tmp/folder"));
  EXPECT_FALSE(write("/tmp/read-only"));
  EXPECT_FALSE(write("/tmp/full"));
  EXPECT_FALSE(write(""));
}

// What could not be read again is refused before the file is touched; what that is, is the system's to say.
TEST_P(PropertyListsContract, WritesOnlyWhatCanBeReadAgain) {
  PropertyList deep = PropertyList(Dictionary{});
  for (int level = 0; level < kMaxPropertyListDepth; ++level) deep = Dictionary{{"k", deep}};
  const PropertyList never(Dictionary{{"date", PropertyList(PropertyList::Date{1e300})}});
  for (const PropertyList& list : {deep, never}) {
    computer->putFile(kPath, "kept");
    if (interfaces.propertyLists.writeToFile(list, kPath)) {
      EXPECT_TRUE(read());
      continue;
    }
    EXPECT_EQ(computer->bytesOf(kPath), "kept");
    EXPECT_FALSE(interfaces.propertyLists.writeToFile(list, "/tmp/none.plist"));
    EXPECT_FALSE(computer->bytesOf("/tmp/none.plist"));
  }
}

TEST_P(PropertyListsContract, ExpandsALeadingTildeOnly) {
  const auto expanded = [this](std::string_view path) {
    return interfaces.propertyLists.stringByExpandingTildeInPath(path);
  };
  EXPECT_EQ(expanded("~/Library/Preferences/x.plist"), "/Users/user/Library/Preferences/x.plist");
  EXPECT_EQ(expanded("~"), "/Users/user");
  EXPECT_EQ(expanded("~other/x"), "~other/x");
  EXPECT_EQ(expanded("/tmp/~/x"), "/tmp/~/x");
  EXPECT_EQ(expanded("x~"), "x~");
  EXPECT_EQ(expanded(""), "");
}

TEST_P(PropertyListsContract, FindsTheFilesOfTheHomeFolder) {
  ASSERT_TRUE(write(
      interfaces.propertyLists.stringByExpandingTildeInPath("~/Library/Preferences/com.example.plist")));
  EXPECT_EQ(read(), everyKind());
}

}  // namespace
}  // namespace norvik
