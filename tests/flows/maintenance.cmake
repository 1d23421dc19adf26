# Browsers, backups and maintenance.
foreach(subject applications browser teleporter update feed web_port removal login_item)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${subject}_test.cpp)
  corvane_sim_test(${subject}_flows_test ARGS --keyring SOURCES ${subject}_test.cpp USES corvane_flow_support)
  endif()
endforeach()
