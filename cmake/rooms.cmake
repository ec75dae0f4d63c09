# One library a room: plexoras_room(NAME SOURCES... LINKS rooms and libraries...).
#
# A room sees only the headers of the rooms it links: each exports its own folder under its own name.
set(PLEXORAS_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Wrong at -O3: the first of "text" + std::string, the second of std::optional<std::string>.
  list(APPEND PLEXORAS_WARNINGS -Wno-restrict -Wno-maybe-uninitialized)
endif()
if(PLEXORAS_WARNINGS_AS_ERRORS)
  list(APPEND PLEXORAS_WARNINGS -Werror)
endif()

function(plexoras_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  set(target plexoras_${name})
  # The room's folder is reached through a link in the build tree, so that "host/form.h" is found by
  # those who link host, and by nobody else.
  set(include_root ${CMAKE_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${include_root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_root}/${name} SYMBOLIC)

  add_library(${target} STATIC ${ROOM_SOURCES})
  add_library(PlexorasDTC::${name} ALIAS ${target})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${include_root}>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/plexoras>)
  target_compile_options(${target} PRIVATE ${PLEXORAS_WARNINGS})
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_link_libraries(${target} PUBLIC ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
endfunction()
