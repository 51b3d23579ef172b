// A message catalogue: the translations of one language, as gettext's msgfmt compiles them. Read here and not
// by the C library, which shows no translation where the system has not generated a locale for the language,
// as on most computers that people only log in to, and which a Mac does not have. Borrows the bytes; reads no
// file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace norvik {

class Catalogue {
 public:
  // The catalogue in these bytes, which have to live as long as it does. Nothing if they are none.
  static std::optional<Catalogue> read(std::string_view bytes);

  // The translation of a text; nothing where there is none. Part of the bytes.
  std::optional<std::string_view> find(std::string_view text) const;
  // The form of a counted text, found by its singular, for that number.
  std::optional<std::string_view> find(std::string_view singular, std::size_t number) const;

  // How many texts it translates, its header among them.
  std::size_t size() const { return count_; }
  // A text in English with its plural behind a zero byte, if it has one, and its translation with all its
  // forms in the same way. `index` is below the size.
  std::string_view original(std::size_t index) const { return textAt(originals_, index); }
  std::string_view translation(std::size_t index) const { return textAt(translations_, index); }

 private:
  explicit Catalogue(std::string_view bytes) : bytes_(bytes) {}
  bool isSound() const;
  uint32_t numberAt(std::size_t place) const;
  // The text of a row of the table that begins there.
  std::string_view textAt(std::size_t table, std::size_t index) const;
  std::optional<std::string_view> entry(std::string_view text) const;

  std::string_view bytes_;
  std::size_t count_ = 0, originals_ = 0, translations_ = 0;
  std::string_view rule_;
};

}  // namespace norvik
