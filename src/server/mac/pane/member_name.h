// The name of a member, taken from a pointer to it, so that a table writes each member once.
#pragma once

#include <string_view>

namespace norvik {

// "m_serverPid" for &NVKServerPrefs::m_serverPid, and so for member functions. The compiler's own text of
// this function names the member; GCC and Clang both write it behind "member = ".
template <auto member>
constexpr std::string_view memberName() {
  std::string_view name = __PRETTY_FUNCTION__;
  name.remove_prefix(name.find("member = "));
  name = name.substr(0, name.find_first_of(";]"));
  return name.substr(name.rfind(':') + 1);
}

}  // namespace norvik
