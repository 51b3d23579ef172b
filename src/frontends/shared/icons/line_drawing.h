// Drawings of lines, such as the icons of the pages: read from SVG into paths that any toolkit can draw, in
// the colour of the text beside them. Reads files of the program alone; knows no toolkit.
//
// Of SVG it takes what such a drawing needs and refuses the rest: a square viewBox from 0 0, one
// stroke-width, and the elements path (M, L, C and Z, absolute, each letter written out), circle, and rect
// with rx. An element is outlined with round ends; with fill="currentColor" it is filled too.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvik {

struct LinePoint {
  double x = 0;
  double y = 0;  // downwards
  bool operator==(const LinePoint&) const = default;
};

enum class Stroke { move, line, curve, close };

struct Segment {
  Stroke stroke = Stroke::move;
  // The end is the last one that the stroke has: `curve` has two control points before it, `close` has none.
  std::array<LinePoint, 3> points;
};

struct LineShape {
  std::vector<Segment> segments;
  bool isFilled = false;
  bool isOutlined = true;
};

struct LineDrawing {
  double side = 0;   // of the square that it is drawn in, from 0 0 at the top left
  double width = 0;  // of its lines, in the same unit
  std::vector<LineShape> shapes;
};

// On failure returns nothing and sets `error` to what is wrong.
std::optional<LineDrawing> readLineDrawing(std::string_view svg, std::string& error);

// The drawing icons/page-NAME.svg of the resources; null if there is none that can be read. Kept for the life
// of the program; main thread.
const LineDrawing* pageIcon(const std::string& name);

}  // namespace norvik
