# cmake --install: the default build in the library directory, the wide ones in the sub-directories where the dynamic
# loader looks first on a processor that has the set (glibc 2.33 and later); headers, CMake package, pkg-config file.
# The tree may be moved after it is installed.
include(CMakePackageConfigHelpers)

set(KELVM_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/kelvm)

install(
  TARGETS kelvm
  EXPORT kelvmTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(BUILD_SHARED_LIBS)
  install(
    TARGETS kelvm_simd kelvm_simd_fast
    EXPORT kelvmTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development)
  foreach(level v3 v4)
    install(TARGETS kelvm_${level} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/glibc-hwcaps/x86-64-${level}
                                           COMPONENT library NAMELINK_SKIP)
  endforeach()
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/kelvm DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(
  EXPORT kelvmTargets
  NAMESPACE kelvm::
  DESTINATION ${KELVM_CMAKE_DIR})
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/kelvmConfig.cmake.in ${PROJECT_BINARY_DIR}/kelvmConfig.cmake
  INSTALL_DESTINATION ${KELVM_CMAKE_DIR}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kelvmConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kelvmConfig.cmake ${PROJECT_BINARY_DIR}/kelvmConfigVersion.cmake
        DESTINATION ${KELVM_CMAKE_DIR})

# The prefix as seen from the directory of the pkg-config file.
file(RELATIVE_PATH KELVM_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH KELVM_PC_LIBDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH KELVM_PC_INCLUDEDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(KELVM_PC_LIBRARIES kelvm)
if(BUILD_SHARED_LIBS)
  list(APPEND KELVM_PC_LIBRARIES kelvm_simd kelvm_simd_fast)
endif()
foreach(KELVM_PC_LIBRARY IN LISTS KELVM_PC_LIBRARIES)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/kelvm.pc.in ${PROJECT_BINARY_DIR}/${KELVM_PC_LIBRARY}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${KELVM_PC_LIBRARY}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
