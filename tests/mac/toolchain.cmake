# A build for the Mac on Debian, by clang and lld, with the kit that tests/mac/make_sdk made. NORVIK_MAC_SDK names the kit.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES NORVIK_MAC_SDK)
set(CMAKE_OSX_SYSROOT ${NORVIK_MAC_SDK})
set(CMAKE_PROJECT_norvik_settings_panel_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/kit_headers.cmake)

set(tools /usr/lib/llvm-19/bin)
set(CMAKE_C_COMPILER ${tools}/clang)
set(CMAKE_CXX_COMPILER ${tools}/clang++)
set(CMAKE_OBJCXX_COMPILER ${tools}/clang++)
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET x86_64-apple-darwin)
endforeach()
set(CMAKE_AR ${tools}/llvm-ar)
set(CMAKE_RANLIB ${tools}/llvm-ranlib)
set(CMAKE_INSTALL_NAME_TOOL ${tools}/llvm-install-name-tool)
set(CMAKE_LINKER ${tools}/ld64.lld)
set(CMAKE_OTOOL ${tools}/llvm-otool)
set(CMAKE_LIPO ${tools}/llvm-lipo)

# What newlib's headers must be told to have what a Mac's own have without being asked.
set(newlib "-idirafter ${NORVIK_MAC_SDK}/newlib -D_GNU_SOURCE -D_POSIX_THREADS -D_POSIX_TIMERS \
-D_POSIX_MONOTONIC_CLOCK=200112L -D_UNIX98_THREAD_MUTEX_ATTRIBUTES")
foreach(language C CXX OBJCXX)
  # The compiler joins the programs for two processors by a tool that it looks for by a Mac's name for it.
  set(CMAKE_${language}_FLAGS_INIT "-B${NORVIK_MAC_SDK}/usr/bin ${newlib}")
  # Only this tool keeps objects for two processors in one library.
  set(CMAKE_${language}_ARCHIVE_CREATE "${tools}/llvm-libtool-darwin -static -o <TARGET> <OBJECTS>")
  set(CMAKE_${language}_ARCHIVE_FINISH "${CMAKE_COMMAND} -E true")
endforeach()
foreach(kind EXE MODULE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -Wl,-fatal_warnings")
endforeach()
