# Browsers, backups and maintenance.
add_library(corvane_maintenance_support STATIC pihole_files.cpp pihole_files.h saved_files.cpp saved_files.h)
target_link_libraries(corvane_maintenance_support PUBLIC corvane_flow_support)
foreach(subject applications browser browser_proof teleporter import feed update rollback web_port outdated quitting
               recovery way_back missing_container start_cut_off removal forgotten login_item maintenance_story)
  corvane_sim_test(${subject}_flows_test ARGS --keyring SOURCES ${subject}_test.cpp USES corvane_maintenance_support)
endforeach()
