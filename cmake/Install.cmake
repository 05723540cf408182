# `cmake --install build --prefix P` and the .deb package (`cpack -G DEB` in the build folder,
# or the `package` target): the three programs in P/bin, the shipped data in
# P/share/ferrolund, and the desktop's entry, icon and file types.

set(FERROLUND_PACKAGING_DIR ${CMAKE_SOURCE_DIR}/packaging)

set(FERROLUND_PROGRAMS ferrolund ferrolund-cli)
if(TARGET serz)
  list(APPEND FERROLUND_PROGRAMS serz)
endif()
install(TARGETS ${FERROLUND_PROGRAMS} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/data/ DESTINATION ${FERROLUND_INSTALL_DATA_DIR})

install(FILES ${FERROLUND_PACKAGING_DIR}/ferrolund.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${FERROLUND_PACKAGING_DIR}/mime/ferrolund.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${FERROLUND_PACKAGING_DIR}/ferrolund.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# A 256 px picture of the icon for desktops that take no SVG, when rsvg-convert is at hand.
find_program(FERROLUND_RSVG_CONVERT rsvg-convert)
if(FERROLUND_RSVG_CONVERT)
  set(FERROLUND_ICON_PNG ${CMAKE_BINARY_DIR}/packaging/ferrolund.png)
  add_custom_command(OUTPUT ${FERROLUND_ICON_PNG}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging
    COMMAND ${FERROLUND_RSVG_CONVERT} --width 256 --height 256 --output ${FERROLUND_ICON_PNG}
      ${FERROLUND_PACKAGING_DIR}/ferrolund.svg
    DEPENDS ${FERROLUND_PACKAGING_DIR}/ferrolund.svg
    COMMENT "Rendering the 256 px icon")
  add_custom_target(ferrolund_icon ALL DEPENDS ${FERROLUND_ICON_PNG})
  install(FILES ${FERROLUND_ICON_PNG} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps)
else()
  message(STATUS "rsvg-convert not found: the icon is installed as SVG only")
endif()

# The package. Its dependencies are found by dpkg-shlibdeps from the libraries the programs
# link; Qt's platform plugins are loaded at run time, so they are named here.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ferrolund)
set(CPACK_PACKAGE_VENDOR "Ferrolund")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Workbench for RailWorks / Train Simulator Classic content")
set(CPACK_PACKAGE_DESCRIPTION
  "Ferrolund turns the simulator's binary files into XML text and back, edits them, checks routes \
for missing assets, indexes what is installed, unpacks and builds .ap archives and packages \
content. It comes as a desktop program (ferrolund), a command-line one (ferrolund-cli) and the \
converter (serz).")
set(FERROLUND_PACKAGE_MAINTAINER "Ferrolund developers <ferrolund@example.invalid>"
  CACHE STRING "The Maintainer field of the .deb package")
set(CPACK_PACKAGE_CONTACT ${FERROLUND_PACKAGE_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
include(CPack)
