# Debian packages, one per install component:
#   libzrmanagehuawei1     the shared libraries                      (component runtime)
#   libzrmanagehuawei-dev  headers, CMake package, pkg-config file   (component development)
#   zrarray                the command-line tool                     (component tool)
# `cpack -G DEB` in the build folder makes them. Dependencies on Debian's libraries are found by
# dpkg-shlibdeps; the -dev package names the -dev packages that the CMake package and the
# pkg-config file look for.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zrmanagehuawei)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Drives Huawei storage arrays through their JSON-over-HTTPS management interface")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "zrmanagehuawei maintainers <maintainers@zrmanagehuawei.invalid>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tool)

set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Our own libraries, which the tool links, lie in the build tree while the packages are made.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}/platform)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzrmanagehuawei${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# A shlibs file and the ldconfig trigger, so that packages built against it depend on it rightly.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Shared libraries of zrmanagehuawei and its platform layer")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzrmanagehuawei-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libcurl4-openssl-dev | libcurl-dev, libssl-dev, libboost-dev (>= 1.74)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, CMake package and pkg-config file of zrmanagehuawei")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME zrarray)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION admin)
set(CPACK_COMPONENT_TOOL_DEPENDS runtime)
set(CPACK_COMPONENT_TOOL_DESCRIPTION "zrarray: drives a Huawei storage array from the shell, JSON on standard output")

include(CPack)
