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
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

option(CORVANE_WERROR "Treat warnings as errors" OFF)
set(CORVANE_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")

add_library(corvane_settings INTERFACE)
target_include_directories(corvane_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(corvane_settings INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
target_compile_options(corvane_settings INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(CORVANE_WERROR)
  target_compile_options(corvane_settings INTERFACE -Werror)
endif()
if(CORVANE_SANITIZE)
  add_compile_options(-fsanitize=${CORVANE_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${CORVANE_SANITIZE})
endif()
target_link_libraries(corvane_settings INTERFACE Qt6::Core QCoro6::Core Threads::Threads)

# corvane_library(<folder> SOURCES ... USES ...): the static library of one folder and what it may use.
function(corvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(corvane_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(corvane_${name} PUBLIC corvane_settings ${ARG_USES})
endfunction()
