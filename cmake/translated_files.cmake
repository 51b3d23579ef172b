# translated_file(KIND FILE): makes the file in the build's folder from that of this one, with the texts of every catalogue beside
# the English ones. KIND is --desktop or --xml. Needs resources/translations/LINGUAS and, for XML, the rules beside it.
function(translated_file kind file)
  set(translations ${PROJECT_SOURCE_DIR}/resources/translations)
  file(STRINGS ${translations}/LINGUAS line)
  separate_arguments(languages UNIX_COMMAND "${line}")
  list(TRANSFORM languages APPEND .po)
  list(TRANSFORM languages PREPEND ${translations}/)
  set(made ${CMAKE_CURRENT_BINARY_DIR}/${file})
  add_custom_command(OUTPUT ${made}
    COMMAND ${CMAKE_COMMAND} -E env GETTEXTDATADIRS=${translations} ${NORVIK_MSGFMT} ${kind}
      --template=${CMAKE_CURRENT_SOURCE_DIR}/${file} -d ${translations} -o ${made}
    DEPENDS ${file} ${languages} ${translations}/LINGUAS ${translations}/its/policy.its ${translations}/its/policy.loc VERBATIM)
  string(MAKE_C_IDENTIFIER ${file} target)
  add_custom_target(${target} ALL DEPENDS ${made})
endfunction()
