# files_stand_alone(TARGET): where CMAKE_VERIFY_INTERFACE_HEADER_SETS is on, every source of the target and every header below
# the folder is compiled by itself as part of the build, so that none needs another to be included before it.
function(files_stand_alone target)
  if(NOT CMAKE_VERIFY_INTERFACE_HEADER_SETS)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD OFF DISABLE_PRECOMPILE_HEADERS ON)
  # An object library has no interface of its own to verify.
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS *.h)
  add_library(${target}_headers INTERFACE)
  target_sources(${target}_headers PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
  add_custom_target(${target}_each_header ALL)
  add_dependencies(${target}_each_header ${target}_headers_verify_interface_header_sets)
endfunction()
