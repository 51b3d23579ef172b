# The sources of the Mac's adapter: those in C++ over the system's C interfaces, and those in Objective-C++ over
# Foundation and AppKit.
set(NORVIK_APPLE_CORE_SOURCES
  apple_computer.cpp
  authorization.cpp
  bundles.cpp
  core_text.cpp
  in_place.cpp
  listening_ports.cpp
  process_manager.cpp
  process_table.cpp
  property_list_files.cpp
  property_list_values.cpp
  run_loop.cpp
  system_log.cpp
  system_version.cpp
  tool_queue.cpp)
set(NORVIK_APPLE_TOOLKIT_SOURCES
  application.mm
  assertions.mm
  call.mm
  process_info.mm
  running_applications.mm)
list(TRANSFORM NORVIK_APPLE_CORE_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
list(TRANSFORM NORVIK_APPLE_TOOLKIT_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
