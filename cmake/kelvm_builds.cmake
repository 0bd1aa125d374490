file(GLOB_RECURSE KELVM_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp)
list(FILTER KELVM_SOURCES EXCLUDE REGEX /src/registers/)

# Kernel files with tables that some processors read faster by gather instructions, others by loads (src/cpu/gathers.hpp).
# They are compiled both ways, and the loader chooses. That takes their compile time and their size again, so only files
# with functions that gain more than a few percent are here, by the instruction set.
set(KELVM_GATHERING_avx2
    exp/exp_32f exp/exp_64f exp/expm1_64f
    hyperbolic/inverse_hyperbolic hyperbolic/sinh_cosh_32f
    trig/atan trig/atan2)
set(KELVM_GATHERING_avx512
    complex/asin_acos complex/exp complex/log complex/pow complex/sinh_cosh complex/tanh_tan
    erf/erf_32f erf/erf_64f erf/erf_inverse_32f erf/erf_inverse_64f
    exp/exp_64f exp/log_64f exp/log1p_64f exp/pow_64f
    hyperbolic/inverse_hyperbolic
    trig/atan trig/atan2 trig/sin_cos_64f)
# What they share.
set(KELVM_GATHERING_COMMON complex/long_power complex/plane complex/power_element frame/status hyperbolic/factors
                           trig/reduction)

# kelvm_compile_options(target set): how kernels are compiled for the instruction set sse41, avx2 or avx512.
set(KELVM_FLAGS_sse41 -march=x86-64 -mtune=generic -msse4.1 -mno-sse4.2 -mno-avx)
set(KELVM_FLAGS_avx2 -march=x86-64-v3 -mtune=generic -mno-avx512f)
set(KELVM_FLAGS_avx512 -march=x86-64-v4 -mtune=generic)
set(KELVM_BYTES_sse41 16)
set(KELVM_BYTES_avx2 32)
set(KELVM_BYTES_avx512 64)

# clang. -ffp-exception-behavior=maytrap keeps flags honest, but leaves constant expressions to the hot loops and moves
# nothing. So the passes are told what they may do; maytrap is for versions that have other passes.
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  string(
    JOIN
    " "
    KELVM_CLANG_FLAGS
    # No operation in front of the branch that it stands behind, for which a select would do: it would raise its flags
    # for elements that go the other way.
    "-mllvm -phi-node-folding-threshold=0"
    "-mllvm -two-entry-phi-node-folding-threshold=0"
    "-mllvm -speculate-one-expensive-inst=false"
    # No lanes beside those that the source has.
    "-fno-vectorize -fno-slp-vectorize"
    # [[gnu::flatten]] goes one call deep here: formulas are inlined by their size, which no ordinary threshold allows.
    "-mllvm -inline-threshold=10000"
    # Interleave the vectors in flight, too, and keep to that order.
    "-mllvm -pre-RA-sched=list-ilp"
    "-mllvm -misched-topdown")
  include(CheckCXXSourceCompiles)
  set(CMAKE_REQUIRED_FLAGS ${KELVM_CLANG_FLAGS})
  check_cxx_source_compiles("int main() {}" KELVM_KNOWS_CLANG_PASSES)
  unset(CMAKE_REQUIRED_FLAGS)
  if(NOT KELVM_KNOWS_CLANG_PASSES)
    set(KELVM_CLANG_FLAGS -ffp-exception-behavior=maytrap)
  endif()
endif()

function(kelvm_compile_options target set)
  target_include_directories(
    ${target}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_compile_definitions(${target} PRIVATE KELVM_WANTED_VECTOR_BYTES=${KELVM_BYTES_${set}})
  # These come after the flags of a parent project or a packager, and what decides on bits and on the processors that run
  # the library is said here in full.
  target_compile_options(
    ${target}
    PRIVATE ${KELVM_FLAGS_${set}}
            -fno-fast-math
            -fno-finite-math-only
            -fno-associative-math
            -fno-reciprocal-math
            -fsigned-zeros
            $<$<CXX_COMPILER_ID:GNU>:-fno-unsafe-math-optimizations;-ftrapping-math>
            $<$<CXX_COMPILER_ID:Clang>:-fno-approx-func>
            -ffp-contract=off # the source says what is fused, the same for every compiler
            -fno-math-errno
            -fno-exceptions
            -fno-rtti
            # Interleave the vectors in flight before registers are given out: up to a third faster. Not across the branch
            # on special elements, which would meet a comparison and raise its flag.
            $<$<CXX_COMPILER_ID:GNU>:-fschedule-insns;-fsched-pressure;-fno-sched-spec>
            "$<$<CXX_COMPILER_ID:Clang>:SHELL:${KELVM_CLANG_FLAGS}>"
            # The same bytes wherever the tree stands; a debugger wants the true paths.
            $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>
            $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=kelvm>)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:kelvm_warnings>)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# kelvm_link(target kind set): the library in a directory of its own below the build tree, so that a program linked
# against the default build never finds another one by accident.
function(kelvm_link target kind set)
  # Linked as C: nothing of the C++ run-time library may be needed.
  if(kind STREQUAL SHARED)
    target_link_options(
      ${target}
      PRIVATE
      -fno-fast-math # else the start-up code of fast arithmetic comes in, which changes the control word at load
      -Wl,--version-script=${PROJECT_SOURCE_DIR}/src/kelvm.map
      -Wl,--no-undefined
      -Wl,--as-needed)
  endif()
  set_target_properties(
    ${target}
    PROPERTIES OUTPUT_NAME kelvm
               SOVERSION ${PROJECT_VERSION_MAJOR}
               VERSION ${PROJECT_VERSION}
               LINKER_LANGUAGE C
               LINK_DEPENDS ${PROJECT_SOURCE_DIR}/src/kelvm.map
               LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${set}
               ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${set})
endfunction()

# kelvm_add_build(target kind set): the library, SHARED or STATIC, for one instruction set.
# Kernel files that are compiled both ways make object libraries, target_by_loads and target_by_gathers.
function(kelvm_add_build target kind set)
  set(sources ${KELVM_SOURCES})
  list(TRANSFORM KELVM_GATHERING_${set} REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/src/\\1.cpp" OUTPUT_VARIABLE both)
  list(TRANSFORM KELVM_GATHERING_COMMON REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/src/\\1.cpp" OUTPUT_VARIABLE common)
  if(both)
    list(REMOVE_ITEM sources ${both})
    add_library(${target}_by_loads OBJECT EXCLUDE_FROM_ALL ${both})
    add_library(${target}_by_gathers OBJECT EXCLUDE_FROM_ALL ${both} ${common})
    target_compile_definitions(${target}_by_loads PRIVATE KELVM_BY_GATHERS=0)
    target_compile_definitions(${target}_by_gathers PRIVATE KELVM_BY_GATHERS=1)
    foreach(objects ${target}_by_loads ${target}_by_gathers)
      kelvm_compile_options(${objects} ${set})
      set_target_properties(${objects} PROPERTIES POSITION_INDEPENDENT_CODE ON)
      list(APPEND sources $<TARGET_OBJECTS:${objects}>)
    endforeach()
  endif()
  add_library(${target} ${kind} ${sources})
  kelvm_compile_options(${target} ${set})
  kelvm_link(${target} ${kind} ${set})
endfunction()
