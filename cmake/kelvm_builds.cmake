# kelvm_add_build(target directory flags): the library compiled for one instruction set, in a directory of its own below
# the build tree, so that a program linked against the default build never finds another one by accident.
file(GLOB_RECURSE KELVM_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp)

function(kelvm_add_build target directory flags)
  add_library(${target} SHARED ${KELVM_SOURCES})
  target_include_directories(
    ${target}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_compile_options(
    ${target}
    PRIVATE ${flags}
            -ffp-contract=off # the same bits in every build
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
  target_link_options(${target} PRIVATE -Wl,--version-script=${PROJECT_SOURCE_DIR}/src/kelvm.map -Wl,--no-undefined)
  set_target_properties(
    ${target}
    PROPERTIES OUTPUT_NAME kelvm
               SOVERSION ${PROJECT_VERSION_MAJOR}
               VERSION ${PROJECT_VERSION}
               LINKER_LANGUAGE C
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               LINK_DEPENDS ${PROJECT_SOURCE_DIR}/src/kelvm.map
               LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${directory})
endfunction()
