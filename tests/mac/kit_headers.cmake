# The toolkit's headers of the kit, which are not one set as on a Mac: the adapter has the few that are written for it, and the
# pane has GNUstep's, without what GNUstep has alone.
function(norvik_use_kit)
  target_compile_options(norvik_apple PRIVATE "SHELL:-idirafter ${NORVIK_MAC_SDK}/toolkit")
  target_compile_definitions(norvik_prefpane PUBLIC
    GNUSTEP_BASE_LIBRARY=1 GNU_GUI_LIBRARY=1 _NATIVE_OBJC_EXCEPTIONS NO_GNUSTEP=1
    MAC_OS_X_VERSION_MAX_ALLOWED=MAC_OS_X_VERSION_10_14)
  target_compile_options(norvik_prefpane PUBLIC
    "SHELL:-idirafter ${NORVIK_MAC_SDK}/gnustep_additions" "SHELL:-idirafter ${NORVIK_MAC_SDK}/gnustep")
endfunction()
cmake_language(DEFER CALL norvik_use_kit)
