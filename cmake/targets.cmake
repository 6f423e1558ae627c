# What every target of the project shares: warnings, sanitizers, and the two kinds of library. A logic
# library never links Qt, so a Qt include in it does not compile; a `_ui` library does.

add_library(mw_options INTERFACE)
target_include_directories(mw_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(mw_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror
                                            -Wnon-virtual-dtor -Woverloaded-virtual)
if(MAPWRIGHT_SANITIZE)
  # The sizes of objects are left to the address sanitizer, which knows them at run time.
  target_compile_options(mw_options INTERFACE -fsanitize=address,undefined -fno-sanitize=object-size
                                              -fno-sanitize-recover=all
                                              -fno-omit-frame-pointer)
  target_link_options(mw_options INTERFACE -fsanitize=address,undefined)
endif()
if(CMAKE_UNITY_BUILD)
  # Sources that are read together see each other's names.
  target_compile_options(mw_options INTERFACE -Wno-shadow)
endif()
if(MAPWRIGHT_FUZZ)
  # Without a call for every comparison, which makes the text readers several times slower; the corpora
  # and dictionaries hold the words and marks that these calls would find.
  target_compile_options(mw_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined
                                              -fno-sanitize-coverage=trace-cmp
                                              -fno-sanitize-recover=all)
  target_link_options(mw_options INTERFACE -fsanitize=address,undefined)
endif()

# mw_precompile(name kind HEADERS...): the headers of the standard library that most files include, and
# these, precompiled once for all targets of the kind.
function(mw_precompile name kind)
  if(NOT MAPWRIGHT_PRECOMPILE)
    return()
  endif()
  target_compile_options(${name} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  get_property(first GLOBAL PROPERTY mw_precompiled_${kind})
  if(first)
    target_precompile_headers(${name} REUSE_FROM ${first})
    return()
  endif()
  set_property(GLOBAL PROPERTY mw_precompiled_${kind} ${name})
  target_precompile_headers(${name} PRIVATE <algorithm> <array> <cstdint> <filesystem> <fstream> <functional>
                                            <map> <memory> <optional> <span> <string> <string_view>
                                            <vector> ${ARGN})
endfunction()

# What needs the operating system itself stands in folders of this name.
if(WIN32)
  set(MAPWRIGHT_SYSTEM windows)
else()
  set(MAPWRIGHT_SYSTEM posix)
endif()

# mw_logic(name DEPENDS...): the sources of this folder and of its folder for this system (not of other
# subfolders) as a library without Qt.
function(mw_logic name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp
                                      ${CMAKE_CURRENT_SOURCE_DIR}/${MAPWRIGHT_SYSTEM}/*.cpp)
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC mw_options ${ARGN})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE mw_options ${ARGN})
  endif()
endfunction()

# CMake looks for forms and meta objects again when a file that it knows changes, not when one is added.
function(mw_rescan_added_files name)
  if(NOT "${ARGN}" STREQUAL "${${name}_scanned}")
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/timestamp)
    set(${name}_scanned "${ARGN}" CACHE INTERNAL "")
  endif()
endfunction()

# mw_ui(name DEPENDS...): the sources of the folder's ui/ as a library of Qt widgets.
function(mw_ui name)
  if(NOT MAPWRIGHT_QT)
    return()
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/ui/*.cpp
                                      ${CMAKE_CURRENT_SOURCE_DIR}/ui/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  if(sources)
    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON
                                             AUTOUIC_SEARCH_PATHS ${CMAKE_SOURCE_DIR}/resources)
    mw_rescan_added_files(${name} ${sources})
    # The logic's names may be words that Qt would otherwise make its own, such as "slots".
    target_compile_definitions(${name} PUBLIC QT_NO_KEYWORDS)
    target_link_libraries(${name} PUBLIC mw_options ${ARGN} Qt6::Widgets)
    mw_precompile(${name} widgets <QtWidgets/QtWidgets>)
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE mw_options ${ARGN} Qt6::Widgets)
  endif()
endfunction()
