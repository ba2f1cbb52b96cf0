# What an installation holds, and the Debian package made of it; tools/package makes all packages.
# The version is that of project().
# Only what is installed is built for a package: no tests, no benchmarks.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

# On Windows the product stands in one folder that is the user's own, as the programs expect it.
if(WIN32)
  set(editor_folder Programs/Quorvel)
  install(TARGETS Quorvel quorvel-inspect RUNTIME DESTINATION ${editor_folder})
  install(DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/UI" demo/Scenes "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/Manual" DESTINATION ${editor_folder})
  install(FILES data/Translations.ini DESTINATION ${editor_folder})
  # The prefix that tools/win-converter fills: programs that import videos, beside the editor.
  set(WIN_CONVERTER "" CACHE PATH "prefix of the converter for Windows packages; empty: none is packaged")
  if(WIN_CONVERTER)
    install(PROGRAMS "${WIN_CONVERTER}/ffmpeg.exe" "${WIN_CONVERTER}/ffprobe.exe"
      DESTINATION ${editor_folder})
    install(DIRECTORY "${WIN_CONVERTER}/Licences" DESTINATION ${editor_folder})
  endif()
  install(FILES packaging/Settings.ini DESTINATION Settings)
  install(FILES CHANGELOG.md DESTINATION . RENAME CHANGELOG.txt)
  install(FILES packaging/README.txt DESTINATION .)
  return()
endif()

# Made from the sources by tools that only packages need: man pages, change log, metadata.
set(package_files "${CMAKE_BINARY_DIR}/package_files")
set(man_pages "")
foreach(program Quorvel quorvel-inspect)
  string(TOLOWER ${program} name)
  add_custom_command(
    OUTPUT "${package_files}/${name}.1.gz"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${package_files}"
    COMMAND "${CMAKE_COMMAND}" -E env LC_ALL=C.UTF-8 help2man --no-info --section=1
      "--include=${CMAKE_SOURCE_DIR}/packaging/${name}.h2m"
      "--output=${package_files}/${name}.1" $<TARGET_FILE:${program}>
    COMMAND gzip --force --best --no-name "${package_files}/${name}.1"
    DEPENDS ${program} "${CMAKE_SOURCE_DIR}/packaging/${name}.h2m"
    COMMENT "Making the man page of ${name}"
    VERBATIM)
  list(APPEND man_pages "${package_files}/${name}.1.gz")
endforeach()
add_custom_target(package_files
  COMMAND "${PYTHON3}" "${CMAKE_SOURCE_DIR}/packaging/release_notes.py" "${CMAKE_SOURCE_DIR}/CHANGELOG.md"
    ${PROJECT_VERSION} "${CMAKE_SOURCE_DIR}/packaging/quorvel.metainfo.xml.in" "${package_files}"
  DEPENDS ${man_pages}
  VERBATIM)

install(TARGETS Quorvel RUNTIME DESTINATION lib/quorvel)
install(TARGETS quorvel-inspect RUNTIME DESTINATION bin)
install(PROGRAMS packaging/quorvel DESTINATION bin)
install(DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/UI" demo/Scenes "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/Manual" DESTINATION share/quorvel)
install(FILES data/Translations.ini packaging/Settings.ini DESTINATION share/quorvel)
install(FILES packaging/quorvel.desktop DESTINATION share/applications)
install(FILES "${package_files}/quorvel.metainfo.xml" DESTINATION share/metainfo
  RENAME invalid.quorvel.Quorvel.metainfo.xml)
install(FILES data/icon/quorvel.svg DESTINATION share/icons/hicolor/scalable/apps)
foreach(size 16 24 32 48 64 128 256)
  install(FILES data/icon/quorvel-${size}.png RENAME quorvel.png
    DESTINATION share/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES ${man_pages} DESTINATION share/man/man1)
install(FILES packaging/README.txt packaging/copyright "${package_files}/changelog.gz"
  DESTINATION share/doc/quorvel)
install(FILES packaging/lintian-overrides DESTINATION share/lintian/overrides RENAME quorvel)

set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME quorvel)
set(CPACK_PACKAGE_VENDOR Quorvel)
set(CPACK_PACKAGE_CONTACT "The Quorvel maintainers <maintainers@quorvel.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for interactive branching training videos")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Quorvel creates and edits interactive training videos. A scene is a set of
branches; each plays one Ogg Theora clip and carries actions that say what
plays next: at the clip's end, on a key, on a click into a zone of the
picture, or by chance. Zones are polygons drawn over the frames, one shape
for each frame, so that they follow what moves.
.
The package also holds quorvel-inspect, which prints scenes, zones and videos
as JSON, the manual, and two demo scenes.")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The skin names this font; Qt's plugin for X comes with its library.
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-dejavu-core)
# The converter of Import Video; the words of file dialogs; what opens manual and scenes from the
# desktop's menu.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ffmpeg, qt6-translations-l10n, xdg-utils")
include(CPack)
