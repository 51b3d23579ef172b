// One page of settings, made from its description: sections under headings, captions lined up, a mark before
// each row that differs from what is stored, a note under an unusable port. A plain C++ header.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "src/frontends/prefpane/binding.h"
#include "src/frontends/prefpane/handles.h"
#include "src/frontends/shared/checks/port_check.h"
#include "src/frontends/shared/preview/sample_screen.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::prefpane {

class PageView {
 public:
  // Asks `portInUse` for the notes under the ports. Rows are broken to that width where they can be.
  PageView(NVKServerPrefs& pane, const InterfaceDescription& interface, const TabDescription& tab,
           PortInUse portInUse, double width);
  ~PageView();
  PageView(const PageView&) = delete;
  PageView& operator=(const PageView&) = delete;

  // An NSView, as high and wide as its rows need, and at least as wide as was asked for.
  void* view() const { return view_.get(); }
  const std::vector<std::unique_ptr<Binding>>& bindings() const { return bindings_; }
  // The NSViews that take the keyboard, from the top down. Some may be hidden or disabled.
  const std::vector<Handle>& keyViews() const { return keyViews_; }
  // The control of that outlet; null if it is not on this page.
  const Binding* find(const std::string& outlet) const;

  // Adds the page's preview, if it has one, under its rows where the page may be so high; a picture in which
  // nothing could be recognised is left out.
  void addPreviewWithin(double height);

  // Update the marks with the dot, and the notes, to the model; they set nothing that is already set. For the
  // notes the computer is asked which ports are in use.
  void refreshMarks();
  void refreshNotes();
  // Updates the colour before the server's state, if this page shows it.
  void refreshDot();

 private:
  struct Mark {
    Handle view;
    std::vector<Binding*> bindings;  // of its row
  };
  // What belongs to a control and follows its state.
  struct Parts {
    std::vector<Handle> words;  // grey while the control is disabled
    Handle value;               // the number that a slider is at
    Handle copy;                // the button that copies an address
  };
  struct Note {
    Handle words;
    Handle icon;
    const Binding* field;
  };

  void addSection(const SectionDescription& section);
  void addRow(const RowDescription& row);
  double addControl(const RowDescription& row, const ControlDescription& description, double x, double begin,
                    Mark& mark);
  double addBeside(Binding& binding, double x);
  void sizeLabel(const Binding& binding, double x);
  void finishLine();
  void controlChanged(const Binding& binding);
  void fitAddress(const Binding& binding, const Parts& parts);
  double addDot(double x);
  void addBelow(Binding& binding, double x);
  void placeBeside(void* view, double x);
  void refreshPreview();

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  const TabDescription& tab_;
  PortInUse portInUse_;
  double width_;
  Handle view_;
  Handle preview_;            // null on a page without one
  SampleSettings previewed_;  // what the preview shows
  Handle dot_;                // before the server's state, on the page that shows it
  double captionWidth_ = 0;
  double y_ = 0;                // where the next row begins
  double rowHeight_ = 0;        // of the row that is being made
  std::vector<Handle> placed_;  // the views of that row, to be centred in its height
  std::vector<std::unique_ptr<Binding>> bindings_;
  std::vector<Mark> marks_;
  std::vector<Note> notes_;
  std::map<const Binding*, Parts> parts_;
  std::vector<Handle> keyViews_;
  double addressEnd_ = 0;  // where what follows the address begins
};

}  // namespace norvik::prefpane
