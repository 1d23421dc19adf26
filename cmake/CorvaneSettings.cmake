# What every target of Corvane is compiled with, and the one way to declare a library of a folder.

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Network Qml Quick QuickControls2 Svg Widgets)
find_package(QCoro6 0.8 REQUIRED COMPONENTS Core Network)
find_package(Threads REQUIRED)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    ${CCACHE_PROGRAM})
endif()

option(CORVANE_WERROR "Treat warnings as errors" OFF)
set(CORVANE_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")

add_library(corvane_settings INTERFACE)
target_include_directories(corvane_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(corvane_settings INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
# -pthread everywhere, because some libraries ask for it and the compiled headers must match.
target_compile_options(corvane_settings INTERFACE -pthread -Wno-error=invalid-pch -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(APPLE)
  # QCoro's headers name std::exception_ptr and leave it to others to bring it; libc++ does not do so in C++23.
  target_compile_options(corvane_settings INTERFACE "SHELL:-include exception")
endif()
if(CORVANE_WERROR)
  target_compile_options(corvane_settings INTERFACE -Werror)
endif()
if(CORVANE_SANITIZE)
  add_compile_options(-fsanitize=${CORVANE_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${CORVANE_SANITIZE})
endif()
target_link_libraries(corvane_settings INTERFACE Qt6::Core QCoro6::Core Threads::Threads)

# The headers that nearly every file reads, compiled once.
file(WRITE ${CMAKE_BINARY_DIR}/common_headers.cpp "")
add_library(corvane_common_headers STATIC ${CMAKE_BINARY_DIR}/common_headers.cpp)
target_link_libraries(corvane_common_headers PUBLIC corvane_settings)
target_compile_options(corvane_common_headers PRIVATE -fPIC)
set_target_properties(corvane_common_headers PROPERTIES AUTOMOC OFF)
target_precompile_headers(corvane_common_headers PRIVATE
  <QByteArray> <QCoro/QCoroTask> <QHash> <QList> <QObject> <QPointer> <QProperty> <QSet> <QString> <QStringList> <QUrl>
  <algorithm> <chrono> <expected> <functional> <memory> <optional>)

# corvane_library(<folder> SOURCES ... USES ...): the static library of one folder and what it may use.
function(corvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(corvane_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(corvane_${name} PUBLIC corvane_settings ${ARG_USES})
  target_precompile_headers(corvane_${name} REUSE_FROM corvane_common_headers)
endfunction()
