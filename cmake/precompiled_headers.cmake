# What nearly every file of a target includes is compiled once for each target, which halves the time of a whole build. No
# file may rely on it: the module's files are compiled by themselves in the build "dev", and clang-tidy compiles without.
set(pane ${PROJECT_SOURCE_DIR}/src/server/mac/pane/pane.h)

foreach(target norvik_pane_objects norvik_command norvik_scenario_runner norvik_simulated)
  if(TARGET ${target})
    target_precompile_headers(${target} PRIVATE ${pane})
  endif()
endforeach()
target_precompile_headers(norvik_property_lists PRIVATE ${PROJECT_SOURCE_DIR}/src/server/mac/platform/property_list.h)
foreach(target norvik_server_tests norvik_adapter_tests norvik_command_tests)
  if(TARGET ${target})
    target_precompile_headers(${target} PRIVATE <gtest/gtest.h> ${pane})
  endif()
endforeach()
# The toolkit's headers that several files include; all that it has would take longer than they save.
set(widgets <QApplication> <QLabel> <QLineEdit> <QListWidget> <QPushButton> <QTimer> <QWidget>)
if(TARGET norvik_desktop)
  target_precompile_headers(norvik_desktop PRIVATE ${widgets} ${pane})
endif()
if(TARGET norvik_desktop_tests)
  target_precompile_headers(norvik_desktop_tests PRIVATE <gtest/gtest.h> ${widgets} <QTest> ${pane})
endif()
