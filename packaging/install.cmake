# What is installed, and where. The programs find each other and the library by their places beside each other, which are
# those of the build folder; nothing points back into it.
include(GNUInstallDirs)
set(private_dir ${CMAKE_INSTALL_LIBDIR}/appledger)

set_target_properties(appledger phone-process phone-supervisor PROPERTIES INSTALL_RPATH "$ORIGIN/../lib")
set_target_properties(platform platform-uikit AppLedger PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS appledger phone-process phone-supervisor RUNTIME DESTINATION ${private_dir}/bin COMPONENT phone)
install(TARGETS platform EXPORT appledger-platform LIBRARY DESTINATION ${private_dir}/lib COMPONENT phone)
install(TARGETS platform-uikit AppLedger LIBRARY DESTINATION ${private_dir}/lib COMPONENT phone)
install(DIRECTORY ${resource_bundle} DESTINATION ${private_dir}/lib COMPONENT phone)
install(CODE "
  set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
  file(MAKE_DIRECTORY \"\${folder}\")
  file(RELATIVE_PATH command \"/${CMAKE_INSTALL_BINDIR}\" \"/${private_dir}/bin/appledger\")
  file(REMOVE \"\${folder}/appledger\")
  file(CREATE_LINK \"\${command}\" \"\${folder}/appledger\" SYMBOLIC)" COMPONENT phone)

# The manual, as the command tells it.
set(manual_dir ${CMAKE_BINARY_DIR}/manual)
add_custom_command(OUTPUT ${manual_dir}/appledger.1.gz ${manual_dir}/appledger-policy.7.gz
  COMMAND ${CMAKE_COMMAND} -E make_directory ${manual_dir}
  COMMAND appledger manual command > ${manual_dir}/appledger.1
  COMMAND appledger manual policies > ${manual_dir}/appledger-policy.7
  COMMAND gzip -9nkf ${manual_dir}/appledger.1 ${manual_dir}/appledger-policy.7
  DEPENDS appledger VERBATIM
  COMMENT "Writing the manual")
add_custom_target(manual ALL DEPENDS ${manual_dir}/appledger.1.gz)
install(FILES ${manual_dir}/appledger.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT phone)
install(FILES ${manual_dir}/appledger-policy.7.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man7 COMPONENT phone)

set(completions ${CMAKE_SOURCE_DIR}/packaging/completions)
install(FILES ${completions}/appledger.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
  RENAME appledger COMPONENT phone)
install(FILES ${completions}/_appledger DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT phone)
install(FILES ${completions}/appledger.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
  COMPONENT phone)

# For who builds on the platform: its headers, and how a build finds it.
install(DIRECTORY platform DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/appledger COMPONENT developers
  FILES_MATCHING PATTERN "*.h")
target_include_directories(platform INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/appledger>)
target_compile_definitions(platform INTERFACE $<INSTALL_INTERFACE:PLATFORM_CHECKS_ENCODINGS=$<NOT:$<CONFIG:Release>>>)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/AppLedgerPlatform)
install(EXPORT appledger-platform NAMESPACE AppLedger:: FILE AppLedgerPlatformTargets.cmake DESTINATION ${package_dir}
  COMPONENT developers)
file(WRITE ${CMAKE_BINARY_DIR}/AppLedgerPlatformConfig.cmake
  "include(CMakeFindDependencyMacro)\nfind_dependency(Threads)\n"
  "include(\${CMAKE_CURRENT_LIST_DIR}/AppLedgerPlatformTargets.cmake)\n")
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/AppLedgerPlatformConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/AppLedgerPlatformConfig.cmake
  ${CMAKE_BINARY_DIR}/AppLedgerPlatformConfigVersion.cmake DESTINATION ${package_dir} COMPONENT developers)
# Wherever the tree is moved to.
file(RELATIVE_PATH prefix_from_package /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/appledger-platform.pc @ONLY CONTENT
"prefix=\${pcfiledir}/@prefix_from_package@
libdir=\${prefix}/@CMAKE_INSTALL_LIBDIR@/appledger/lib
includedir=\${prefix}/@CMAKE_INSTALL_INCLUDEDIR@/appledger

Name: appledger-platform
Description: The platform that AppLedger stands on
Version: @PROJECT_VERSION@
Libs: -L\${libdir} -lplatform -Wl,-rpath,\${libdir}
Cflags: -I\${includedir} -DPLATFORM_CHECKS_ENCODINGS=0 -pthread
")
install(FILES ${CMAKE_BINARY_DIR}/appledger-platform.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT developers)

# A package for this kind of computer: cpack --config build/release/CPackConfig.cmake
file(READ ${CMAKE_SOURCE_DIR}/LICENSE license)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/debian)
string(REPLACE "\n" "\n " license_text "${license}")
string(REGEX REPLACE "\n \n" "\n .\n" license_text "${license_text}")
string(REGEX REPLACE "\n \n" "\n .\n" license_text "${license_text}")
string(REGEX REPLACE "[ \n]+$" "" license_text "${license_text}")
file(WRITE ${CMAKE_BINARY_DIR}/debian/copyright
  "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n\nFiles: *\n"
  "Copyright: the authors of AppLedger\nLicense: Expat\n ${license_text}\n")
file(WRITE ${CMAKE_BINARY_DIR}/debian/changelog
  "appledger (${PROJECT_VERSION}) stable; urgency=medium\n\n  * The state of the sources.\n\n"
  " -- AppLedger <appledger@example.org>  Thu, 01 Jan 2026 00:00:00 +0000\n")
install(FILES ${CMAKE_BINARY_DIR}/debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/appledger COMPONENT phone)
install(CODE "
  set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/doc/appledger\")
  file(MAKE_DIRECTORY \"\${folder}\")
  execute_process(COMMAND gzip -9nc \"${CMAKE_BINARY_DIR}/debian/changelog\"
    OUTPUT_FILE \"\${folder}/changelog.gz\" COMMAND_ERROR_IS_FATAL ANY)" COMPONENT phone)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME appledger)
set(CPACK_PACKAGE_CONTACT "AppLedger <appledger@example.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "control, application by application, what a simulated phone does")
set(CPACK_PACKAGE_DESCRIPTION "Runs a phone of real processes in a directory, and reads, changes and explains\nwhat it does for each of its applications.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL phone)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_DEPENDS "dbus-daemon, fonts-inter, fonts-noto-color-emoji")
include(CPack)
