# What `cmake --install` lays out and what `cpack -G DEB` packs. The console and its provider library stay
# together under lib/halvenorts, because the console finds the library (and writes its log) beside itself.
include(GNUInstallDirs)

set(HV_PRIVATE_DIR ${CMAKE_INSTALL_LIBDIR}/halvenorts)
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(HV_PRIVATE_DIR lib/halvenorts)
endif()

install(TARGETS halvenorts hvsock RUNTIME DESTINATION ${HV_PRIVATE_DIR} LIBRARY DESTINATION ${HV_PRIVATE_DIR})
install(CODE "file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(CREATE_LINK ../${HV_PRIVATE_DIR}/halvenorts
         \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/halvenorts\" SYMBOLIC)")
install(TARGETS halvenorts-setup halvenorts-admin RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_SOURCE_DIR}/packaging/halvenorts.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/resources/icons/Logo.png DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/64x64/apps
        RENAME halvenorts.png)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/halvenorts-admin.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_PACKAGE_NAME halvenorts)
set(CPACK_PACKAGE_VENDOR "HalvenorTS")
set(CPACK_PACKAGE_CONTACT "HalvenorTS support <${HV_SUPPORT_MAIL}>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://${HV_WEB_HOST}/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "administration console of the HalvenorTS internet and application filter")
set(CPACK_PACKAGE_DESCRIPTION
    "The console decides, for all terminal-server users or each one, which web sites, file extensions, mail "
    "addresses, ports, programs, window titles and removable devices are allowed or blocked, and when. It "
    "keeps the policy in one SQLite store that the enforcement components read. Includes halvenorts-admin, "
    "the command-line companion, and halvenorts-setup, which lays down the store.")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/packaging/postinst ${CMAKE_SOURCE_DIR}/packaging/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
