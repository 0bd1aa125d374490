# SPDX-License-Identifier: MIT
# kelvm::fortran: the module kelvm, compiled with the project that uses it (which enables Fortran), and the library.
if(NOT TARGET kelvm_fortran)
  if(NOT KELVM_FORTRAN_SOURCE)
    get_target_property(KELVM_FORTRAN_SOURCE kelvm::kelvm INTERFACE_INCLUDE_DIRECTORIES)
    set(KELVM_FORTRAN_SOURCE ${KELVM_FORTRAN_SOURCE}/kelvm/kelvm.f90)
  endif()
  add_library(kelvm_fortran STATIC EXCLUDE_FROM_ALL ${KELVM_FORTRAN_SOURCE})
  set_target_properties(kelvm_fortran PROPERTIES Fortran_MODULE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/kelvm_fortran)
  target_include_directories(kelvm_fortran INTERFACE ${CMAKE_CURRENT_BINARY_DIR}/kelvm_fortran)
  target_link_libraries(kelvm_fortran PUBLIC kelvm::kelvm)
  add_library(kelvm::fortran ALIAS kelvm_fortran)
endif()
