// Writes a list as leaves; reads leaves into a tree of nodes, which then becomes the list.
#include "src/frontends/scenario/property_list_leaves.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "src/adapters/property_lists/scalars.h"
#include "src/adapters/simulated/text_form.h"
#include "src/frontends/scenario/malformed.h"
#include "src/frontends/scenario/scenario_file.h"
#include "src/frontends/scenario/words.h"
#include "src/server/mac/text/escape.h"
#include "src/server/mac/text/reals.h"

namespace norvik::scenario {

namespace {

// ---- a value and the name of its type

std::string hexadecimal(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string form;
  for (const char byte : bytes) {
    form += kDigits[static_cast<unsigned char>(byte) >> 4];
    form += kDigits[static_cast<unsigned char>(byte) & 15];
  }
  return form;
}

struct FormOf {
  std::string operator()(const PropertyList::Dictionary&) const { return "dictionary"; }
  std::string operator()(const PropertyList::Array&) const { return "array"; }
  std::string operator()(const std::string& text) const { return "string " + quoted(text); }
  std::string operator()(bool value) const { return value ? "boolean true" : "boolean false"; }
  std::string operator()(int64_t value) const { return "integer " + std::to_string(value); }
  std::string operator()(uint64_t value) const { return "integer " + std::to_string(value); }
  std::string operator()(double value) const { return "real " + shortestForm(value); }
  std::string operator()(const PropertyList::Date& date) const { return "date " + formatDate(date.seconds); }
  std::string operator()(const PropertyList::Data& data) const { return "data " + hexadecimal(data.bytes); }
};

using Value = std::optional<PropertyList>;

Value booleanOf(std::string_view form) {
  if (form != "true" && form != "false") return std::nullopt;
  return PropertyList(form == "true");
}

Value realOf(std::string_view form) {
  const auto number = leadingReal(form);
  if (!number || number->length != form.size() || !number->inRange) return std::nullopt;
  return PropertyList(number->value);
}

Value stringOf(std::string_view form) {
  if (!form.starts_with('"')) return std::nullopt;
  std::string text = takeQuoted(form);
  return form.empty() ? Value(std::move(text)) : std::nullopt;
}

Value dataOf(std::string_view form) {
  PropertyList::Data data;
  for (; form.size() >= 2; form.remove_prefix(2)) {
    unsigned byte = 0;
    if (std::from_chars(form.data(), form.data() + 2, byte, 16).ptr != form.data() + 2) return std::nullopt;
    data.bytes += static_cast<char>(byte);
  }
  return form.empty() ? Value(std::move(data)) : std::nullopt;
}

Value dateOf(std::string_view form) {
  const auto seconds = parseDate(form);
  return seconds ? Value(PropertyList::Date{*seconds}) : std::nullopt;
}

Value emptyDictionary(std::string_view form) {
  return form.empty() ? Value(PropertyList()) : std::nullopt;
}

Value emptyArray(std::string_view form) {
  return form.empty() ? Value(PropertyList::Array{}) : std::nullopt;
}

struct Type {
  std::string_view name;
  Value (*valueOf)(std::string_view form);
};

constexpr Type kTypes[] = {
    {"boolean", booleanOf},
    {"integer", parseInteger},
    {"real", realOf},
    {"string", stringOf},
    {"data", dataOf},
    {"date", dateOf},
    {"dictionary", emptyDictionary},
    {"array", emptyArray},
};

// The value of `TYPE VALUE`; nothing if it is not one.
Value valueOf(std::string_view form) {
  const std::string_view name = form.substr(0, form.find(' '));
  form.remove_prefix(std::min(name.size() + 1, form.size()));
  for (const Type& type : kTypes) {
    if (type.name == name) return type.valueOf(form);
  }
  return std::nullopt;
}

// ---- paths

// A key in a path: a slash in it does not end it, and it stays on its line.
std::string keyForm(std::string_view key) {
  std::string form;
  for (const char c : escaped(key)) {
    if (c == '/') form += '\\';
    form += c;
  }
  return form;
}

// A path at the beginning of a line: not blank, and not mistaken for a command or a comment.
std::string lineForm(const std::string& path) {
  constexpr std::string_view kTaken = " >#";
  if (path.empty() || kTaken.find(path[0]) == std::string_view::npos) return path;
  return "\\x" + hexadecimal(path.substr(0, 1)) + path.substr(1);
}

std::vector<std::string> keysOf(std::string_view path) {
  std::vector<std::string> keys;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (path[i] == '\\') {
      ++i;  // an escaped character ends no key
    } else if (path[i] == '/') {
      keys.push_back(unescapedKey(path.substr(begin, i - begin)));
      begin = i + 1;
    }
  }
  keys.push_back(unescapedKey(path.substr(begin)));
  return keys;
}

void collect(const PropertyList& list, const std::string& path,
             std::vector<std::pair<std::string, std::string>>& leaves) {
  const auto below = [&](const std::string& key) { return path.empty() ? key : path + '/' + key; };
  const auto* dictionary = list.as<PropertyList::Dictionary>();
  const auto* array = list.as<PropertyList::Array>();
  if (dictionary != nullptr && !dictionary->empty()) {
    for (const auto& [key, value] : *dictionary) collect(value, below(keyForm(key)), leaves);
  } else if (array != nullptr && !array->empty()) {
    for (std::size_t i = 0; i < array->size(); ++i) collect((*array)[i], below(std::to_string(i)), leaves);
  } else {
    leaves.emplace_back(lineForm(path), std::visit(FormOf{}, list.value()));
  }
}

// ---- the tree

// A leaf, or a node with further keys below it.
struct Node {
  Value leaf;
  std::map<std::string, Node> below;
  bool isArray = false;  // the first key given was an index
};

// The index that a key is, written without leading zeros.
std::optional<std::size_t> indexOf(const std::string& key) {
  std::size_t index = 0;
  const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), index);
  if (error != std::errc{} || std::to_string(index) != key) return std::nullopt;
  return index;
}

PropertyList listOf(Node& node);

PropertyList arrayOf(Node& node) {
  PropertyList::Array array(node.below.size());
  for (auto& [key, child] : node.below) {
    const auto index = indexOf(key);
    if (!index || *index >= array.size())
      throw Malformed("the elements of an array must be numbered from 0 without gaps");
    array[*index] = listOf(child);
  }
  return array;
}

PropertyList listOf(Node& node) {
  if (node.leaf) return std::move(*node.leaf);
  if (node.isArray) return arrayOf(node);
  PropertyList::Dictionary dictionary;
  for (auto& [key, child] : node.below) dictionary.emplace(key, listOf(child));
  return dictionary;
}

void plant(Node& root, std::string_view path, PropertyList value) {
  Node* node = &root;
  for (const std::string& key : keysOf(path)) {
    if (node->leaf) throw Malformed("there is a value above " + std::string(path));
    if (node->below.empty()) node->isArray = indexOf(key).has_value();
    node = &node->below[key];
  }
  if (!node->below.empty()) throw Malformed("there are values below " + std::string(path));
  node->leaf = std::move(value);
}

// A key may contain spaces, so the path ends before the first space that a type and its value follow.
void plantLine(Node& root, const std::string& line) {
  for (std::size_t space = line.find(' '); space != std::string::npos; space = line.find(' ', space + 1)) {
    if (auto value = valueOf(std::string_view(line).substr(space + 1))) {
      return plant(root, std::string_view(line).substr(0, space), std::move(*value));
    }
  }
  throw Malformed("expected PATH TYPE VALUE, found " + line);
}

}  // namespace

std::vector<std::string> leavesOf(const PropertyList& list) {
  std::vector<std::pair<std::string, std::string>> leaves;
  collect(list, "", leaves);
  // An empty root is itself the only leaf.
  if (leaves.size() == 1 && leaves[0].first.empty()) return {leaves[0].second};
  std::sort(leaves.begin(), leaves.end());
  std::vector<std::string> lines;
  lines.reserve(leaves.size());
  for (const auto& [path, form] : leaves) lines.emplace_back(path).append(" ").append(form);
  return lines;
}

PropertyList listOfLeaves(std::string_view body) {
  const std::vector<std::string> lines = linesOf(body);
  if (lines.empty()) return {};
  if (lines.size() == 1 && lines[0] == "dictionary") return {};
  if (lines.size() == 1 && lines[0] == "array") return PropertyList::Array{};
  Node root;
  for (const std::string& line : lines) plantLine(root, line);
  return listOf(root);
}

}  // namespace norvik::scenario
