// What a scenario asks about the panes.
#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/forms.h"
#include "src/frontends/scenario/known_words.h"
#include "src/frontends/scenario/pane_values.h"

namespace norvik::scenario {

namespace {

std::string stateForm(const Control& control) {
  return "state=" + std::to_string(control.state());
}
std::string valueForm(const Control& control) {
  return "value=" + shortestForm(control.doubleValue());
}
std::string indexForm(const Control& control) {
  return "index=" + std::to_string(control.indexOfSelectedItem());
}
std::string textForm(const Control& control) {
  return "text=" + quoted(control.stringValue());
}
std::string titleForm(const Control& control) {
  return "title=" + quoted(control.title());
}
std::string imageForm(const Control& control) {
  return "image=" + form(control.image());
}
std::string rowForm(const Control& control) {
  return "row=" + std::to_string(dynamic_cast<const OutlineView&>(control).selectedRow());
}
std::string pageName(const TabView& view) {
  return view.selectedItem() == nullptr ? "null" : quoted(view.selectedItem()->label);
}
std::string pageForm(const Control& control) {
  return "page=" + pageName(dynamic_cast<const TabView&>(control));
}

struct KindForm {
  ControlKind kind;
  std::string (*form)(const Control& control);
};

constexpr KindForm kKindForms[] = {
    {ControlKind::checkBox, stateForm},   {ControlKind::radioButton, stateForm},
    {ControlKind::slider, valueForm},     {ControlKind::popUp, indexForm},
    {ControlKind::textField, textForm},   {ControlKind::label, textForm},
    {ControlKind::pushButton, titleForm}, {ControlKind::lockButton, imageForm},
    {ControlKind::outlineView, rowForm},  {ControlKind::tabView, pageForm},
};

std::string controlForm(const Control& control) {
  std::string line(control.name());
  if (control.isRemoved()) return line + " removed";
  line += control.isEnabled() ? " enabled" : " disabled";
  line += control.isHidden() ? " hidden" : " shown";
  for (const KindForm& row : kKindForms) {
    if (row.kind == control.kind()) line += ' ' + row.form(control);
  }
  return control.isTransparent() ? line + " transparent" : line;
}

void show(Session& session, Arguments& arguments) {
  do session.print(controlForm(session.control(arguments.word())));
  while (!arguments.atEnd());
}

void printValues(Session& session, Arguments& arguments, std::string_view kind,
                 std::span<const PaneValue> table) {
  do {
    const PaneValue& value = rowNamed<PaneValue>(kind, arguments.word(), table);
    session.print(std::string(value.name) + ' ' + value.form(session.pane()));
  } while (!arguments.atEnd());
}

void field(Session& session, Arguments& arguments) {
  printValues(session, arguments, "field", paneFields());
}

void accessor(Session& session, Arguments& arguments) {
  printValues(session, arguments, "accessor", paneAccessors());
}

void changed(Session& session, Arguments&) {
  const NVKServerPrefs& pane = session.pane();
  session.print("user=" + form(pane.userConfigChanged()) + " admin=" + form(pane.adminConfigChanged()) +
                " notifications=" + form(pane.notificationSettingsChanged()) +
                " maxFiles=" + form(pane.maxFilesChanged()));
}

void sidebar(Session& session, Arguments&) {
  const OutlineView& view = session.pane().ib_oview_confBar;
  int number = 0;
  for (const OutlineView::Row& row : view.rows()) {
    const char* selected = number == view.selectedRow() ? " selected" : "";
    session.print(std::to_string(number) + ' ' + quoted(row.view.text) + ' ' +
                  std::string(row.view.identifier) + selected);
    ++number;
  }
}

void page(Session& session, Arguments&) {
  session.print(pageName(session.pane().ib_tview_confView));
}

void frame(Session& session, Arguments& arguments) {
  View& view = session.pane().mainView();
  if (!arguments.atEnd()) {
    Rect frame;
    for (double Rect::*part : {&Rect::x, &Rect::y, &Rect::width, &Rect::height})
      frame.*part = arguments.real();
    return view.setFrame(frame);
  }
  const Rect& frame = view.frame();
  session.print(shortestForm(frame.x) + ' ' + shortestForm(frame.y) + ' ' + shortestForm(frame.width) + ' ' +
                shortestForm(frame.height));
}

void timer(Session& session, Arguments&) {
  const CFRunLoopTimerRef timer = session.hasPane() ? session.pane().m_uiTimer : nullptr;
  const auto interval = session.computer.runLoop.runningInterval(timer);
  session.print(interval ? "running interval=" + shortestForm(*interval) : "none");
}

void mainPane(Session& session, Arguments&) {
  const std::size_t number = session.numberOf(__main_pane);
  session.print(number == 0 ? "none" : std::to_string(number));
}

void buffers(Session& session, Arguments&) {
  const std::pair<const char*, const char*> all[] = {
      {"SBUF_CURHOST", SBUF_CURHOST}, {"SBUF_NVKADR", SBUF_NVKADR}, {"SBUF_RDPADR", SBUF_RDPADR}};
  for (const auto& [name, text] : all) session.print(std::string(name) + ' ' + quoted(text));
}

void clock(Session& session, Arguments&) {
  session.print(std::to_string(session.computer.clock.microseconds()));
}

constexpr CommandRow kQuestionCommands[] = {
    {"show", show},          {"field", field},     {"accessor", accessor}, {"changed", changed},
    {"sidebar", sidebar},    {"page", page},       {"frame", frame},       {"timer", timer},
    {"main-pane", mainPane}, {"buffers", buffers}, {"clock", clock},
};

}  // namespace

std::span<const CommandRow> questionCommands() {
  return kQuestionCommands;
}

}  // namespace norvik::scenario
