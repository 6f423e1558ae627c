# What `cmake --install` lays down, and the packages that CPack makes of it (tools/package.sh).
#   lib/mapwright    the program and its plug-ins, which stand beside it; bin/mapwright is a link
#   share/mapwright  what the program reads and never writes
#   include          what a plug-in of one's own is compiled with
include(GNUInstallDirs)
set(CMAKE_INSTALL_LIBDIR lib)  # the plug-ins are no libraries of the system
set(programs ${CMAKE_INSTALL_LIBDIR}/mapwright)
set(shared ${CMAKE_INSTALL_DATADIR}/mapwright)
set(work ${CMAKE_BINARY_DIR}/work)

install(TARGETS mapwright make_sample sample_game DESTINATION ${programs})
install(TARGETS mw_amm mw_smg DESTINATION ${programs})
install(TARGETS mapwright-archive DESTINATION ${CMAKE_INSTALL_BINDIR})
install(CODE "
  set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
  file(MAKE_DIRECTORY \"\${bin}\")
  file(CREATE_LINK \"../${programs}/mapwright\" \"\${bin}/mapwright\" SYMBOLIC)")

install(DIRECTORY ${work}/media ${work}/TextureSets DESTINATION ${shared})
# The template of new mods, which leads to this machine's sample game.
install(CODE "
  file(READ \"${work}/mpwr.cfg\" template)
  string(REGEX REPLACE \"\nGamePath=[^\n]*\" \"\nGamePath=\" template \"\${template}\")
  file(WRITE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${shared}/mpwr.cfg\" \"\${template}\")")
install(FILES ${CMAKE_SOURCE_DIR}/help/guide.htm ${CMAKE_SOURCE_DIR}/help/tutorial.htm
              ${CMAKE_SOURCE_DIR}/help/help.css
        DESTINATION ${shared})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/help/pictures ${CMAKE_SOURCE_DIR}/scripts DESTINATION ${shared})

install(FILES ${CMAKE_SOURCE_DIR}/plugins/mapwright_plugin.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(packaging ${CMAKE_SOURCE_DIR}/packaging)
install(FILES ${packaging}/mapwright.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/mapwright-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
        RENAME mapwright.xml)
# Software centres load the picture from the site; `.invalid` is a site that nobody has.
set(MAPWRIGHT_SITE https://mapwright.invalid CACHE STRING "Where the program has its page and screenshot.png")
set(metainfo ${CMAKE_BINARY_DIR}/org.mapwright.Mapwright.metainfo.xml)
configure_file(${packaging}/org.mapwright.Mapwright.metainfo.xml.in ${metainfo} @ONLY)
install(FILES ${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# Manual pages and lists of changes are compressed, as Debian wants them.
set(compressed ${CMAKE_BINARY_DIR}/compressed)
file(MAKE_DIRECTORY ${compressed})
function(mw_install_compressed source name destination)
  execute_process(COMMAND gzip -9nc ${source} OUTPUT_FILE ${compressed}/${name}.gz
                  COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${compressed}/${name}.gz DESTINATION ${destination})
endfunction()
foreach(command mapwright mapwright-archive)
  mw_install_compressed(${packaging}/man/${command}.1 ${command}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
set(documents ${CMAKE_INSTALL_DATADIR}/doc/mapwright)
mw_install_compressed(${CMAKE_SOURCE_DIR}/CHANGELOG.md CHANGELOG.md ${documents})
configure_file(${packaging}/changelog.in ${CMAKE_BINARY_DIR}/changelog @ONLY)
mw_install_compressed(${CMAKE_BINARY_DIR}/changelog changelog ${documents})
install(FILES ${packaging}/copyright ${CMAKE_SOURCE_DIR}/docs/screenshot.png DESTINATION ${documents})

# The program's icon, and that of level archives, for the desktop.
set(iconFolder ${CMAKE_BINARY_DIR}/hicolor)
add_custom_command(OUTPUT ${iconFolder}/made
                   COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0
                           $<TARGET_FILE:make_media> icons ${CMAKE_SOURCE_DIR}/resources/icons
                           ${iconFolder}
                   COMMAND ${CMAKE_COMMAND} -E touch ${iconFolder}/made
                   DEPENDS make_media ${CMAKE_SOURCE_DIR}/resources/icons/mapwright.svg
                           ${CMAKE_SOURCE_DIR}/resources/icons/level_archive.svg VERBATIM)
add_custom_target(desktop_icons ALL DEPENDS ${iconFolder}/made)
set(hicolor ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(DIRECTORY ${iconFolder}/ DESTINATION ${hicolor} FILES_MATCHING PATTERN *.png)
install(FILES ${CMAKE_SOURCE_DIR}/resources/icons/mapwright.svg DESTINATION ${hicolor}/scalable/apps)
install(FILES ${CMAKE_SOURCE_DIR}/resources/icons/level_archive.svg
        DESTINATION ${hicolor}/scalable/mimetypes RENAME application-x-varnhold-archive.svg)

set(CPACK_PACKAGE_NAME mapwright)
set(CPACK_PACKAGE_VENDOR "The Mapwright developers")
set(CPACK_PACKAGE_CONTACT "The Mapwright developers <developers@mapwright.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "level editor for the game Varnhold")
set(CPACK_PACKAGE_DESCRIPTION
    "Mapwright edits levels of the first-person war game Varnhold in the game's own\narchives: \
terrain, ground materials, objects and game-mode entities.\nIt comes with a sample game to try it on, \
and with mapwright-archive, a command\nfor the game's archives.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_SOURCE_DIR}/build/package)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_FILE_NAME mapwright-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The platform plug-in and the reader of the icons are loaded, not linked.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")  # opens the help pages
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "wine")         # starts a game for Windows
# Whatever the umask of who makes them.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
