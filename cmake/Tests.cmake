# How tests are registered. All of them are registered in the native build, whatever they run, so that one run of
# ctest gives one result. A test's label says what it needs, and `./test LABEL` runs the tests of a label:
#
#   native   nothing further: the unit tests, built for this machine with sanitizers
#   windows  Wine: the same unit tests, built for Windows
#   gui      Wine and a virtual display: FiveInARow.exe, used from outside, and the window used from inside
#   lint     clang-format, clang-tidy, cppcheck, shellcheck
#   fuzz     the fuzz targets, for a few seconds each
#   mail     Wine and a mail server
#   package  the finished .exe and the zip
#
# Only the native ones are registered by default; FIAR_ALL_TESTS adds the others.
option(FIAR_ALL_TESTS "Register the tests that need more than the compiler and GoogleTest, too" OFF)
option(FIAR_FUZZ "Build the fuzz targets (clang only)" OFF)
if(FIAR_FUZZ)
  # What the targets link is to tell them where their inputs lead.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Where the other presets build, for the tests that use their programs.
set(FIAR_WINDOWS_BUILD ${PROJECT_SOURCE_DIR}/build/windows)
set(FIAR_FUZZ_BUILD ${PROJECT_SOURCE_DIR}/build/fuzz)

# fiar_add_tool_test(NAME LABEL COMMAND...)
# A test that is not native, run from the source folder. Does nothing unless FIAR_ALL_TESTS is on.
function(fiar_add_tool_test name label)
  if(FIAR_ALL_TESTS AND NOT CMAKE_CROSSCOMPILING)
    add_test(NAME ${name} COMMAND ${ARGN} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT 1500 FAIL_REGULAR_EXPRESSION "] 0 tests")
    # One at a time: Wine's desktop belongs to the first program on it, and has no windows for the others if that one
    # had no display.
    if("${ARGN}" MATCHES "/under-wine;")
      set_tests_properties(${name} PROPERTIES RESOURCE_LOCK wine)
    endif()
  endif()
endfunction()

# fiar_add_wine_test(NAME LABEL COMMAND...)
# A test that runs COMMAND through tools/under-wine: a Windows program (.exe), or one that starts such with $WINE.
function(fiar_add_wine_test name label)
  fiar_add_tool_test(${name} ${label} ${PROJECT_SOURCE_DIR}/tools/under-wine ${ARGN})
endfunction()

# fiar_add_display_test(NAME COMMAND...)
# The same with the label gui, whose COMMAND also finds a virtual display in $DISPLAY.
function(fiar_add_display_test name)
  fiar_add_tool_test(${name} gui ${PROJECT_SOURCE_DIR}/tools/virtual-display ${PROJECT_SOURCE_DIR}/tools/under-wine
                     ${ARGN})
endfunction()

# fiar_add_fuzz_target(NAME LIBRARY SOURCE...)
# In the fuzz build: the target NAME, linked with LIBRARY. In the native build: a test that runs it for some seconds,
# from the seeds in the folder corpus/NAME beside it.
function(fiar_add_fuzz_target name library)
  if(FIAR_FUZZ)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE ${library})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    fiar_add_tool_test(fuzz.${name} fuzz ${PROJECT_SOURCE_DIR}/tools/fuzz-briefly ${FIAR_FUZZ_BUILD}/${folder}/${name}
                       ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
  endif()
endfunction()
