// Drawing of the tinted button, and making its cell out of one that a plain button was described with.
#include "src/server/mac/ui/nvk_button.h"

#include <cmath>
#include <new>
#include <utility>

#include "src/server/mac/platform/platform.h"

namespace norvik {

namespace {

constexpr std::string_view kConvertFunction = "id ConvertObjectIntoSubclass(id, Class)";
constexpr std::string_view kConvertFile = "src/server/mac/nvk_button";

template <typename Cell>
std::unique_ptr<ButtonCell> copyInto(const ButtonCell& object) {
  auto* cell = new (std::nothrow) Cell(object);
  if (cell == nullptr) return nullptr;
  return std::unique_ptr<ButtonCell>(cell);
}

}  // namespace

const CellClass kCellClass{"NSCell", nullptr, nullptr};
const CellClass kButtonCellClass{"NSButtonCell", &kCellClass, copyInto<ButtonCell>};
const CellClass kNVKButtonCellClass{"NVKButtonCell", &kButtonCellClass, copyInto<NVKButtonCell>};

bool CellClass::isSubclassOfClass(const CellClass& other) const {
  for (const CellClass* c = this; c != nullptr; c = c->superclass) {
    if (c == &other) return true;
  }
  return false;
}

ButtonCell::ButtonCell() : isa(&kButtonCellClass) {}

void ButtonCell::drawWithFrame(const Rect& frame, Image& view, ButtonPainter& painter) const {
  Image plain(static_cast<int>(std::lround(frame.width)), static_cast<int>(std::lround(frame.height)));
  plain.setFlipped(view.isFlipped());
  painter.drawButton(*this, plain);
  view.draw(plain, static_cast<int>(std::lround(frame.x)), static_cast<int>(std::lround(frame.y)),
            CompositingOperation::sourceOver, 1.0);
}

NVKButtonCell::NVKButtonCell() {
  isa = &kNVKButtonCellClass;
}

NVKButtonCell::NVKButtonCell(const ButtonCell& cell) : ButtonCell(cell) {
  if (const auto* tinted = dynamic_cast<const NVKButtonCell*>(&cell)) buttonColor_ = tinted->buttonColor_;
  isa = &kNVKButtonCellClass;
}

void NVKButtonCell::drawWithFrame(const Rect& frame, Image& view, ButtonPainter& painter) const {
  if (!buttonColor_ || *buttonColor_ == kClearColor) return ButtonCell::drawWithFrame(frame, view, painter);
  const int width = static_cast<int>(std::lround(frame.width));
  const int height = static_cast<int>(std::lround(frame.height));
  Image result(width, height);
  Image tint(width, height);
  Image plain(width, height);
  for (Image* one : {&result, &tint, &plain}) one->setFlipped(view.isFlipped());
  ButtonCell::drawWithFrame({0, 0, frame.width, frame.height}, plain, painter);
  // The colour takes the shape and the coverage of the plain button ...
  tint.draw(plain, 0, 0, CompositingOperation::sourceOver, 1.0);
  tint.fill({0, 0, frame.width, frame.height}, *buttonColor_, CompositingOperation::sourceIn);
  // ... whose own shading then darkens it.
  result.draw(tint, 0, 0, CompositingOperation::sourceOver, 1.0);
  result.draw(plain, 0, 0, CompositingOperation::plusDarker, 1.0);
  view.draw(result, static_cast<int>(std::lround(frame.x)), static_cast<int>(std::lround(frame.y)),
            CompositingOperation::sourceOver, 1.0);
}

std::unique_ptr<ButtonCell> ConvertObjectIntoSubclass(const ButtonCell& object, const CellClass& subclass) {
  if (!subclass.isSubclassOfClass(*object.isa)) {
    platform().assertions.handleFailureInFunction(
        kConvertFunction, kConvertFile, 43,
        "Invalid parameter not satisfying: [subclass isSubclassOfClass:[object class]]");
    return nullptr;
  }
  std::unique_ptr<ButtonCell> copy = subclass.copyObject(object);
  if (copy == nullptr) {
    platform().assertions.handleFailureInFunction(kConvertFunction, kConvertFile, 50,
                                                  "Failed to copy object.");
    return nullptr;
  }
  copy->isa = &subclass;
  return copy;
}

NVKButton::NVKButton() : cell_(std::make_unique<NVKButtonCell>()) {}

void NVKButton::initWithCoder(std::unique_ptr<ButtonCell> decodedCell) {
  cell_ = std::move(decodedCell);
  if (cell_->isa == &cellClass() || !cellClass().isSubclassOfClass(*cell_->isa)) return;
  if (auto tinted = ConvertObjectIntoSubclass(*cell_, cellClass())) cell_ = std::move(tinted);
}

NVKButtonCell* NVKButton::tintedCell() const {
  return dynamic_cast<NVKButtonCell*>(cell_.get());
}

std::optional<Color> NVKButton::buttonColor() const {
  const NVKButtonCell* tinted = tintedCell();
  return tinted != nullptr ? tinted->buttonColor() : std::nullopt;
}

void NVKButton::setButtonColor(const std::optional<Color>& color) {
  if (NVKButtonCell* tinted = tintedCell()) tinted->setButtonColor(color);
}

void NVKButton::setImage(const PictureRef& newImage) {
  const bool another = newImage != image();
  cell_->image = newImage;
  if (another && tintedCell() != nullptr) needsDisplay_ = true;
  Control::setImage(newImage);
}

void NVKButton::viewDidMoveToWindow(const Rect& visibleRect) {
  trackingRect_ = visibleRect;
}

void NVKButton::setLook(bool ButtonCell::*look, bool on) {
  if (cell_.get()->*look == on) return;
  cell_.get()->*look = on;
  needsDisplay_ = true;
}

void NVKButton::mouseEntered() {
  setLook(&ButtonCell::hovered, true);
}
void NVKButton::mouseExited() {
  setLook(&ButtonCell::hovered, false);
}
void NVKButton::mouseDown() {
  setLook(&ButtonCell::pressed, true);
}
void NVKButton::mouseUp() {
  setLook(&ButtonCell::pressed, false);
}

}  // namespace norvik
