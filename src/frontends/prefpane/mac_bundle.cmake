# Norvik.prefPane for the Mac: Contents/Info.plist, MacOS/Norvik and Resources, from the target norvik_prefpane.

target_sources(norvik_prefpane PRIVATE appearance_mac.mm flushing_drawing_mac.mm sidebar_cells_mac.mm)
# Methods have the parameters that their callers pass, used or not. The sources are GNUstep's too, which knows the toolkit's
# old names alone; so what is deprecated is no warning here: docs/mac.md has the list.
target_compile_options(norvik_prefpane PUBLIC
  $<$<COMPILE_LANGUAGE:OBJCXX>:-std=gnu++20> $<$<COMPILE_LANGUAGE:OBJCXX>:-Wno-unused-parameter>
  -Wno-deprecated-declarations)
target_link_libraries(norvik_prefpane PUBLIC norvik_pane norvik_shared norvik_apple norvik_resources norvik_property_lists
  "-framework PreferencePanes" "-framework AppKit" "-framework Foundation" objc)

# The toolkit's headers take most of the time.
target_precompile_headers(norvik_prefpane PRIVATE
  $<$<COMPILE_LANGUAGE:OBJCXX>:${CMAKE_CURRENT_SOURCE_DIR}/appkit.h> ${CMAKE_CURRENT_SOURCE_DIR}/main_view.h)

# All objects of the module, as nothing in the pane calls the exported queries.
add_library(norvik_prefpane_bundle MODULE pane_object.mm $<TARGET_OBJECTS:norvik_pane_objects>)
target_link_libraries(norvik_prefpane_bundle PRIVATE norvik_prefpane)

# The names that the module shows, as this system spells them, and the class that the host makes.
file(STRINGS ${PROJECT_SOURCE_DIR}/src/server/mac/exported_names.map names REGEX "^    [A-Za-z_]+;$")
list(TRANSFORM names REPLACE "^    (.*);$" "_\\1")
list(APPEND names [[_OBJC_CLASS_$_NVKServerPrefs]] [[_OBJC_METACLASS_$_NVKServerPrefs]])
list(JOIN names "\n" lines)
set(exported_names ${CMAKE_CURRENT_BINARY_DIR}/exported_names)
file(CONFIGURE OUTPUT ${exported_names} CONTENT "${lines}\n" @ONLY)
target_link_options(norvik_prefpane_bundle PRIVATE -Wl,-exported_symbols_list,${exported_names} -Wl,-dead_strip)
set_property(SOURCE ${PROJECT_SOURCE_DIR}/src/server/mac/exported_names.map PROPERTY CMAKE_CONFIGURE_DEPENDS)

# What the host reads, and the pane with it.
set(pictures ${PROJECT_SOURCE_DIR}/resources)
set(resources
  ${pictures}/authlock.tiff ${pictures}/authulock.tiff ${pictures}/icon.tiff ${pictures}/icon.icns ${pictures}/Interface.plist)
set(english ${pictures}/en.lproj/InfoPlist.strings)
target_sources(norvik_prefpane_bundle PRIVATE ${resources} ${english})
set_source_files_properties(${resources} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set_source_files_properties(${english} PROPERTIES MACOSX_PACKAGE_LOCATION Resources/en.lproj)
# How the pane is named among the others, in each language. Everything else that a person reads is in the program.
foreach(language de fr es ja ar)
  set(catalogue ${PROJECT_SOURCE_DIR}/resources/translations/${language}.po)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${catalogue})
  file(READ ${catalogue} texts)
  string(REGEX MATCH "msgid \"Norvik Server\"\nmsgstr \"([^\"]+)\"" found "${texts}")
  set(name "Norvik Server")
  if(found)
    set(name ${CMAKE_MATCH_1})
  endif()
  set(strings ${CMAKE_CURRENT_BINARY_DIR}/${language}.lproj/InfoPlist.strings)
  file(CONFIGURE OUTPUT ${strings} @ONLY CONTENT "CFBundleName = \"@name@\";\nNSPrefPaneIconLabel = \"@name@\";\n")
  target_sources(norvik_prefpane_bundle PRIVATE ${strings})
  set_source_files_properties(${strings} PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${language}.lproj)
endforeach()
set_target_properties(norvik_prefpane_bundle PROPERTIES
  BUNDLE TRUE BUNDLE_EXTENSION prefPane OUTPUT_NAME Norvik LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
  MACOSX_BUNDLE_INFO_PLIST ${PROJECT_SOURCE_DIR}/resources/Info.plist.in)

set(NORVIK_PREFPANE_DIR /Library/PreferencePanes CACHE STRING "Where Norvik.prefPane is installed")
install(TARGETS norvik_prefpane_bundle LIBRARY DESTINATION ${NORVIK_PREFPANE_DIR})
