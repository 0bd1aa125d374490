# kelvm_add_build(target kind directory vector_bytes flags): the library, SHARED or STATIC, compiled for one instruction
# set, in a directory of its own below the build tree, so that a program linked against the default build never finds
# another one by accident.
file(GLOB_RECURSE KELVM_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp)

function(kelvm_add_build target kind directory vector_bytes flags)
  add_library(${target} ${kind} ${KELVM_SOURCES})
  target_include_directories(
    ${target}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_compile_definitions(${target} PRIVATE KELVM_WANTED_VECTOR_BYTES=${vector_bytes})
  # These come after the flags of a parent project or a packager, and what decides on bits and on the processors that run
  # the library is said here in full.
  target_compile_options(
    ${target}
    PRIVATE ${flags}
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
            $<$<CXX_COMPILER_ID:Clang>:-ffp-exception-behavior=maytrap>
            # Interleave the vectors in flight before registers are given out: up to a third faster. Not across the branch
            # on special elements, which would meet a comparison and raise its flag.
            $<$<CXX_COMPILER_ID:GNU>:-fschedule-insns;-fsched-pressure;-fno-sched-spec>
            # The same bytes wherever the tree stands; a debugger wants the true paths.
            $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>
            $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=kelvm>)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:kelvm_warnings>)
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
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               LINK_DEPENDS ${PROJECT_SOURCE_DIR}/src/kelvm.map
               LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${directory}
               ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${directory})
endfunction()
