# The program folder build/<preset>/station: everything that lies beside the executable.

# kestrel_station_folder(<target> <folder>): a target "station" that fills <folder> for the program <target>. What the
# station or its user may have changed is put there only when it is missing; the theater, the demo tape and the pages of
# the guide are remade when what makes them changed.
function(kestrel_station_folder target folder)
  set(data ${PROJECT_SOURCE_DIR}/data)
  set(kept KESTREL.ini common.ini FriendlyNames.ini DefFreq.ini gradient.act)
  list(TRANSFORM kept PREPEND ${data}/)
  set(picture ${folder}/Theaters/SampleStrait.png)
  set(maker sample-theater)
  if(NOT TARGET sample-theater)
    set(maker ${KESTREL_SAMPLE_THEATER})
  endif()
  add_custom_command(OUTPUT ${picture}
    COMMAND ${maker} ${folder}/Theaters
    DEPENDS ${maker}
    COMMENT "Making the sample theater"
    VERBATIM)
  # The demo tape flies session-sim's world; where that cannot be built, only a recorder of another machine makes one.
  set(tape)
  set(recorder ${KESTREL_SAMPLE_TAPE})
  if(TARGET sample-tape)
    set(recorder sample-tape)
  endif()
  if(recorder)
    set(tape ${folder}/TAPES/Demo.tap)
    add_custom_command(OUTPUT ${tape}
      COMMAND ${recorder} ${tape}
      DEPENDS ${recorder}
      COMMENT "Recording the demo tape"
      VERBATIM)
  endif()
  # The guide and the pages that it leads to.
  set(guide ${folder}/docs/guide.html)
  set(pages guide.md settings.md falcon-data.md area-format.md tape-format.md)
  list(TRANSFORM pages PREPEND ${PROJECT_SOURCE_DIR}/docs/)
  set(writer guide-pages)
  if(NOT TARGET guide-pages)
    set(writer ${KESTREL_GUIDE_PAGES})
  endif()
  add_custom_command(OUTPUT ${guide}
    COMMAND ${writer} ${folder}/docs ${pages}
    DEPENDS ${writer} ${pages}
    COMMENT "Making the pages of the guide"
    VERBATIM)
  add_custom_target(station ALL
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${data}/update.txt ${folder}/update.txt
    COMMAND ${CMAKE_COMMAND} "-DFILES=${kept}" -DFOLDER=${folder} -P ${PROJECT_SOURCE_DIR}/cmake/CopyMissing.cmake
    DEPENDS ${picture} ${tape} ${guide}
    COMMENT "Filling the program folder"
    VERBATIM)
  add_dependencies(station ${target})
endfunction()
