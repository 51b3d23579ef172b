// norvikctl show: the pages as tables, or one setting in full with its help text.
#include <algorithm>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/selection.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/edits/editability.h"
#include "src/frontends/shared/interface/unread_settings.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/profile/pane_profile.h"
#include "src/frontends/shared/search/search_texts.h"
#include "src/server/mac/text/join.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

// What the setting takes, in the short form of a table.
std::string range(const SettingDescription& setting) {
  const ControlDescription& control = setting.first();
  switch (control.kind) {
    case ControlKind::checkBox:
      return "on, off";
    case ControlKind::popUp:
      return joined(control.items, ", ");
    case ControlKind::radioButton:
      return joined(setting.controls, ", ", &ControlDescription::choice);
    default:
      return sentence("{1} to {2}", {std::to_string(static_cast<int64_t>(control.minimum.value_or(0))),
                                     std::to_string(static_cast<int64_t>(control.maximum.value_or(0)))});
  }
}

bool isPending(const PaneSetting& setting, const NVKServerPrefs& pane) {
  return std::ranges::any_of(setting.controls(),
                             [&](const Control* control) { return pane.differsFromStored(*control); });
}

std::string state(const PaneSetting& setting, const NVKServerPrefs& pane) {
  const std::string stored = isDefault(setting, pane) ? translated("default") : translated("changed");
  return isPending(setting, pane) ? sentence("{1}, not saved", {stored}) : stored;
}

std::string editable(const Editability& editability) {
  if (!editability.editable()) return sentence("no: {1}", {editability.remark});
  return editability.remark.empty() ? translated("yes") : sentence("yes: {1}", {editability.remark});
}

using Page = std::vector<PaneSetting*>;

std::vector<Page> pagesOf(const std::vector<PaneSetting*>& settings) {
  std::vector<Page> pages;
  const PageName* last = nullptr;
  for (PaneSetting* setting : settings) {
    const PageName& page = setting->description().page;
    if (last == nullptr || last->title != page.title || last->group != page.group) pages.emplace_back();
    pages.back().push_back(setting);
    last = &page;
  }
  return pages;
}

Json settingJson(const Context& context, Session& session, PaneSetting& setting) {
  const ControlDescription& first = setting.description().first();
  const Editability editability = editabilityOf(session.edited(), setting);
  Json entry{{"name", setting.name()},
             {"label", first.label},
             {"help", first.help},
             {"value", jsonOf(setting.typedValue())}};
  entry["default"] = isDefault(setting, session.pane());
  entry["pending"] = isPending(setting, session.pane());
  if (first.minimum) entry["minimum"] = static_cast<int64_t>(*first.minimum);
  if (first.maximum) entry["maximum"] = static_cast<int64_t>(*first.maximum);
  if (!first.items.empty()) entry["items"] = first.items;
  if (setting.description().isChoice()) {
    entry.erase("label");
    entry.erase("help");
    for (const ControlDescription* button : setting.description().controls) {
      entry["choices"].push_back(
          {{"name", button->choice}, {"label", button->label}, {"help", button->help}});
    }
  }
  if (isUnread(first.outlet, context.services.computer.unreadFiles)) entry["unread"] = true;
  entry["editable"] = editability.editable();
  if (!editability.remark.empty()) entry["remark"] = editability.remark;
  return entry;
}

Json pagesJson(const Context& context, Session& session, const std::vector<Page>& pages) {
  Json list = Json::array();
  for (const Page& page : pages) {
    const PageName& name = page.front()->description().page;
    Json settings = Json::array();
    for (PaneSetting* setting : page) settings.push_back(settingJson(context, session, *setting));
    list.push_back({{"group", name.group}, {"page", name.title}, {"settings", std::move(settings)}});
  }
  return Json{{"pages", std::move(list)}};
}

// All pages in one table, so that the columns of all of them align.
void writePages(std::ostream& out, Session& session, const std::vector<Page>& pages) {
  std::vector<TableRow> rows;
  for (const Page& page : pages) {
    const PageName& name = page.front()->description().page;
    if (!rows.empty()) rows.emplace_back();
    rows.push_back({sentence("{1} ({2})",
                             {translated(name.title), translated(groupTitle(session.pane(), name.group))})});
    for (PaneSetting* setting : page) {
      rows.push_back({"  " + setting->name(), setting->text(), state(*setting, session.pane()),
                      editable(editabilityOf(session.edited(), *setting)), range(setting->description())});
    }
  }
  rows.insert(rows.begin(), {{translated("Setting"), translated("Value"), translated("State"),
                              translated("Editable"), translated("Range or items")},
                             {}});
  writeTable(out, rows);
}

void writeLockHint(std::ostream& out, const NVKServerPrefs& pane, const std::vector<Page>& pages) {
  const auto isAdministrators = [](const Page& page) {
    return page.front()->description().isAdministrators();
  };
  if (pane.authorized() || std::ranges::none_of(pages, isAdministrators)) return;
  out << '\n'
      << translated(
             "The lock is closed. \"norvikctl set\" opens it for a change, and first asks for an "
             "administrator.")
      << '\n';
}

void writeSetting(std::ostream& out, Session& session, PaneSetting& setting) {
  out << setting.name() << '\n';
  for (const ControlDescription* control : setting.description().controls) {
    const std::string& label = control->label;
    out << "\n  " << (control->choice.empty() ? label : sentence("{1}: {2}", {control->choice, label}))
        << "\n  " << control->help << '\n';
  }
  out << '\n';
  writeTable(out,
             {{translated("Page"), translated(setting.description().page.title)},
              {translated("Value"), sentence("{1} ({2})", {setting.text(), state(setting, session.pane())})},
              {translated("Takes"), acceptedValues(setting.description())},
              {translated("Editable"), editable(editabilityOf(session.edited(), setting))}},
             2);
}

Json hitsJson(Session& session, const std::vector<SearchHit>& hits) {
  Json list = Json::array();
  for (const SearchHit& hit : hits) {
    const PaneSetting* setting = session.find(hit.name);
    list.push_back({{"group", hit.page.group},
                    {"page", hit.page.title},
                    {"setting", hit.name.empty() ? Json(nullptr) : Json(hit.name)},
                    {"label", hit.label},
                    {"value", setting != nullptr ? jsonOf(setting->typedValue()) : Json(nullptr)},
                    {"locked", isLocked(hit, session.pane())}});
  }
  return list;
}

// The best first, each where it is: a page by its title, a setting by its name.
ExitStatus showFound(const Context& context, Session& session, const std::string& words) {
  const std::vector<SearchHit> hits = findShown(session.pane(), context.interface, words);
  std::vector<TableRow> rows;
  for (const SearchHit& hit : hits) {
    const PaneSetting* setting = session.find(hit.name);
    rows.push_back({setting != nullptr ? hit.name : hit.page.title, setting != nullptr ? setting->text() : "",
                    setting != nullptr ? hit.label : "", placeOf(hit, session.pane())});
  }
  if (!context.json) writeTable(context.out, rows);
  if (!context.json && rows.empty()) context.out << translated(search_texts::kNothing) << '\n';
  return finish(context.output(), ChangeReport(), {{"hits", hitsJson(session, hits)}});
}

}  // namespace

ExitStatus showSettings(const Context& context, const CommandLine& line) {
  const std::string page = line.arguments.empty() ? "" : line.arguments.front();
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  if (line.search) return showFound(context, session, *line.search);
  PaneSetting* one = session.find(page);
  const auto pages = pagesOf(meantSettings(session, page));
  if (pages.empty()) return finish(context.output(), unknownPage(session, page));
  if (!context.json && one != nullptr) {
    writeSetting(context.out, session, *one);
  } else if (!context.json) {
    writePages(context.out, session, pages);
    writeLockHint(context.out, session.pane(), pages);
  }
  return finish(context.output(), ChangeReport(), context.json ? pagesJson(context, session, pages) : Json());
}

}  // namespace norvik::command
