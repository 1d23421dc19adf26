# The bundle around the program: its property list and its icon.
set(icon ${CMAKE_CURRENT_BINARY_DIR}/Corvane.icns)
add_custom_command(OUTPUT ${icon}
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/make-icon ${CMAKE_CURRENT_SOURCE_DIR}/icon.svg ${icon}
  DEPENDS make-icon icon.svg VERBATIM)
add_custom_target(corvane_icon DEPENDS ${icon})
add_dependencies(corvane corvane_icon)

target_sources(corvane PRIVATE ${icon})
set_source_files_properties(${icon} TARGET_DIRECTORY corvane
  PROPERTIES GENERATED TRUE MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(corvane PROPERTIES
  MACOSX_BUNDLE TRUE
  MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_SOURCE_DIR}/Info.plist.in
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION}
  MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION})
