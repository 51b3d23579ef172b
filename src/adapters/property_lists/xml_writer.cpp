// Values to the XML format. A writer of our own, because the packaged library's loses the sign of a zero and
// writes a carriage return so that readers must take it for a line feed.
#include "src/adapters/property_lists/formats.h"
#include "src/adapters/property_lists/scalars.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

// A character that XML would drop or change becomes a reference. Stops where the XML is longer than the
// limit.
void appendText(std::string& xml, std::string_view text, std::size_t limit) {
  while (!text.empty() && xml.size() <= limit) {
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

// Whether what is written can be read again matters only for a file.
enum class Limits { none, ofFiles };

class XmlWriter {
 public:
  explicit XmlWriter(Limits limits)
      : limited_(limits == Limits::ofFiles), limit_(limited_ ? kMaxPropertyListBytes : std::string::npos) {}

  // Nothing beyond the limits.
  std::optional<std::string> finish(const PropertyList& root) {
    xml_ =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n";
    write(root);
    xml_ += "</plist>\n";
    if (refused_ || xml_.size() > limit_) return std::nullopt;
    return std::move(xml_);
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
  void operator()(const PropertyList::Date& date) {
    if (limited_ && !isDate(date.seconds)) refused_ = true;
    if (!refused_) element("date", formatDate(date.seconds));
  }

  void operator()(const PropertyList::Data& data) {
    constexpr std::size_t kLineBytes = 57;  // 76 characters, the usual width
    line("<data>");
    for (std::size_t i = 0; i < data.bytes.size(); i += kLineBytes)
      line(formatBase64(std::string_view(data.bytes).substr(i, kLineBytes)));
    line("</data>");
  }

 private:
  void write(const PropertyList& list) {
    const bool tooDeep = limited_ && indent_ > static_cast<std::size_t>(kMaxPropertyListDepth);
    refused_ = refused_ || tooDeep || xml_.size() > limit_;
    if (!refused_) std::visit(*this, list.value());
  }

  void line(std::string_view text) {
    xml_.append(indent_, '\t');
    xml_.append(text);
    xml_ += '\n';
  }

  void element(std::string_view name, std::string_view text) {
    xml_.append(indent_, '\t');
    xml_.append("<").append(name).append(">");
    appendText(xml_, text, limit_);
    xml_.append("</").append(name).append(">\n");
  }

  bool limited_;
  std::size_t limit_;  // of bytes
  bool refused_ = false;
  std::string xml_;
  std::size_t indent_ = 0;
};

}  // namespace

std::string encodeXmlPropertyList(const PropertyList& list) {
  return *XmlWriter(Limits::none).finish(list);
}

std::optional<std::string> encodeXmlWithinLimits(const PropertyList& list) {
  return XmlWriter(Limits::ofFiles).finish(list);
}

}  // namespace norvik
