# Parts of the product that need a toolkit. Each has an option that is AUTO, ON or OFF: AUTO builds the part where its
# toolkit is installed and says so where it is not, ON fails there, OFF never builds it.

# optional_part(NAME WHAT): declares the option.
function(optional_part name what)
  set(${name} AUTO CACHE STRING "${what}: AUTO, ON or OFF")
  set_property(CACHE ${name} PROPERTY STRINGS AUTO ON OFF)
  if(NOT ${name} MATCHES "^(AUTO|ON|OFF)$")
    message(FATAL_ERROR "${name} is \"${${name}}\"; it must be AUTO, ON or OFF")
  endif()
endfunction()

# part_is_missing(NAME WHY): ends the configuration where the part was asked for, else says that it is left out.
function(part_is_missing name why)
  if(${name} STREQUAL ON)
    message(FATAL_ERROR "${name} is ON, but ${why}")
  endif()
  message(STATUS "${name}: left out, because ${why}")
endfunction()
