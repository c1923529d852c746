# What a Windows program has besides its code: icon, version and manifest in its resources, no console window, and beside it
# the libraries and plugins that it loads.

# kestrel_windows_program(<target>)
function(kestrel_windows_program target)
  set(windows ${PROJECT_SOURCE_DIR}/packaging/windows)
  configure_file(${windows}/kestrel.rc.in ${PROJECT_BINARY_DIR}/generated/kestrel.rc @ONLY)
  target_sources(${target} PRIVATE ${PROJECT_BINARY_DIR}/generated/kestrel.rc)
  set_source_files_properties(${PROJECT_BINARY_DIR}/generated/kestrel.rc PROPERTIES
    OBJECT_DEPENDS "${windows}/kestrel.ico;${windows}/kestrel.manifest")
  set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
  if(MSVC)
    # The linker would add a manifest of its own; Qt's own tool gathers the libraries.
    target_link_options(${target} PRIVATE /MANIFEST:NO)
    get_target_property(qmake Qt6::qmake IMPORTED_LOCATION)
    get_filename_component(tools ${qmake} DIRECTORY)
    find_program(WINDEPLOYQT NAMES windeployqt windeployqt.debug.bat HINTS ${tools} REQUIRED)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${WINDEPLOYQT} --no-translations --no-opengl-sw $<TARGET_FILE:${target}> VERBATIM)
  else()
    kestrel_windows_runtime(${target} $<TARGET_FILE_DIR:${target}>)
  endif()
endfunction()

# kestrel_windows_runtime(<target> <folder>): puts the DLLs of the SDK that the station loads into <folder> after the build.
function(kestrel_windows_runtime target folder)
  # Qt's files lie in SDK/bin and SDK/plugins; its CMake files in SDK/lib/cmake/Qt6.
  get_filename_component(sdk ${Qt6_DIR}/../../.. ABSOLUTE)
  set(libraries Qt6Core Qt6Gui Qt6Network Qt6Widgets libgcc_s_seh-1 libstdc++-6 libwinpthread-1)
  list(TRANSFORM libraries PREPEND ${sdk}/bin/)
  list(TRANSFORM libraries APPEND .dll)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}/platforms ${folder}/styles
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${libraries} ${folder}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${sdk}/plugins/platforms/qwindows.dll ${folder}/platforms
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${sdk}/plugins/styles/qwindowsvistastyle.dll ${folder}/styles
    VERBATIM)
endfunction()
