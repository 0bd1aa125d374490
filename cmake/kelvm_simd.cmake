# The libraries of functions of registers: libkelvm_simd and, of less accuracy, libkelvm_simd_fast. Each has the functions
# for all instruction sets, whatever the processor: the caller's code says which it wants. The kernels are those of the
# library, compiled once for both; the linker takes what each needs.
set(kelvm_simd_kernels ${KELVM_SOURCES})
list(FILTER kelvm_simd_kernels INCLUDE REGEX "/src/(erf|exp|hyperbolic|root|trig)/|/src/frame/status.cpp")

# In a function of one register constants are read once. g++ takes them from memory, as operands where the set allows, if it
# neither makes integers in general registers nor moves loads away from their use.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-mtune-ctrl=^inter_unit_moves_to_vec KELVM_HAS_TUNE_CTRL)
if(KELVM_HAS_TUNE_CTRL)
  set(KELVM_SIMD_FLAGS_avx2 -mtune-ctrl=^inter_unit_moves_to_vec)
  set(KELVM_SIMD_FLAGS_avx512 -mtune-ctrl=^inter_unit_moves_to_vec -fno-schedule-insns)
endif()

function(kelvm_add_simd_objects target set)
  add_library(${target} OBJECT EXCLUDE_FROM_ALL ${ARGN})
  kelvm_compile_options(${target} ${set})
  target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections ${KELVM_SIMD_FLAGS_${set}})
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()

function(kelvm_add_simd_library target) # further arguments are definitions
  foreach(set sse41 avx avx2 avx512)
    kelvm_add_simd_objects(${target}_names_${set} ${set} ${PROJECT_SOURCE_DIR}/src/registers/vector_abi.cpp)
    target_compile_definitions(${target}_names_${set} PRIVATE ${ARGN})
    list(APPEND objects $<TARGET_OBJECTS:${target}_names_${set}>)
  endforeach()
  kelvm_add_simd_objects(${target}_scalar sse41 ${PROJECT_SOURCE_DIR}/src/registers/scalar.cpp)
  target_compile_definitions(${target}_scalar PRIVATE ${ARGN})
  foreach(set sse41 avx2 avx512)
    list(APPEND objects $<TARGET_OBJECTS:kelvm_simd_kernels_${set}>)
  endforeach()

  add_library(${target} SHARED ${objects} $<TARGET_OBJECTS:${target}_scalar>)
  target_include_directories(
    ${target} INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_options(
    ${target}
    PRIVATE
    -fno-fast-math
    -Wl,--gc-sections
    -Wl,--version-script=${PROJECT_SOURCE_DIR}/src/registers/exports.map
    -Wl,--no-undefined
    -Wl,--as-needed)
  set_target_properties(
    ${target}
    PROPERTIES SOVERSION ${PROJECT_VERSION_MAJOR}
               VERSION ${PROJECT_VERSION}
               LINKER_LANGUAGE C
               LINK_DEPENDS ${PROJECT_SOURCE_DIR}/src/registers/exports.map
               LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/simd)
endfunction()

# Kernels of functions that are not of registers have constants without a use. Behind the flags that ask for warnings.
add_library(kelvm_unused_constants INTERFACE)
target_compile_options(kelvm_unused_constants INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-unused-const-variable;-Wno-unused-variable>)

foreach(set sse41 avx2 avx512)
  kelvm_add_simd_objects(kelvm_simd_kernels_${set} ${set} ${kelvm_simd_kernels})
  target_link_libraries(kelvm_simd_kernels_${set} PRIVATE kelvm_unused_constants)
  target_compile_definitions(kelvm_simd_kernels_${set} PRIVATE KELVM_IN_REGISTERS)
endforeach()
# The ABI has names for AVX without AVX2: no kernels, calls of those for SSE4.1.
set(KELVM_FLAGS_avx -march=x86-64 -mtune=generic -mavx -mno-avx2)
set(KELVM_BYTES_avx 32)

kelvm_add_simd_library(kelvm_simd)
kelvm_add_simd_library(kelvm_simd_fast KELVM_FAST)
foreach(name simd simd_fast)
  add_library(kelvm::${name} ALIAS kelvm_${name})
  set_target_properties(kelvm_${name} PROPERTIES EXPORT_NAME ${name})
  if(NOT KELVM_INSTALL)
    set_target_properties(kelvm_${name} PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()
endforeach()
