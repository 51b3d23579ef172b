// The contract of the files interface.
#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {
namespace {

using namespace std::string_literals;

class FilesContract : public ContractTest {
 protected:
  // Whether the path can be opened in this mode; closes it again.
  bool opens(const std::string& path, FileMode mode) {
    const FileRef file = interfaces.files.fopen(path.c_str(), mode);
    if (file != nullptr) interfaces.files.fclose(file);
    return file != nullptr;
  }
  // How many of the bytes were taken; nothing where the file cannot be opened.
  std::optional<std::size_t> write(const std::string& path, const std::string& bytes) {
    const FileRef file = interfaces.files.fopen(path.c_str(), FileMode::writeBinary);
    if (file == nullptr) return std::nullopt;
    const std::size_t count = interfaces.files.fwrite(bytes.data(), bytes.size(), file);
    interfaces.files.fclose(file);
    return count;
  }
};

INSTANTIATE_TEST_SUITE_P(Every, FilesContract, everyAdapter(), adapterName);

TEST_P(FilesContract, ReadsEveryByteUnchanged) {
  const std::string bytes = "a\0b\r\n\xff\xfe\n"s;
  computer->putFile("/tmp/bytes", bytes);
  EXPECT_EQ(readAll(interfaces.files, "/tmp/bytes"), bytes);
}

TEST_P(FilesContract, ReadsOnlyWhatIsThere) {
  computer->putFile("/tmp/short", "abc");
  const FileRef file = interfaces.files.fopen("/tmp/short", FileMode::readBinary);
  ASSERT_NE(file, nullptr);
  std::string block(10, '.');
  EXPECT_EQ(interfaces.files.fread(block.data(), block.size(), file), 3u);
  EXPECT_EQ(block, "abc.......");
  EXPECT_EQ(interfaces.files.fread(block.data(), block.size(), file), 0u);
  interfaces.files.fclose(file);
}

TEST_P(FilesContract, ReadsAnEmptyFile) {
  computer->putFile("/tmp/empty", "");
  EXPECT_EQ(readAll(interfaces.files, "/tmp/empty"), "");
}

TEST_P(FilesContract, HasItsSizeAtTheEnd) {
  computer->putFile("/tmp/sized", "12345");
  const FileRef file = interfaces.files.fopen("/tmp/sized", FileMode::readBinary);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(interfaces.files.ftell(file), 0);
  EXPECT_EQ(interfaces.files.fseek(file, 0, SeekOrigin::end), 0);
  EXPECT_EQ(interfaces.files.ftell(file), 5);
  EXPECT_EQ(interfaces.files.fseek(file, -2, SeekOrigin::end), 0);
  EXPECT_EQ(readRest(interfaces.files, file), "45");
  EXPECT_EQ(interfaces.files.fseek(file, 0, SeekOrigin::start), 0);
  EXPECT_EQ(readRest(interfaces.files, file), "12345");
  interfaces.files.fclose(file);
}

TEST_P(FilesContract, SeeksNoPlaceBeforeTheStart) {
  computer->putFile("/tmp/sized", "12345");
  const FileRef file = interfaces.files.fopen("/tmp/sized", FileMode::readBinary);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(interfaces.files.fseek(file, -6, SeekOrigin::end), -1);
  EXPECT_EQ(interfaces.files.fseek(file, -1, SeekOrigin::start), -1);
  interfaces.files.fclose(file);
}

TEST_P(FilesContract, OpensNoMissingFileForReading) {
  EXPECT_FALSE(opens("/tmp/missing", FileMode::readBinary));
  EXPECT_FALSE(opens("/tmp/missing/file", FileMode::readBinary));
}

TEST_P(FilesContract, OpensNoDirectory) {
  computer->makeDirectory("/tmp/folder");
  EXPECT_FALSE(opens("/tmp/folder", FileMode::readBinary));
  EXPECT_FALSE(opens("/tmp/folder", FileMode::writeBinary));
  EXPECT_TRUE(computer->isDirectory("/tmp/folder"));
}

TEST_P(FilesContract, OpensNothingThatCannotBeRead) {
  computer->putUnreadable("/tmp/unreadable");
  EXPECT_FALSE(opens("/tmp/unreadable", FileMode::readBinary));
  EXPECT_FALSE(opens("/tmp/unreadable", FileMode::writeBinary));
}

TEST_P(FilesContract, ReadsAndDoesNotEmptyAReadOnlyFile) {
  computer->putReadOnly("/tmp/read-only");
  const auto before = readAll(interfaces.files, "/tmp/read-only");
  ASSERT_TRUE(before && !before->empty());
  EXPECT_FALSE(opens("/tmp/read-only", FileMode::writeBinary));
  EXPECT_EQ(readAll(interfaces.files, "/tmp/read-only"), before);
}

TEST_P(FilesContract, MakesAMissingFileForWriting) {
  const std::string bytes = "limit maxfiles 1024\n\0\xff"s;
  EXPECT_EQ(write("/tmp/new", bytes), bytes.size());
  EXPECT_EQ(computer->bytesOf("/tmp/new"), bytes);
}

TEST_P(FilesContract, EmptiesAFileThatIsOpenedForWriting) {
  computer->putFile("/tmp/old", "a long old text");
  const FileRef file = interfaces.files.fopen("/tmp/old", FileMode::writeBinary);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(computer->bytesOf("/tmp/old"), "");
  interfaces.files.fclose(file);
  EXPECT_EQ(write("/tmp/old", "new"), 3u);
  EXPECT_EQ(computer->bytesOf("/tmp/old"), "new");
}

// Later readers of the file must not depend on when the stream is closed.
TEST_P(FilesContract, HasWrittenWhenTheWriteReturns) {
  const FileRef file = interfaces.files.fopen("/tmp/now", FileMode::writeBinary);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(interfaces.files.fwrite("one", 3, file), 3u);
  EXPECT_EQ(interfaces.files.fwrite("two", 3, file), 3u);
  EXPECT_EQ(computer->bytesOf("/tmp/now"), "onetwo");
  interfaces.files.fclose(file);
}

TEST_P(FilesContract, MakesNoFileInAMissingDirectoryOrBelowAFile) {
  computer->putFile("/tmp/file", "");
  EXPECT_FALSE(opens("/tmp/missing/new", FileMode::writeBinary));
  EXPECT_FALSE(opens("/tmp/file/new", FileMode::writeBinary));
}

TEST_P(FilesContract, ReportsAFullDeviceAtTheWrite) {
  computer->putFull("/etc/norvik/full");
  const FileRef file = interfaces.files.fopen("/etc/norvik/full", FileMode::writeBinary);
  ASSERT_NE(file, nullptr);
  EXPECT_LT(interfaces.files.fwrite("x", 1, file), 1u);
  EXPECT_LT(interfaces.files.fwrite(std::string(100000, 'x').data(), 100000, file), 100000u);
  interfaces.files.fclose(file);
}

TEST_P(FilesContract, KeepsStreamsApart) {
  computer->putFile("/tmp/one", "one");
  computer->putFile("/tmp/two", "two");
  const FileRef one = interfaces.files.fopen("/tmp/one", FileMode::readBinary);
  const FileRef two = interfaces.files.fopen("/tmp/two", FileMode::readBinary);
  const FileRef again = interfaces.files.fopen("/tmp/one", FileMode::readBinary);
  ASSERT_TRUE(one != nullptr && two != nullptr && again != nullptr);
  EXPECT_EQ(readRest(interfaces.files, one), "one");
  interfaces.files.fclose(one);
  EXPECT_EQ(readRest(interfaces.files, two), "two");
  EXPECT_EQ(readRest(interfaces.files, again), "one");
  interfaces.files.fclose(two);
  interfaces.files.fclose(again);
}

TEST_P(FilesContract, MakesOneDirectory) {
  EXPECT_EQ(interfaces.files.mkdir("/tmp/made", 0755), 0);
  EXPECT_TRUE(computer->isDirectory("/tmp/made"));
  EXPECT_EQ(write("/tmp/made/file", "x"), 1u);
}

TEST_P(FilesContract, MakesNoDirectoryWhereSomethingIsOrTheFolderAboveIsMissing) {
  computer->putFile("/tmp/file", "kept");
  EXPECT_EQ(interfaces.files.mkdir("/tmp", 0755), -1);
  EXPECT_EQ(interfaces.files.mkdir("/tmp/file", 0755), -1);
  EXPECT_EQ(interfaces.files.mkdir("/tmp/missing/made", 0755), -1);
  EXPECT_EQ(interfaces.files.mkdir("/tmp/file/made", 0755), -1);
  EXPECT_EQ(computer->bytesOf("/tmp/file"), "kept");
  EXPECT_FALSE(computer->isDirectory("/tmp/missing"));
}

}  // namespace
}  // namespace norvik
