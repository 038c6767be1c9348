# Debian packages, one per install component:
#   libzrmanagehuawei1     the shared library, and the platform libraries in a private folder (component runtime)
#   libzrmanagehuawei-dev  headers, CMake package, pkg-config file                              (component development)
#   zrarray                the command-line tool and its manual page                             (component tool)
# `cpack -G DEB` in the build folder makes them, stripped, with the debug information in
# -dbgsym .ddeb packages beside them. Dependencies on Debian's libraries are found by
# dpkg-shlibdeps; the -dev package names the -dev packages that the CMake package and the
# pkg-config file look for.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zrmanagehuawei)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# The Debian revision: packages of 1.0.0 are 1.0.0-1, and their changelog is changelog.Debian.gz.
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(ZR_DEBIAN_VERSION ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(ZR_DEBIAN_MAINTAINER "zrmanagehuawei maintainers <maintainers@zrmanagehuawei.invalid>")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${ZR_DEBIAN_MAINTAINER})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tool)

set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Our own libraries, which the tool links, lie in the build tree while the packages are made.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}/platform)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
# A shlibs file in every package that holds shared libraries (only the runtime one does), so that
# a package built against the library depends on this version or a later one.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# CPack splits the debug information off into <package>-dbgsym_<version>_<arch>.ddeb and strips
# the binaries it ships.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzrmanagehuawei${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# dpkg runs ldconfig by this trigger, as Debian wants. CPack still calls it from its postinst and
# postrm too (lintian warns maintscript-calls-ldconfig; harmless, and CPack has no switch for it).
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/packaging/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "library that drives Huawei storage arrays
zrmanagehuawei gives a backup system control of Huawei storage arrays through
their JSON-over-HTTPS management interface: file-system snapshots and change
lists, NAS shares, LUN snapshots, host mapping, LUNs and clones.
.
This package holds the shared library, and the platform libraries it loads
(libzrlibcurl, libZrLib, libXoUtils) in a folder of its own.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzrmanagehuawei-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libcurl4-openssl-dev | libcurl-dev, libssl-dev, libboost-dev (>= 1.74)")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "development files of the Huawei storage array library
zrmanagehuawei gives a backup system control of Huawei storage arrays through
their JSON-over-HTTPS management interface.
.
This package holds the headers, the CMake package zrmanagehuawei (target
zrmanagehuawei::zrmanagehuawei) and the pkg-config file zrmanagehuawei.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME zrarray)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION admin)
set(CPACK_COMPONENT_TOOL_DEPENDS runtime)
set(CPACK_DEBIAN_TOOL_DESCRIPTION "drive a Huawei storage array from the shell
zrarray runs one operation of the zrmanagehuawei library per call against a
Huawei storage array, or against the array simulator it carries, and prints
the answer as JSON on standard output.")

# Each package's /usr/share/doc/<package>: the copyright file and the changelog, gzip'd as
# Debian's tools do (-9n: best compression, no name or time stamp, so the packages are reproducible).
function(zr_gzip source target)
  execute_process(COMMAND gzip -9n -c ${source} OUTPUT_FILE ${target} RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "gzip ${source}: ${failed}")
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
endfunction()

set(ZR_PACKAGING_OUT ${CMAKE_CURRENT_BINARY_DIR}/packaging)
file(MAKE_DIRECTORY ${ZR_PACKAGING_OUT})
configure_file(packaging/changelog.in ${ZR_PACKAGING_OUT}/changelog @ONLY)
zr_gzip(${ZR_PACKAGING_OUT}/changelog ${ZR_PACKAGING_OUT}/changelog.Debian.gz)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  install(FILES packaging/copyright ${ZR_PACKAGING_OUT}/changelog.Debian.gz
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME} COMPONENT ${component})
endforeach()
if(TARGET zrarray)
  configure_file(packaging/zrarray.1 ${ZR_PACKAGING_OUT}/zrarray.1 @ONLY)
  zr_gzip(${ZR_PACKAGING_OUT}/zrarray.1 ${ZR_PACKAGING_OUT}/zrarray.1.gz)
  install(FILES ${ZR_PACKAGING_OUT}/zrarray.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
endif()

include(CPack)
