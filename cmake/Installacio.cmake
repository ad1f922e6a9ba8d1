# What `cmake --install` puts where, and the Debian package made from it (`cpack -G DEB`).
include(GNUInstallDirs)

set(QUADRELLA_ID org.example.quadrella)

install(TARGETS quadrella RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/resources/${QUADRELLA_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/resources/${QUADRELLA_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PROJECT_SOURCE_DIR}/resources/quadrella.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps)
install(FILES ${PROJECT_SOURCE_DIR}/resources/quadrella.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/manual/
        DESTINATION ${CMAKE_INSTALL_DATADIR}/quadrella/manual)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/translations/
        DESTINATION ${CMAKE_INSTALL_DATADIR}/quadrella/translations
        FILES_MATCHING PATTERN "*.tsv")
install(FILES ${PROJECT_SOURCE_DIR}/packaging/quadrella.bash-completion
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME quadrella)

# The manual page comes from the program's own table of options and commands (`quadrella --man`);
# Debian's documents are compressed reproducibly (gzip -n).
find_program(GZIP_PROGRAM gzip REQUIRED)
set(pagina_manual ${PROJECT_BINARY_DIR}/quadrella.1.gz)
add_custom_command(OUTPUT ${pagina_manual}
  COMMAND sh -c "\"$<TARGET_FILE:quadrella>\" --man | ${GZIP_PROGRAM} -9n > \"${pagina_manual}\""
  DEPENDS quadrella
  COMMENT "Manual page quadrella(1)"
  VERBATIM)
set(registre_canvis ${PROJECT_BINARY_DIR}/changelog.gz)
add_custom_command(OUTPUT ${registre_canvis}
  COMMAND sh -c "${GZIP_PROGRAM} -9n < \"${PROJECT_SOURCE_DIR}/packaging/changelog\" > \"${registre_canvis}\""
  DEPENDS ${PROJECT_SOURCE_DIR}/packaging/changelog
  VERBATIM)
add_custom_target(documents_instal_lats ALL DEPENDS ${pagina_manual} ${registre_canvis})
install(FILES ${pagina_manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${registre_canvis} ${PROJECT_SOURCE_DIR}/packaging/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quadrella)

set(CPACK_PACKAGE_NAME quadrella)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Quadrella")
set(CPACK_PACKAGE_CONTACT "Quadrella developers <dev@quadrella.example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "job planner for service companies")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://quadrella.example.org)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The SQLite driver is a plug-in Qt loads at run time: no linker sees it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite")
# CPack puts the summary above it as the synopsis line.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Quadrella plans, schedules and bills the jobs of a small service company that
works at its clients' premises: clients and their places, workers and teams,
recurring jobs from each place's rhythm, an agenda grid by day, week or month,
overtime, and the monthly billing with fees, prepaid vouchers and payments on
account.")
include(CPack)
