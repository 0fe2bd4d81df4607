# What every target of the project is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(FIAR_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)

add_library(fiar_options INTERFACE)
target_include_directories(fiar_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(fiar_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# Optimised, this compiler takes the copies inside its own std::basic_string for overlapping ones.
target_compile_options(fiar_options INTERFACE $<$<CONFIG:Release>:-Wno-restrict>)

if(FIAR_SANITIZE)
  # For the whole build, so that the test framework is checked the same way.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(WIN32)
  target_compile_definitions(fiar_options INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX
                                                    _WIN32_WINNT=0x0A00 WINVER=0x0A00)
  # One file to copy: the compiler's own libraries are inside the program, and of them only what it uses.
  add_compile_options(-ffunction-sections -fdata-sections)
  add_link_options(-static -Wl,--gc-sections)
  # The same sources give the same bytes, in whichever folder they are built and whenever.
  add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=build)
  add_link_options(-Wl,--no-insert-timestamp)
  # What a fault could otherwise be used for.
  add_compile_options(-fstack-protector-strong $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  add_link_options(-fstack-protector-strong -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
endif()
