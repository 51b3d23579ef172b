// Files that another program wrote, read and saved here, and read by it again: nothing is lost. The other
// program is the packaged property-list library, whose readers and writers share no line with ours.
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <memory>

#include "src/adapters/property_lists/codec.h"

namespace norvik {
namespace {

struct PlistFree {
  void operator()(void* list) const { plist_free(list); }
};
using Plist = std::unique_ptr<void, PlistFree>;

using Writer = void (*)(plist_t, char**, uint32_t*);

std::string written(const Plist& list, Writer writer) {
  char* bytes = nullptr;
  uint32_t length = 0;
  writer(list.get(), &bytes, &length);
  std::string result(bytes, length);
  plist_to_xml_free(bytes);
  return result;
}

Plist readBack(const std::string& bytes) {
  plist_t list = nullptr;
  plist_from_memory(bytes.data(), static_cast<uint32_t>(bytes.size()), &list);
  return Plist(list);
}

// One of every type, as far as the library itself holds it.
Plist sample() {
  plist_t root = plist_new_dict();
  plist_t service = plist_new_dict();
  plist_dict_set_item(service, "PortNumber", plist_new_uint(5000));
  plist_dict_set_item(service, "Disabled", plist_new_bool(0));
  plist_dict_set_item(root, "NVKService", service);
  plist_dict_set_item(root, "real", plist_new_real(1.0 / 3));
  plist_dict_set_item(root, "negative", plist_new_uint(static_cast<uint64_t>(int64_t{-5})));
  plist_dict_set_item(root, "text", plist_new_string("a & b < \xE2\x82\xAC \xF0\x9F\x98\x80\n"));
  plist_dict_set_item(root, "data", plist_new_data("\0\1\2\377", 4));
  plist_dict_set_item(root, "date", plist_new_date(-3600, 0));
  plist_dict_set_item(root, "no dictionary", plist_new_dict());
  plist_t list = plist_new_array();
  for (uint64_t i = 0; i < 300; ++i) plist_array_append_item(list, plist_new_uint(i));
  plist_dict_set_item(root, "list", list);
  return Plist(root);
}

TEST(CodecInteropTest, NothingIsLostBetweenTwoPrograms) {
  const std::string kWant = written(sample(), plist_to_xml);
  for (Writer writer : {plist_to_xml, plist_to_bin}) {
    auto list = decodePropertyList(written(sample(), writer));
    ASSERT_TRUE(list);
    Plist fromXml = readBack(encodeXmlPropertyList(*list));
    Plist fromBinary = readBack(encodeBinaryPropertyList(*list));
    ASSERT_TRUE(fromXml && fromBinary);
    EXPECT_EQ(*decodePropertyList(written(fromXml, plist_to_xml)), *decodePropertyList(kWant));
    EXPECT_EQ(*decodePropertyList(written(fromBinary, plist_to_xml)), *decodePropertyList(kWant));
  }
}

TEST(CodecInteropTest, TheOtherProgramsValuesAreRead) {
  auto list = decodePropertyList(written(sample(), plist_to_bin));
  ASSERT_TRUE(list);
  EXPECT_EQ(integerValue(list->find("NVKService")->find("PortNumber")), 5000);
  EXPECT_EQ(*list->find("NVKService")->find("Disabled"), PropertyList(false));
  EXPECT_EQ(*list->find("real"), PropertyList(1.0 / 3));
  EXPECT_EQ(*list->find("negative"), PropertyList(int64_t{-5}));
  EXPECT_EQ(*list->find("text"), PropertyList("a & b < \xE2\x82\xAC \xF0\x9F\x98\x80\n"));
  EXPECT_EQ(*list->find("data"), PropertyList(PropertyList::Data{std::string("\0\1\2\377", 4)}));
  EXPECT_EQ(*list->find("date"), PropertyList(PropertyList::Date{-3600}));
  EXPECT_EQ(list->find("list")->as<PropertyList::Array>()->size(), 300u);
}

}  // namespace
}  // namespace norvik
