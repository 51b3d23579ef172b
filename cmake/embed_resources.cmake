# Writes a C++ source that holds the bytes of files, the table of resources/embedded_files.h. Run in script mode:
#   cmake -DFILES=/path/a.plist,/path/b.tiff -DOUTPUT=... -P embed_resources.cmake

string(REPLACE "," ";" files "${FILES}")
set(arrays "")
set(rows "")
set(index 0)
foreach(path IN LISTS files)
  cmake_path(GET path FILENAME file)
  file(READ "${path}" bytes HEX)
  file(SIZE "${path}" size)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
  string(APPEND arrays "// ${file}\nconstexpr unsigned char kFile${index}[] = {${bytes}};\n")
  string(APPEND rows "    {\"${file}\", kFile${index}, ${size}},\n")
  math(EXPR index "${index} + 1")
endforeach()

file(WRITE "${OUTPUT}" "// Made by embed_resources.cmake from the files of resources/; change those instead.
#include \"resources/embedded_files.h\"

namespace norvik {
namespace {

${arrays}
constexpr EmbeddedFile kFiles[] = {
${rows}};

}  // namespace

std::span<const EmbeddedFile> embeddedFiles() {
  return kFiles;
}

}  // namespace norvik
")
