// Values to the XML format. A writer of our own, because the packaged library's loses the sign of a zero and
// writes a carriage return so that readers must take it for a line feed.
#include "src/adapters/property_lists/codec.h"
#include "src/adapters/property_lists/scalars.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

// A character that XML would drop or change becomes a reference.
void appendText(std::string& xml, std::string_view text) {
  while (!text.empty()) {
    const char32_t c = takeCharacter(text).value_or(kReplacementCharacter);
    const bool control = (c < 0x20 && c != '\n' && c != '\t') || c == 0x7F;
    if (c == '&')
      xml += "&amp;";
    else if (c == '<')
      xml += "&lt;";
    else if (c == '>')
      xml += "&gt;";
    else if (control)
      xml += "&#" + std::to_string(static_cast<uint32_t>(c)) + ";";
    else
      appendCharacter(xml, c);
  }
}

class XmlWriter {
 public:
  std::string finish(const PropertyList& root) {
    xml_ =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n";
    write(root);
    return xml_ + "</plist>\n";
  }

  void operator()(const PropertyList::Dictionary& entries) {
    if (entries.empty()) return line("<dict/>");
    line("<dict>");
    ++indent_;
    for (const auto& [key, entry] : entries) {
      element("key", key);
      write(entry);
    }
    --indent_;
    line("</dict>");
  }

  void operator()(const PropertyList::Array& items) {
    if (items.empty()) return line("<array/>");
    line("<array>");
    ++indent_;
    for (const PropertyList& item : items) write(item);
    --indent_;
    line("</array>");
  }

  void operator()(const std::string& text) { element("string", text); }
  void operator()(bool value) { line(value ? "<true/>" : "<false/>"); }
  void operator()(int64_t value) { element("integer", std::to_string(value)); }
  void operator()(uint64_t value) { element("integer", std::to_string(value)); }
  void operator()(double value) { element("real", formatReal(value)); }
  void operator()(const PropertyList::Date& date) { element("date", formatDate(date.seconds)); }

  void operator()(const PropertyList::Data& data) {
    constexpr std::size_t kLineBytes = 57;  // 76 characters, the usual width
    line("<data>");
    for (std::size_t i = 0; i < data.bytes.size(); i += kLineBytes)
      line(formatBase64(std::string_view(data.bytes).substr(i, kLineBytes)));
    line("</data>");
  }

 private:
  void write(const PropertyList& list) { std::visit(*this, list.value()); }

  void line(std::string_view text) {
    xml_.append(indent_, '\t');
    xml_.append(text);
    xml_ += '\n';
  }

  void element(std::string_view name, std::string_view text) {
    xml_.append(indent_, '\t');
    xml_.append("<").append(name).append(">");
    appendText(xml_, text);
    xml_.append("</").append(name).append(">\n");
  }

  std::string xml_;
  std::size_t indent_ = 0;
};

}  // namespace

std::string encodeXmlPropertyList(const PropertyList& list) {
  return XmlWriter().finish(list);
}

}  // namespace norvik
