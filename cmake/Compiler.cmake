# Language level, warnings and sanitizers, the same for every target of ours.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

add_library(quorvel_options INTERFACE)
target_compile_options(quorvel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror
  $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
  # gcc 12 sees overlapping copies and uninitialised strings where it inlines much (its bugs 105651,
  # 105562). The dev preset inlines less, and watches for the real ones.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<OR:$<CONFIG:Release>,$<PLATFORM_ID:Windows>>>:-Wno-restrict$<SEMICOLON>-Wno-maybe-uninitialized>)
target_include_directories(quorvel_options INTERFACE "${CMAKE_SOURCE_DIR}")

if(QUORVEL_HARDEN)
  add_compile_options(-fstack-protector-strong -D_FORTIFY_SOURCE=2)
  add_link_options(-fstack-protector-strong)
  if(NOT WIN32)
    add_link_options(-Wl,-z,relro,-z,now)
  endif()
endif()
if(WIN32)
  # The same sources give the same bytes: no time of the link in the file.
  add_link_options(-Wl,--no-insert-timestamp)
endif()

if(QUORVEL_SANITIZE)
  add_compile_options(-fsanitize=${QUORVEL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUORVEL_SANITIZE})
endif()
if(QUORVEL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(QUORVEL_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
