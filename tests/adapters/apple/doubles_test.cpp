// The doubles notice what the real services would not forgive; without that, the other tests would say
// nothing.
#include <CoreFoundation/CoreFoundation.h>
#include <Security/Authorization.h>
#include <gtest/gtest.h>

#include "src/adapters/apple/core_text.h"
#include "tests/adapters/apple/doubles/doubles.h"

namespace norvik {
namespace {

using Faults = std::vector<std::string>;

class AppleDoubles : public testing::Test {
 protected:
  void SetUp() override { doubles::reset(); }
  void TearDown() override { doubles::reset(); }
};

TEST_F(AppleDoubles, FindNoFaultInWhatIsReleasedOnce) {
  const Owned<CFStringRef> text = coreText("text");
  EXPECT_EQ(utf8(text.get()), "text");
  Owned<CFStringRef> other = coreText("other");
  other = coreText("third");
  Owned<CFStringRef> moved = std::move(other);
  moved.reset();
  EXPECT_EQ(doubles::faults().size(), 1u) << "the first is still held";
}

TEST_F(AppleDoubles, NoticeWhatIsNotReleased) {
  const CFStringRef kept = CFStringCreateWithBytes(nullptr, nullptr, 0, kCFStringEncodingUTF8, 0);
  EXPECT_EQ(doubles::faults(), Faults{"not released: an object of kind 1"});
  CFRelease(kept);
  EXPECT_EQ(doubles::faults(), Faults());
}

TEST_F(AppleDoubles, NoticeWhatIsReleasedTooOften) {
  const CFStringRef text = CFStringCreateWithBytes(nullptr, nullptr, 0, kCFStringEncodingUTF8, 0);
  CFRelease(text);
  CFRelease(text);
  EXPECT_EQ(doubles::faults(), Faults{"CFRelease of an object that has ended"});
}

TEST_F(AppleDoubles, NoticeThatWhatWasBorrowedIsReleased) {
  CFRelease(CFBundleGetMainBundle());
  EXPECT_EQ(doubles::faults(), Faults{"a borrowed object was released"});
}

TEST_F(AppleDoubles, NoticeABooleanThatIsNotReleased) {
  CFRetain(kCFBooleanTrue);
  EXPECT_EQ(doubles::faults().size(), 1u);
}

TEST_F(AppleDoubles, NoticeAnAuthorizationThatIsNotFreedOrUsedAfterwards) {
  ::AuthorizationRef authorization = nullptr;
  ASSERT_EQ(AuthorizationCreate(nullptr, nullptr, 0, &authorization), 0);
  EXPECT_EQ(doubles::faults(), Faults{"an authorization was not freed"});
  ASSERT_EQ(AuthorizationFree(authorization, 0), 0);
  EXPECT_EQ(doubles::faults(), Faults());
  EXPECT_NE(AuthorizationCopyRights(authorization, nullptr, nullptr, 0, nullptr), 0);
  EXPECT_EQ(doubles::faults(), Faults{"a freed authorization is used"});
}

}  // namespace
}  // namespace norvik
