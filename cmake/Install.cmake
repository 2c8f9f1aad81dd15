# Installation and the Debian package.
#
# Every destination is relative to the prefix (GNUInstallDirs), so `cmake --install
# --prefix DIR` and cpack place the same tree anywhere: the programs in bin/, the
# resources in share/pedometer (AppPaths finds them from the binary's folder), and the
# desktop entry, AppStream metainfo, icon and D-Bus activation file where desktops and
# software centres look for them.
include(GNUInstallDirs)
# Installing builds nothing: scripts/test-package.sh builds the programs it installs.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(PEDOMETER_APP_ID "io.github.pedometer_app.Pedometer")
set(PEDOMETER_LINUX_FILES ${CMAKE_SOURCE_DIR}/res/linux)

install(TARGETS pedometer-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET pedometer)
  install(TARGETS pedometer RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
# The plug-ins, where AppPaths::Plugins finds them from the binary's folder (bin/../lib/pedometer):
# a private folder, not the multiarch library folder.
install(TARGETS ${PEDOMETER_PLUGINS} LIBRARY DESTINATION lib/pedometer)

# The resources as the build lays them out (with the seed databases), without the
# desktop integration files, which go to their own places below.
install(DIRECTORY ${CMAKE_BINARY_DIR}/res/
        DESTINATION ${CMAKE_INSTALL_DATADIR}/pedometer
        PATTERN "linux" EXCLUDE)

install(FILES ${PEDOMETER_LINUX_FILES}/${PEDOMETER_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PEDOMETER_LINUX_FILES}/${PEDOMETER_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${CMAKE_SOURCE_DIR}/res/images/pedometer-icon.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        RENAME ${PEDOMETER_APP_ID}.svg)
# Access to the accelerometer's buffer for the person at the seat (udev's own folder, not
# the multiarch library folder).
install(FILES ${PEDOMETER_LINUX_FILES}/70-pedometer-iio.rules DESTINATION lib/udev/rules.d)
# D-Bus wants the absolute path of the program it starts.
configure_file(${PEDOMETER_LINUX_FILES}/${PEDOMETER_APP_ID}.service.in
               ${CMAKE_BINARY_DIR}/${PEDOMETER_APP_ID}.service @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/${PEDOMETER_APP_ID}.service
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)

# cpack -G DEB: library dependencies come from dpkg-shlibdeps; Qt's plugins that are
# loaded at run time (window system, Wayland on phones) are named here.
set(CPACK_PACKAGE_NAME "pedometer")
set(CPACK_PACKAGE_VENDOR "The Pedometer developers")
set(CPACK_PACKAGE_CONTACT "The Pedometer developers <pedometer@users.noreply.github.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Step counter and fitness companion for phones and desktops")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "utils")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://pedometer-app.github.io/")
include(CPack)
