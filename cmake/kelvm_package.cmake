# cpack: Debian packages (library, development files, program, Python). scripts/deb makes and checks them; the build tree
# should be configured with the prefix /usr (preset "package").
set(CPACK_PACKAGE_VENDOR "kelvm developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "kelvm developers <kelvm@localhost>" CACHE STRING "Maintainer of the packages")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library development)
if(KELVM_BUILD_APPLY)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()
if(KELVM_BUILD_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/sse41)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/kelvm_debian.cmake)

set(about "kelvm computes mathematical functions over arrays of floats, doubles and
complex numbers with SIMD instructions, in up to three accuracies. Results
of an element depend on its value alone.
.")
set(library libkelvm${PROJECT_VERSION_MAJOR})
set(control ${PROJECT_BINARY_DIR}/debian)
file(WRITE ${control}/shlibs "")
foreach(name libkelvm libkelvm_simd libkelvm_simd_fast)
  file(APPEND ${control}/shlibs "${name} ${PROJECT_VERSION_MAJOR} ${library} (>= ${PROJECT_VERSION})\n")
endforeach()
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "vector math library
${about}
This package has the shared library, built for SSE4.1, AVX2 and AVX-512,
and the libraries of functions of registers, which compilers call from
vectorised loops.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkelvm-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "vector math library (development files)
${about}
This package has the headers, the Fortran module, manual pages and files
for CMake and pkg-config.")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME kelvm-apply)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION math)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library} (>= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "mathematical functions over the numbers of a file
kelvm-apply applies functions of the library kelvm to text, raw bytes and
NumPy arrays of any size, and measures their error.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-kelvm)
file(WRITE ${control}/postinst "#!/bin/sh\nset -e\npy3compile -p python3-kelvm\n")
file(WRITE ${control}/prerm "#!/bin/sh\nset -e\npy3clean -p python3-kelvm\n") # what Python has compiled
file(CHMOD ${control}/postinst ${control}/prerm PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
     WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${control}/postinst ${control}/prerm)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
# The extension is for this Python and for NumPy's binary interface, which Debian numbers.
execute_process(COMMAND sh -c "/usr/bin/python3 -c 'import sys; print(*sys.version_info[:2])'; dpkg-query -W -f '\${Provides}' python3-numpy"
                OUTPUT_VARIABLE found ERROR_QUIET)
if(KELVM_BUILD_PYTHON AND found MATCHES "^([0-9]+) ([0-9]+)\n.*(python3-numpy-abi[0-9]+)")
  math(EXPR next "${CMAKE_MATCH_2} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
      "${library} (>= ${PROJECT_VERSION}), python3 (>= ${CMAKE_MATCH_1}.${CMAKE_MATCH_2}), python3 (<< ${CMAKE_MATCH_1}.${next}), python3-numpy (>= 1:1.24), ${CMAKE_MATCH_3}"
  )
endif()
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "vector math library (NumPy functions)
${about}
This package has NumPy universal functions for Python 3.")

include(CPack)
