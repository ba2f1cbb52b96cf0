# What an installation holds, and the Debian package made of it; tools/package makes all packages.
# The version is that of project().
# Only what is installed is built for a package: no tests, no benchmarks.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

# On Windows the product stands in one folder that is the user's own, as the programs expect it.
if(WIN32)
  set(editor_folder Programs/Quorvel)
  install(TARGETS Quorvel quorvel-inspect RUNTIME DESTINATION ${editor_folder})
  install(DIRECTORY data/UI demo/Scenes DESTINATION ${editor_folder})
  install(FILES data/Translations.ini DESTINATION ${editor_folder})
  install(FILES packaging/Settings.ini DESTINATION Settings)
  install(FILES CHANGELOG.md DESTINATION . RENAME CHANGELOG.txt)
  return()
endif()

install(TARGETS Quorvel RUNTIME DESTINATION lib/quorvel)
install(TARGETS quorvel-inspect RUNTIME DESTINATION bin)
install(PROGRAMS packaging/quorvel DESTINATION bin)
install(DIRECTORY data/UI demo/Scenes DESTINATION share/quorvel)
install(FILES data/Translations.ini packaging/Settings.ini DESTINATION share/quorvel)
install(FILES packaging/quorvel.desktop DESTINATION share/applications)
foreach(size 16 24 32 48 64 128 256)
  install(FILES data/icon/quorvel-${size}.png RENAME quorvel.png
    DESTINATION share/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES README.md CHANGELOG.md DESTINATION share/doc/quorvel)

set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME quorvel)
set(CPACK_PACKAGE_VENDOR Quorvel)
set(CPACK_PACKAGE_CONTACT "The Quorvel maintainers <maintainers@quorvel.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Editor for interactive branching training videos")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The skin names this font; Qt's plugin for X comes with its library.
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-dejavu-core)
include(CPack)
