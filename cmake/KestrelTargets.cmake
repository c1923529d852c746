# The flags for all targets stand here once: everything links kestrel_flags.
add_library(kestrel_flags INTERFACE)
target_compile_features(kestrel_flags INTERFACE cxx_std_20)
target_include_directories(kestrel_flags INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_BINARY_DIR}/generated)
if(MSVC)
  # Sources and texts are UTF-8; the standard's rules rather than the compiler's older ones.
  target_compile_options(kestrel_flags INTERFACE /W4 /utf-8 /permissive- /Zc:__cplusplus)
  target_compile_definitions(kestrel_flags INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(kestrel_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wno-sign-conversion)
endif()
if(KESTREL_UNITY)
  # Names of one file are not those of the next, and of a dozen files GCC 12 sees members without a value that have one; the
  # builds that compile each by itself look for both.
  target_compile_options(kestrel_flags INTERFACE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
# GCC 12 sees overlaps in std::string that are not there (its bug 105651).
target_compile_options(kestrel_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# Bounds of the standard containers are checked in every build: the server is a stranger.
target_compile_definitions(kestrel_flags INTERFACE _GLIBCXX_ASSERTIONS
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS QT_NO_FOREACH
  QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# Of windows.h the macros min and max are not wanted.
target_compile_definitions(kestrel_flags INTERFACE $<$<PLATFORM_ID:Windows>:NOMINMAX>)
if(KESTREL_WERROR)
  target_compile_options(kestrel_flags INTERFACE $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
if(KESTREL_SANITIZE)
  target_compile_options(kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
if(KESTREL_FUZZ)
  # The rooms tell the fuzzer which ways its input took.
  target_compile_options(kestrel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

foreach(header version.h project_paths.h)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${header}.in ${PROJECT_BINARY_DIR}/generated/${header} @ONLY)
endforeach()

# Headers that are parsed once for many targets. kestrel_precompiled(<list> <what it links>...) parses cmake/precompiled/<list>.h
# for the targets that kestrel_precompile(<target> <list>) names; all must be compiled alike. The rooms without windows gain little
# and do without, so that an include that is missing there shows.
function(kestrel_precompiled list)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/${list}.cpp CONTENT "")
  add_library(kestrel_precompiled_${list} OBJECT ${PROJECT_BINARY_DIR}/generated/${list}.cpp)
  target_link_libraries(kestrel_precompiled_${list} PRIVATE ${ARGN})
  target_precompile_headers(kestrel_precompiled_${list} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/precompiled/${list}.h)
endfunction()
function(kestrel_precompile target list)
  target_precompile_headers(${target} REUSE_FROM kestrel_precompiled_${list})
  # GCC 12 sees overflows in std::string that are not there (its bug 105329) when that is precompiled.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow;-Wno-array-bounds>)
endfunction()

# A room: a static library of all sources in src/<name>; of its folders windows/ and linux/ only the one that is built for.
# kestrel_room(<name> <what it links>...)
function(kestrel_room name)
  set(other windows)
  if(WIN32)
    set(other linux)
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  file(GLOB_RECURSE foreign CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/${other}/*.cpp)
  list(REMOVE_ITEM sources ${foreign})
  add_library(kestrel_${name} STATIC ${sources})
  set_target_properties(kestrel_${name} PROPERTIES UNITY_BUILD ${KESTREL_UNITY} UNITY_BUILD_BATCH_SIZE 12)
  target_link_libraries(kestrel_${name} PUBLIC kestrel_flags ${ARGN})
endfunction()
