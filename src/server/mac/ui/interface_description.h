// The interface description: the pages, the controls on them in order, and how each looks. Every label,
// range, item and help text comes from here alone; front ends show what it says and the pane makes its
// controls from it. Read from a property list; touches no toolkit.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/platform/geometry.h"
#include "src/server/mac/platform/property_list.h"

namespace norvik {

enum class ControlKind {
  checkBox,
  radioButton,
  slider,
  popUp,
  textField,
  label,
  pushButton,
  lockButton,
  outlineView,
  tabView,
};

// What the numbers of a slider mean, from one value up to the next entry's.
struct ValueWords {
  double from = 0;
  std::string words;  // "thousands of colours"

  bool operator==(const ValueWords&) const = default;
};

struct ControlDescription {
  std::string outlet;  // the control's name, "ib_admin_chkbox_nvkPort"
  ControlKind kind = ControlKind::label;
  // What a person reads beside the control and hears as its name: after the mark of a check box or radio
  // button, before a slider, pop-up or text field. A push button shows its title instead, a label its text.
  std::string label;
  std::string help;     // one or two sentences; tool tip, accessible description and command-line help
  std::string setting;  // the short name for the command line, "nvk.port"; empty if nothing is set
  std::string choice;   // radio buttons: the word for this button; those with one setting form a group
  // Outlet of the check box that must be on before this control means anything. The control is shown under
  // or beside it. Empty for none.
  std::string requiresOutlet;
  // Range of a slider or of a number typed into a text field; both ends count.
  std::optional<double> minimum;
  std::optional<double> maximum;
  std::string minimumLabel;  // names of a slider's two ends
  std::string maximumLabel;
  int tickMarks = 0;                   // of a slider; 0 for none
  std::optional<double> value;         // of a slider before anything is loaded
  std::vector<ValueWords> valueWords;  // of a slider, from its minimum upwards; empty where numbers suffice
  std::vector<std::string> items;      // of a pop-up, in order
  std::vector<std::string> synonyms;   // other words by which a person may search for the setting
  std::string title;                   // of a push button before the first refresh
  std::string copyTitle;               // of a label with an address: the title of the button that copies it
  bool indicator = false;              // a label that shows a state: a coloured dot is drawn before it
  bool displayOnly = false;            // a text field that cannot be edited
  bool hidden = false;                 // never shown to a person (kept for the code that refers to it)

  bool operator==(const ControlDescription&) const = default;
};

// Controls side by side.
struct RowDescription {
  std::string label;  // before the whole row, besides the controls' own labels; may be empty
  std::vector<ControlDescription> controls;
};

struct SectionDescription {
  std::string title;  // heading; may be empty
  std::string note;   // a sentence under the heading; may be empty
  std::vector<RowDescription> rows;
};

// The outlets of the controls that decide how the screen looks to others.
struct PreviewDescription {
  std::string quality;  // a pop-up, from the worst to the best
  std::string depth;    // a slider
  std::string shadow;   // a slider
};

struct TabDescription {
  std::string label;    // "user:Image": group key, colon, page title
  std::string icon;     // the drawing in the sidebar, by its name; empty for none
  std::string purpose;  // one sentence under the page's title: what the page is for; may be empty
  std::optional<PreviewDescription> preview;  // a picture of what the page's settings do
  std::vector<SectionDescription> sections;
};

struct InterfaceDescription {
  std::string title;        // of the window
  Size size;                // of the main view, before it is fitted to the window
  std::string changedHelp;  // what is said beside a control with an edit that is not applied yet
  std::vector<ControlDescription> frame;  // controls outside the pages: sidebar, tab view, lock, Help, Apply
  std::vector<TabDescription> tabs;

  // Every control, frame first, then page by page. Pointers into this description.
  std::vector<const ControlDescription*> controls() const;
  // The control of that outlet; null if the description has none.
  const ControlDescription* find(std::string_view outlet) const;
};

// Reads a description. On failure returns nothing and sets `error` to what is wrong and where, such as
// "tabs/2/sections/0/rows/1: kind is missing".
std::optional<InterfaceDescription> readInterfaceDescription(const PropertyList& list, std::string& error);

}  // namespace norvik
