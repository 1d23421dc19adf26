# Compiles for arm64 macOS 13 on Debian: its clang and lld, its Qt and QCoro, the system headers that scripts/mac-check
# fetched, and the framework declarations in frameworks/.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22.0.0)
set(CMAKE_SYSTEM_PROCESSOR arm64)

set(CORVANE_MAC_HEADERS "$ENV{CORVANE_MAC_HEADERS}" CACHE PATH "The macOS system headers and libc++")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CORVANE_MAC_HEADERS)

foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER /usr/bin/clang++-19)
  set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos13.0)
endforeach()
set(CMAKE_C_COMPILER /usr/bin/clang-19)
set(CMAKE_AR /usr/bin/llvm-ar-19 CACHE FILEPATH "")
set(CMAKE_RANLIB /usr/bin/llvm-ranlib-19 CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL /usr/bin/llvm-install-name-tool-19 CACHE FILEPATH "")
set(CMAKE_OSX_SYSROOT "" CACHE STRING "" FORCE)
set(CMAKE_OSX_ARCHITECTURES "" CACHE STRING "" FORCE)
set(CMAKE_OSX_DEPLOYMENT_TARGET "" CACHE STRING "" FORCE)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

execute_process(COMMAND /usr/bin/clang-19 -print-resource-dir
  OUTPUT_VARIABLE resources OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(system "-nostdinc -isystem ${resources}/include -isystem ${CORVANE_MAC_HEADERS}/include")
string(APPEND system " -iframework ${CMAKE_CURRENT_LIST_DIR}/frameworks")
string(CONCAT library "-nostdinc++ -isystem ${CORVANE_MAC_HEADERS}/libcxx/include"
  " -isystem ${CORVANE_MAC_HEADERS}/libcxxabi/include -D_LIBCPP_ABI_VERSION=1 -D_LIBCPP_ABI_NAMESPACE=__1"
  " -D_LIBCPP_DISABLE_VISIBILITY_ANNOTATIONS -D_LIBCPP_PSTL_CPU_BACKEND_SERIAL")
set(CMAKE_C_FLAGS_INIT "${system}")
set(CMAKE_CXX_FLAGS_INIT "${library} ${system}")
set(CMAKE_OBJCXX_FLAGS_INIT "${library} ${system}")

# Debian's Qt and QCoro serve as the Mac's: the declarations are the same.
set(CMAKE_LIBRARY_ARCHITECTURE ${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu)
set(CMAKE_PREFIX_PATH /usr)
set(QT_HOST_PATH /usr)

get_property(probing GLOBAL PROPERTY IN_TRY_COMPILE)
if(NOT probing)
  set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/project.cmake)
endif()
