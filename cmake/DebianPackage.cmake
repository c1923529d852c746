# The Debian package. "cpack -G DEB" in the build folder makes it of the targets "station" and "package-files", on a station
# folder that has not been used; scripts/package does all of it. The program folder becomes /usr/lib/kestrel, whose
# "defaults" lie in /usr/share/kestrel. Version, revision and date are those of packaging/debian/changelog.
set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(made ${PROJECT_BINARY_DIR}/debian)
find_program(DPKG_PARSECHANGELOG dpkg-parsechangelog REQUIRED)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${debian}/changelog ${debian}/description)
foreach(field Version Maintainer Timestamp)
  execute_process(COMMAND ${DPKG_PARSECHANGELOG} -l ${debian}/changelog -S ${field}
    OUTPUT_VARIABLE ${field} OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endforeach()
if(NOT Version MATCHES "^(.+)-([^-]+)$" OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "packaging/debian/changelog has the version ${Version}, the project ${PROJECT_VERSION}")
endif()
set(revision ${CMAKE_MATCH_2})
# The times of packed files too, so that the same sources give the same package.
set(ENV{SOURCE_DATE_EPOCH} ${Timestamp})
string(TIMESTAMP date "%Y-%m-%d" UTC)
file(WRITE ${made}/cpack.cmake "set(ENV{SOURCE_DATE_EPOCH} ${Timestamp})\n")

# What is told of the program to desktops and persons.
file(STRINGS ${PROJECT_SOURCE_DIR}/data/update.txt help REGEX "^DOCS=")
file(STRINGS ${PROJECT_SOURCE_DIR}/data/update.txt mail REGEX "^MAIL=")
string(REGEX REPLACE "^[A-Z]+=" "" help ${help})
string(REGEX REPLACE "^[A-Z]+=" "" mail ${mail})
string(REGEX REPLACE "/docs$" "" homepage ${help})
configure_file(${debian}/org.example.kestrel.metainfo.xml.in ${made}/org.example.kestrel.metainfo.xml @ONLY)
configure_file(${debian}/kestrel.1.in ${made}/kestrel.1 @ONLY)

# zipped(<file> <zipped file>): without name and time, which would differ from build to build.
set(files)
function(zipped file zipped)
  add_custom_command(OUTPUT ${made}/${zipped} COMMAND gzip -9nc ${file} > ${made}/${zipped} DEPENDS ${file} VERBATIM)
  set(files ${files} ${made}/${zipped} PARENT_SCOPE)
endfunction()
zipped(${made}/kestrel.1 kestrel.1.gz)
zipped(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog.gz)
zipped(${debian}/changelog changelog.Debian.gz)

set(icons)
foreach(side 16 22 24 32 48 64 128 256 512)
  list(APPEND icons ${made}/hicolor/${side}x${side}/apps/kestrel.png)
endforeach()
add_custom_command(OUTPUT ${icons} COMMAND program-icon ${icons} DEPENDS program-icon COMMENT "Painting the icons" VERBATIM)
add_custom_command(OUTPUT ${made}/kestrel
  COMMAND ${CMAKE_STRIP} --remove-section=.comment --remove-section=.note -o ${made}/kestrel $<TARGET_FILE:kestrel>
  DEPENDS kestrel VERBATIM)
add_custom_target(package-files DEPENDS ${files} ${icons} ${made}/kestrel)

install(PROGRAMS ${made}/kestrel DESTINATION lib/kestrel)
install(FILES ${PROJECT_SOURCE_DIR}/data/update.txt DESTINATION share/kestrel)
install(DIRECTORY ${PROJECT_BINARY_DIR}/station/ DESTINATION share/kestrel/defaults
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ PATTERN kestrel EXCLUDE PATTERN update.txt EXCLUDE)
# link(<where> <what it leads to>)
function(link where to)
  install(CODE "
    set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${where}\")
    get_filename_component(folder \"\${link}\" DIRECTORY)
    file(MAKE_DIRECTORY \"\${folder}\")
    file(CREATE_LINK ${to} \"\${link}\" SYMBOLIC)")
endfunction()
link(bin/kestrel ../lib/kestrel/kestrel)
link(lib/kestrel/defaults ../../share/kestrel/defaults)
link(lib/kestrel/update.txt ../../share/kestrel/update.txt)
install(FILES ${debian}/kestrel.desktop DESTINATION share/applications)
install(FILES ${made}/org.example.kestrel.metainfo.xml DESTINATION share/metainfo)
install(DIRECTORY ${made}/hicolor DESTINATION share/icons)
install(FILES ${made}/kestrel.1.gz DESTINATION share/man/man1)
install(FILES ${made}/changelog.gz ${made}/changelog.Debian.gz ${debian}/copyright DESTINATION share/doc/kestrel)
install(FILES ${debian}/lintian-overrides DESTINATION share/lintian/overrides RENAME kestrel)

file(READ ${debian}/description CPACK_PACKAGE_DESCRIPTION)
string(REGEX REPLACE "^An? " "" CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_GENERATOR DEB)
set(CPACK_PROJECT_CONFIG_FILE ${made}/cpack.cmake)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_CONTACT ${Maintainer})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${revision})
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${homepage})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The labels' font.
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-dejavu-core)
# Opens the addresses of the Help menu; windows where no X is, also within a Wayland desktop.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS xdg-utils)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
