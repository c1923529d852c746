# The program folder build/<preset>/station: everything that lies beside the executable.

# kestrel_station_folder(<target> <folder>): a target "station" that fills <folder> for the program <target>. What the
# station or its user may have changed is put there only when it is missing; the theater and the demo tape are remade
# when their makers changed.
function(kestrel_station_folder target folder)
  set(data ${PROJECT_SOURCE_DIR}/data)
  set(kept KESTREL.ini common.ini FriendlyNames.ini)
  list(TRANSFORM kept PREPEND ${data}/)
  set(picture ${folder}/Theaters/SampleStrait.png)
  add_custom_command(OUTPUT ${picture}
    COMMAND sample-theater ${folder}/Theaters
    DEPENDS sample-theater
    COMMENT "Making the sample theater"
    VERBATIM)
  set(tape ${folder}/TAPES/Demo.tap)
  add_custom_command(OUTPUT ${tape}
    COMMAND sample-tape ${tape}
    DEPENDS sample-tape
    COMMENT "Recording the demo tape"
    VERBATIM)
  add_custom_target(station ALL
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${data}/update.txt ${folder}/update.txt
    COMMAND ${CMAKE_COMMAND} "-DFILES=${kept}" -DFOLDER=${folder} -P ${PROJECT_SOURCE_DIR}/cmake/CopyMissing.cmake
    DEPENDS ${picture} ${tape}
    COMMENT "Filling the program folder"
    VERBATIM)
  add_dependencies(station ${target})
endfunction()
