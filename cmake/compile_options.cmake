# SPDX-License-Identifier: MIT
# Warnings, hardening and sanitizers, for every target of the project.

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(CRADLE_WERROR)
  add_compile_options(-Werror)
endif()

# Assertions guard against programming errors in every build.
add_compile_options(-UNDEBUG)

# What the program does not use of a static library stays out of it, and a shared one that it does
# not use is not loaded.
add_compile_options(-ffunction-sections -fdata-sections)
add_link_options(-Wl,--gc-sections -Wl,--as-needed)

# The same sources give the same bytes wherever they lie. A packager's mapping stays; a debugger and
# the counts of coverage need the real places.
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT CMAKE_CXX_FLAGS MATCHES "-prefix-map=")
  add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

if(CRADLE_COVERAGE)
  # The compiler's own branches are no concern of a test: whether another thread is just making the
  # same static variable. Processes that end without exit handlers call __gcov_dump.
  add_compile_options(--coverage -O0 -g0 -fprofile-abs-path
                      $<$<COMPILE_LANGUAGE:CXX>:-fno-threadsafe-statics>)
  add_link_options(--coverage -Wl,--undefined=__gcov_dump)
endif()

if(CRADLE_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(CRADLE_SANITIZE)
  # Reports need line numbers and nothing else of what a debugger wants. To check the type of an
  # object would take system calls, other ones in every run.
  add_compile_options(-fsanitize=address,undefined,float-divide-by-zero,float-cast-overflow
                      -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=address,undefined)
else()
  add_compile_options(-fstack-protector-strong)
  add_link_options(-Wl,-z,relro -Wl,-z,now)
  # A packager's level stays; a distribution's compiler may have another of its own.
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  endif()
endif()
