# The Debian packages, which script/package makes with CPack: a component is a package. What both have to hold beside the
# program's own files is installed here. Needs what is installed to be known, so it comes last.
#   norvik-settings   window, command line, helper and what belongs to them
#   norvik-prefpane   the pane of System Preferences
set(NORVIK_MAINTAINER "Seed b006d6c3 maintainers <maintainers@users.noreply.c-seed-b006d6c3.example>" CACHE STRING "Who answers for the packages")
set(NORVIK_HOMEPAGE https://www.veltrane.com/norvik)
set(debian_version ${PROJECT_VERSION}-1)

# The time of the packages is that of what they are made from: SOURCE_DATE_EPOCH where it is given.
set(debian_time "%a, %d %b %Y %H:%M:%S +0000")
string(TIMESTAMP debian_date "${debian_time}" UTC)

set(packages norvik-settings)
if(TARGET norvik_prefpane_bundle)
  list(APPEND packages norvik-prefpane)
endif()

# compress(FILE): makes FILE.gz, without the time and the name that gzip would put in.
function(compress file)
  add_custom_command(OUTPUT ${file}.gz COMMAND gzip -9nc ${file} > ${file}.gz DEPENDS ${file} VERBATIM)
endfunction()

# Each package has its own copy of what says whose it is and what is new.
set(changes ${CMAKE_CURRENT_BINARY_DIR}/packaging/changelog)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${changes} COPYONLY)
compress(${changes})
set(compressed ${changes}.gz)
foreach(package IN LISTS packages)
  set(own ${CMAKE_CURRENT_BINARY_DIR}/packaging/${package})
  configure_file(cmake/packaging/changelog.Debian.in ${own}/changelog.Debian @ONLY)
  compress(${own}/changelog.Debian)
  list(APPEND compressed ${own}/changelog.Debian.gz)
  install(FILES cmake/packaging/copyright ${changes}.gz ${own}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${package})
endforeach()
add_custom_target(norvik_package_documents ALL DEPENDS ${compressed})

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL ${packages})
set(CPACK_PACKAGE_VENDOR Veltrane)
set(CPACK_PACKAGE_CONTACT "${NORVIK_MAINTAINER}")
set(CPACK_PACKAGE_HOMEPAGE_URL ${NORVIK_HOMEPAGE})
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
# What is installed names its own path, so it is installed as if to the root of a computer.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The toolkit loads its connection to the screen and its reader of pictures at run time, so that no program is linked to them.
# Its own words in other languages are a package too. Passwords are asked for by polkit, at a terminal by its own program and in a window by one of the desktop.
set(CPACK_DEBIAN_NORVIK-SETTINGS_PACKAGE_NAME norvik-settings)
set(CPACK_DEBIAN_NORVIK-SETTINGS_PACKAGE_DEPENDS
  "default-dbus-system-bus | dbus-system-bus, polkitd, qt6-qpa-plugins, qt6-image-formats-plugins")
set(CPACK_DEBIAN_NORVIK-SETTINGS_PACKAGE_RECOMMENDS
  "fonts-dejavu-core | fonts-freefont-ttf, polkit-1-auth-agent, qt6-translations-l10n")
set(CPACK_DEBIAN_NORVIK-SETTINGS_PACKAGE_SUGGESTS "norvik-prefpane, qt6-wayland, fonts-noto-cjk")
# The triggers are those of a library in a folder where every program looks.
set(scripts ${PROJECT_SOURCE_DIR}/cmake/packaging)
set(CPACK_DEBIAN_NORVIK-SETTINGS_PACKAGE_CONTROL_EXTRA ${scripts}/postinst ${scripts}/prerm ${scripts}/postrm
  ${scripts}/triggers)
set(CPACK_COMPONENT_NORVIK-SETTINGS_DESCRIPTION "settings of the Norvik remote access server
Shows whether the Norvik server of this computer runs and at which address it
is reached, starts and stops it, and edits what clients may do: ports,
clipboard, sound, printing, one user or several, image quality and
notifications.
.
It has a window, norvik-settings, and a command line, norvikctl. What needs an
administrator stays locked until one unlocks it with a password; a small helper
carries it out.")

set(CPACK_DEBIAN_NORVIK-PREFPANE_PACKAGE_NAME norvik-prefpane)
set(CPACK_DEBIAN_NORVIK-PREFPANE_PACKAGE_DEPENDS
  "norvik-settings (= ${debian_version}), systempreferences.app")
set(CPACK_COMPONENT_NORVIK-PREFPANE_DESCRIPTION "pane of System Preferences for the Norvik server
Shows the settings of the Norvik remote access server in the System Preferences
of GNUstep: the same settings as the window norvik-settings has, behind the
same lock.")
include(CPack)
