# Cross build for 64-bit Windows with Debian's posix-threads mingw-w64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(TOOLCHAIN_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER   ${TOOLCHAIN_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TOOLCHAIN_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER  ${TOOLCHAIN_PREFIX}-windres)
set(CMAKE_AR           /usr/bin/${TOOLCHAIN_PREFIX}-ar     CACHE FILEPATH "")
set(CMAKE_RANLIB       /usr/bin/${TOOLCHAIN_PREFIX}-ranlib CACHE FILEPATH "")

# The prefix that tools/win-deps.sh fills: include/ lib/ share/.
if(NOT WIN_DEPS AND DEFINED ENV{WIN_DEPS})
  set(WIN_DEPS "$ENV{WIN_DEPS}")
endif()
if(NOT WIN_DEPS)
  get_filename_component(WIN_DEPS "${CMAKE_CURRENT_LIST_DIR}/../build/win-deps" ABSOLUTE)
endif()
set(WIN_DEPS "${WIN_DEPS}" CACHE PATH "prefix of the Windows dependencies")
# try_compile runs this file again in a sub-project: hand the variable on.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES WIN_DEPS)

set(CMAKE_FIND_ROOT_PATH "${WIN_DEPS}" /usr/${TOOLCHAIN_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_PREFIX_PATH "${WIN_DEPS}")
# pkg-config must never see the build machine's .pc files.
set(ENV{PKG_CONFIG_LIBDIR} "${WIN_DEPS}/lib/pkgconfig")
set(ENV{PKG_CONFIG_PATH} "")

# One file to ship: the compiler's run-time libraries inside the program.
set(CMAKE_EXE_LINKER_FLAGS_INIT    "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# ctest runs the tests through this.
if(NOT CMAKE_CROSSCOMPILING_EMULATOR)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run.sh")
endif()
