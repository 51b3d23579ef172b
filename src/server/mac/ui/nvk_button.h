// The lock button: a push button whose normal look is tinted with a colour of its own, so that it blends with
// the window, and which is drawn again when its picture is replaced.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/geometry.h"
#include "src/server/mac/ui/control.h"
#include "src/server/mac/ui/image.h"

namespace norvik {

struct ButtonCell;

// What is known of a class of cells: enough to see which derives from which, and to make one.
struct CellClass {
  std::string_view name;
  const CellClass* superclass = nullptr;
  // A new instance of this class with every field of `object`, whose class is this one or one that this
  // derives from; fields that the object's class lacks start zeroed. Null if the copy cannot be made.
  std::unique_ptr<ButtonCell> (*copyObject)(const ButtonCell& object) = nullptr;

  // Whether this is `other` or derives from it.
  bool isSubclassOfClass(const CellClass& other) const;
};

// Draws the plain look of a button, which only a toolkit or a style knows.
class ButtonPainter {
 public:
  virtual ~ButtonPainter() = default;
  // Draws the cell, its picture included, at the image's origin, in the size of the image, which is flipped
  // as the view is.
  virtual void drawButton(const ButtonCell& cell, Image& image) = 0;
};

// The object that draws a button.
struct ButtonCell {
  ButtonCell();
  virtual ~ButtonCell() = default;
  ButtonCell(const ButtonCell&) = default;
  ButtonCell& operator=(const ButtonCell&) = default;

  // Draws into `view`, the image of the view that has the focus.
  virtual void drawWithFrame(const Rect& frame, Image& view, ButtonPainter& painter) const;

  const CellClass* isa;
  std::string title;
  PictureRef image;
  bool enabled = true;
  bool hovered = false;
  bool pressed = false;
};

struct NVKButtonCell : ButtonCell {
  NVKButtonCell();
  // Carries all the state of a plain cell; no colour.
  explicit NVKButtonCell(const ButtonCell& cell);

  // The cell's own copy of its colour; none at the start. Setting it requests no drawing.
  const std::optional<Color>& buttonColor() const { return buttonColor_; }
  void setButtonColor(const std::optional<Color>& color) { buttonColor_ = color; }

  // The plain look if there is no colour or it is the clear one; else the plain look with the colour over its
  // opaque pixels, darkened by its own shading.
  void drawWithFrame(const Rect& frame, Image& view, ButtonPainter& painter) const override;

 private:
  std::optional<Color> buttonColor_;
};

extern const CellClass kCellClass;           // every cell
extern const CellClass kButtonCellClass;     // ButtonCell
extern const CellClass kNVKButtonCellClass;  // NVKButtonCell

// A new object of `subclass` with all the state of `object`. If `subclass` does not derive from the object's
// class, or the copy cannot be made, reports it to the assertion handler and returns null.
std::unique_ptr<ButtonCell> ConvertObjectIntoSubclass(const ButtonCell& object, const CellClass& subclass);

class NVKButton : public Control {
 public:
  // As made in code: its cell is an NVKButtonCell.
  NVKButton();

  // The class that the cell of such a button must have.
  static const CellClass& cellClass() { return kNVKButtonCellClass; }

  // Takes over a cell decoded from an interface description. A cell of a class that cellClass() derives from
  // is replaced by an NVKButtonCell with all its state; any other is kept as it is.
  void initWithCoder(std::unique_ptr<ButtonCell> decodedCell);

  const ButtonCell& cell() const { return *cell_; }
  // None if the cell is not an NVKButtonCell; setting does nothing then.
  std::optional<Color> buttonColor() const;
  void setButtonColor(const std::optional<Color>& color);

  void setImage(const PictureRef& image) override;

  // Whether the button has to be drawn again. What draws it clears this.
  bool needsDisplay() const { return needsDisplay_; }
  void setNeedsDisplay(bool needed) { needsDisplay_ = needed; }

  // Registers for enter and exit events over the visible part.
  void viewDidMoveToWindow(const Rect& visibleRect);
  // The part over which enter and exit events come; nothing before the button is in a window.
  const std::optional<Rect>& trackingRect() const { return trackingRect_; }

  // The looks of the plain button, unchanged.
  void mouseEntered();
  void mouseExited();
  void mouseDown();
  void mouseUp();

 private:
  NVKButtonCell* tintedCell() const;
  void setLook(bool ButtonCell::*look, bool on);

  std::unique_ptr<ButtonCell> cell_;
  std::optional<Rect> trackingRect_;
  bool needsDisplay_ = false;
};

}  // namespace norvik
