// One pass over the elements. What is not in the documented part of SVG is an error, so that a drawing never
// appears with something missing.
#include "src/frontends/shared/icons/line_drawing.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "resources/resources.h"
#include "src/server/mac/text/reals.h"

namespace norvik {

namespace {

using Attributes = std::map<std::string_view, std::string_view>;

// How far the control points of a quarter circle are from its ends, in radii.
constexpr double kRound = 0.5522847498;

constexpr std::string_view kSpace = " \t\r\n";

std::optional<double> numberIn(std::string_view words) {
  const auto number = leadingReal(words);
  if (!number || number->length != words.size() || !std::isfinite(number->value)) return std::nullopt;
  return number->value;
}

std::vector<std::string_view> tokensOf(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t begin = text.find_first_not_of(kSpace); begin != std::string_view::npos;) {
    const std::size_t end = std::min(text.find_first_of(kSpace, begin), text.size());
    words.push_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(kSpace, end);
  }
  return words;
}

// NAME="VALUE" again and again.
std::optional<Attributes> attributesIn(std::string_view text) {
  Attributes attributes;
  for (;;) {
    const std::size_t begin = text.find_first_not_of(kSpace);
    if (begin == std::string_view::npos) return attributes;
    const std::size_t equals = text.find("=\"", begin);
    if (equals == std::string_view::npos) return std::nullopt;
    const std::size_t end = text.find('"', equals + 2);
    if (end == std::string_view::npos) return std::nullopt;
    attributes[text.substr(begin, equals - begin)] = text.substr(equals + 2, end - equals - 2);
    text.remove_prefix(end + 1);
  }
}

class Reader {
 public:
  explicit Reader(std::string& error) : error_(error) {}

  bool readElement(std::string_view name, const Attributes& attributes) {
    if (name == "svg") return readRoot(attributes);
    if (drawing.side == 0) return fail("svg does not come first");
    LineShape shape;
    if (!readLook(attributes, shape)) return false;
    bool isRead = false;
    if (name == "path")
      isRead = readPath(attributes, shape);
    else if (name == "circle")
      isRead = readCircle(attributes, shape);
    else if (name == "rect")
      isRead = readRectangle(attributes, shape);
    else
      return fail("unknown element " + std::string(name));
    drawing.shapes.push_back(std::move(shape));
    return isRead;
  }

  bool fail(const std::string& message) {
    error_ = message;
    return false;
  }

  LineDrawing drawing;

 private:
  bool number(const Attributes& attributes, std::string_view name, double& out) {
    const auto found = attributes.find(name);
    const auto value = found != attributes.end() ? numberIn(found->second) : std::nullopt;
    if (!value) return fail(std::string(name) + " is no number");
    out = *value;
    return true;
  }

  bool readRoot(const Attributes& attributes) {
    const auto box = attributes.find("viewBox");
    const auto words = box != attributes.end() ? tokensOf(box->second) : std::vector<std::string_view>();
    if (words.size() != 4 || words[0] != "0" || words[1] != "0" || words[2] != words[3])
      return fail("viewBox is no square from 0 0");
    const auto side = numberIn(words[2]);
    if (!side || *side <= 0) return fail("viewBox is no square from 0 0");
    drawing.side = *side;
    return number(attributes, "stroke-width", drawing.width);
  }

  bool readLook(const Attributes& attributes, LineShape& shape) {
    for (const auto& [name, value] : attributes) {
      if (name == "fill" && value == "currentColor")
        shape.isFilled = true;
      else if (name == "stroke" && value == "none")
        shape.isOutlined = false;
      else if (name == "fill" || name.starts_with("stroke") || name == "transform" || name == "style")
        return fail(std::string(name) + " is not supported");
    }
    return shape.isFilled || shape.isOutlined || fail("nothing of an element is drawn");
  }

  bool readPath(const Attributes& attributes, LineShape& shape) {
    const auto data = attributes.find("d");
    if (data == attributes.end()) return fail("d is missing");
    const auto words = tokensOf(data->second);
    for (std::size_t at = 0; at < words.size();) {
      Segment segment;
      std::size_t points = 0;
      if (!readLetter(words[at++], segment.stroke, points)) return false;
      for (std::size_t i = 0; i < points; ++i, at += 2) {
        const auto x = at + 1 < words.size() ? numberIn(words[at]) : std::nullopt;
        const auto y = x ? numberIn(words[at + 1]) : std::nullopt;
        if (!y) return fail("a point is missing");
        segment.points[i] = {*x, *y};
      }
      if (shape.segments.empty() && segment.stroke != Stroke::move) return fail("d does not begin with M");
      shape.segments.push_back(segment);
    }
    return true;
  }

  bool readLetter(std::string_view letter, Stroke& stroke, std::size_t& points) {
    struct Letter {
      std::string_view letter;
      Stroke stroke;
      std::size_t points;
    };
    constexpr Letter kLetters[] = {
        {"M", Stroke::move, 1}, {"L", Stroke::line, 1}, {"C", Stroke::curve, 3}, {"Z", Stroke::close, 0}};
    for (const Letter& row : kLetters) {
      if (row.letter != letter) continue;
      stroke = row.stroke;
      points = row.points;
      return true;
    }
    return fail("unknown path letter " + std::string(letter));
  }

  bool readCircle(const Attributes& attributes, LineShape& shape) {
    double x = 0;
    double y = 0;
    double r = 0;
    if (!number(attributes, "cx", x) || !number(attributes, "cy", y) || !number(attributes, "r", r))
      return false;
    addRounded(shape, x - r, y - r, 2 * r, 2 * r, r);
    return true;
  }

  bool readRectangle(const Attributes& attributes, LineShape& shape) {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    double radius = 0;
    if (!number(attributes, "x", x) || !number(attributes, "y", y) || !number(attributes, "width", width) ||
        !number(attributes, "height", height) || !number(attributes, "rx", radius))
      return false;
    addRounded(shape, x, y, width, height, radius);
    return true;
  }

  // Clockwise from the left end of the upper side.
  static void addRounded(LineShape& shape, double x, double y, double width, double height, double r) {
    const double right = x + width;
    const double bottom = y + height;
    const double k = r * (1 - kRound);
    const auto corner = [&shape](LinePoint side, LinePoint a, LinePoint b, LinePoint end) {
      shape.segments.push_back({Stroke::line, {side}});
      shape.segments.push_back({Stroke::curve, {a, b, end}});
    };
    shape.segments.push_back({Stroke::move, {LinePoint{x + r, y}}});
    corner({right - r, y}, {right - k, y}, {right, y + k}, {right, y + r});
    corner({right, bottom - r}, {right, bottom - k}, {right - k, bottom}, {right - r, bottom});
    corner({x + r, bottom}, {x + k, bottom}, {x, bottom - k}, {x, bottom - r});
    corner({x, y + r}, {x, y + k}, {x + k, y}, {x + r, y});
    shape.segments.push_back({Stroke::close, {}});
  }

  std::string& error_;
};

}  // namespace

std::optional<LineDrawing> readLineDrawing(std::string_view svg, std::string& error) {
  Reader reader(error);
  for (;;) {
    const std::size_t begin = svg.find('<');
    if (begin == std::string_view::npos) break;
    const std::size_t end = svg.find('>', begin);
    if (end == std::string_view::npos) {
      reader.fail("an element does not end");
      return std::nullopt;
    }
    std::string_view element = svg.substr(begin + 1, end - begin - 1);
    svg.remove_prefix(end + 1);
    if (element.starts_with('/')) continue;
    if (element.ends_with('/')) element.remove_suffix(1);
    const std::size_t name = std::min(element.find_first_of(kSpace), element.size());
    const auto attributes = attributesIn(element.substr(name));
    if (!attributes) {
      reader.fail("an attribute is not NAME=\"VALUE\"");
      return std::nullopt;
    }
    if (!reader.readElement(element.substr(0, name), *attributes)) return std::nullopt;
  }
  if (reader.drawing.shapes.empty()) {
    reader.fail("nothing is drawn");
    return std::nullopt;
  }
  return std::move(reader.drawing);
}

const LineDrawing* pageIcon(const std::string& name) {
  static std::map<std::string, std::optional<LineDrawing>> read;
  const auto [found, isNew] = read.try_emplace(name);
  if (isNew) {
    std::string error;
    if (const auto svg = resourceFile("page-" + name, "svg")) found->second = readLineDrawing(*svg, error);
  }
  return found->second ? &*found->second : nullptr;
}

}  // namespace norvik
