# What has to be said after the compilers were found.

enable_language(OBJCXX)

# /usr/include holds Linux's own headers; named as built in, it is left out wherever a package asks for it.
foreach(language C CXX OBJCXX)
  list(APPEND CMAKE_${language}_IMPLICIT_INCLUDE_DIRECTORIES /usr/include)
  set(CMAKE_${language}_LINK_EXECUTABLE
    "${CMAKE_CURRENT_LIST_DIR}/link --headers ${CORVANE_MAC_HEADERS} -o <TARGET> <OBJECTS> <LINK_LIBRARIES>")
endforeach()

# Qt asks for OpenGL, which is a framework on a Mac.
if(NOT TARGET WrapOpenGL::WrapOpenGL)
  add_library(WrapOpenGL::WrapOpenGL INTERFACE IMPORTED GLOBAL)
endif()
