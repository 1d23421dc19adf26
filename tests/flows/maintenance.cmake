# Browsers, backups and maintenance.
add_library(corvane_saved_files STATIC saved_files.cpp saved_files.h)
target_link_libraries(corvane_saved_files PUBLIC corvane_flow_support)
foreach(subject applications browser teleporter update rollback feed web_port removal login_item)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${subject}_test.cpp)
    corvane_sim_test(${subject}_flows_test ARGS --keyring SOURCES ${subject}_test.cpp USES corvane_saved_files)
  endif()
endforeach()
