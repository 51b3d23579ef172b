// The control model: what a person sees and edits, as plain objects without a toolkit. A front end binds each
// control to a widget: it observes the control, and writes a person's edit into it before it sends the
// action.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/platform/geometry.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik {

class Control;

// A node of the view tree. Does not own its subviews; the pane object owns them all.
class View {
 public:
  View() = default;
  virtual ~View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame) { frame_ = frame; }

  // In drawing order. A view is in at most one superview.
  const std::vector<View*>& subviews() const { return subviews_; }
  View* superview() const { return superview_; }
  void addSubview(View& view);
  // Takes the view out of its superview; does nothing if it is in none.
  void removeFromSuperview();

 protected:
  // Called after the view has left its superview.
  virtual void didLeaveSuperview() {}

 private:
  Rect frame_;
  View* superview_ = nullptr;
  std::vector<View*> subviews_;
};

// A picture from the bundle's resources, in the encoding of its file. A front end decodes it to show it.
struct Picture {
  std::string name;   // of the resource, "authlock"
  std::string bytes;  // TIFF
};
using PictureRef = std::shared_ptr<const Picture>;

// Notified when a property of a control takes another value; never when it is set to the value it has.
class ControlObserver {
 public:
  virtual ~ControlObserver() = default;
  virtual void controlChanged(Control& control) = 0;
};

// States of a check box or radio button.
inline constexpr int kMixedState = -1;
inline constexpr int kOffState = 0;
inline constexpr int kOnState = 1;

// One control of any kind. The properties of other kinds exist too and mean nothing.
class Control : public View {
 public:
  // Sets the outlet's name and how the control is at first: enabled, and shown even if it is described as
  // hidden, which front ends look at.
  void describe(std::string_view outlet, const ControlDescription& description);

  std::string_view name() const { return name_; }
  ControlKind kind() const { return kind_; }

  bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled);
  bool isHidden() const { return hidden_; }
  void setHidden(bool hidden);
  // Whether the control was taken out of the view for good.
  bool isRemoved() const { return removed_; }

  // Check box, radio button: on, off or mixed.
  int state() const { return state_; }
  void setState(int state);
  bool isOn() const { return state_ == kOnState; }

  // Slider: its value, kept as set even outside the range.
  double doubleValue() const { return value_; }
  void setDoubleValue(double value);
  // The value as a 32-bit float, truncated toward zero; what no 64-bit number can hold is INT64_MIN.
  int64_t truncatedValue() const;

  // Pop-up: the index of the selected item from 0, kept as requested even where there is no such item.
  int64_t indexOfSelectedItem() const { return index_; }
  void selectItemAtIndex(int64_t index);

  // Text field, label.
  const std::string& stringValue() const { return text_; }
  void setStringValue(std::string_view text);

  // Push button: its title, its picture, and whether it is drawn at all (a transparent one is not).
  const std::string& title() const { return title_; }
  void setTitle(std::string_view title);
  const PictureRef& image() const { return image_; }
  virtual void setImage(const PictureRef& image);
  bool isTransparent() const { return transparent_; }
  void setTransparent(bool transparent);

  // Sets what this kind of control holds from a whole number: state, value, index, or text in decimal.
  void setIntegerValue(int64_t number);

  // At most one, borrowed; null for none.
  void setObserver(ControlObserver* observer) { observer_ = observer; }

 protected:
  void didLeaveSuperview() override;
  void notifyObserver();

 private:
  template <typename Property, typename Value>
  void change(Property& property, const Value& value);

  std::string name_;
  ControlKind kind_ = ControlKind::label;
  bool enabled_ = true;
  bool hidden_ = false;
  bool removed_ = false;
  bool transparent_ = false;
  int state_ = kOffState;
  double value_ = 0;
  int64_t index_ = 0;
  std::string text_;
  std::string title_;
  PictureRef image_;
  ControlObserver* observer_ = nullptr;
};

}  // namespace norvik
