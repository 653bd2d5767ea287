# Icons as pictures, and what a program carries on Windows.
if(NOT VORLANE_SVG OR WIN32)
  find_program(RSVG_CONVERT rsvg-convert REQUIRED) # Debian: librsvg2-bin
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(drawings ${PROJECT_SOURCE_DIR}/data/icons)
  set(pictures ${CMAKE_CURRENT_BINARY_DIR}/pictures)
  set(maker ${PROJECT_SOURCE_DIR}/packaging/windows/pictures.py)
  file(GLOB sources CONFIGURE_DEPENDS ${drawings}/*.svg)
  add_custom_command(OUTPUT ${pictures}/icons.cpp ${pictures}/vorlane.ico
    COMMAND ${Python3_EXECUTABLE} ${maker} ${RSVG_CONVERT} ${drawings} ${pictures}
    COMMAND Qt6::rcc --name icons ${pictures}/icons.qrc -o ${pictures}/icons.cpp
    DEPENDS ${sources} ${maker} VERBATIM)
  add_custom_target(vorlane_pictures DEPENDS ${pictures}/icons.cpp ${pictures}/vorlane.ico)
endif()

# vorlane_on_windows(PROGRAM DESCRIPTION): icon, version and manifest, and as much stack as elsewhere.
function(vorlane_on_windows program description)
  if(NOT WIN32)
    return()
  endif()
  set(icon ${pictures}/vorlane.ico)
  set(manifest ${PROJECT_SOURCE_DIR}/packaging/windows/vorlane.manifest)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${program}.rc @ONLY)
  target_sources(${program} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${program}.rc)
  set_source_files_properties(${program}.rc PROPERTIES OBJECT_DEPENDS "${icon};${manifest}")
  add_dependencies(${program} vorlane_pictures)
  target_link_options(${program} PRIVATE LINKER:--stack,8388608)
endfunction()
