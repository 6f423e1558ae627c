# What is different where the program is made for Windows.

# Windows 10 and later, and none of its headers' short names.
add_compile_definitions(_WIN32_WINNT=0x0A00 NTDDI_VERSION=0x0A000006 UNICODE NOMINMAX
                        WIN32_LEAN_AND_MEAN)

# Bytes of paths are UTF-8 (see there). printf is MinGW's own, which knows all of C99; its attribute for
# functions like it does not, and the same texts are checked on Linux.
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:SHELL:-include ${CMAKE_SOURCE_DIR}/platform/windows/utf8_paths.h>"
                    "$<$<COMPILE_LANGUAGE:CXX,C>:-Wno-format>" "$<$<COMPILE_LANGUAGE:CXX,C>:-Wno-format-extra-args>")

# Of libraries that are headers only, those of this machine will do.
set(headers ${CMAKE_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${headers})
foreach(name stb CLI nlohmann)
  file(CREATE_LINK /usr/include/${name} ${headers}/${name} SYMBOLIC)
endforeach()
file(CREATE_LINK ${LZO_INCLUDE}/lzo ${headers}/lzo SYMBOLIC)
add_library(mw_headers INTERFACE)
target_include_directories(mw_headers SYSTEM INTERFACE ${headers})
include_directories(SYSTEM ${headers})
add_library(CLI11::CLI11 ALIAS mw_headers)
add_library(nlohmann_json::nlohmann_json ALIAS mw_headers)

# mw_windows_program(name "DESCRIPTION" [ICON]): gives a program its version, its manifest and, of what is painted
# for Windows, its icon.
enable_language(RC)
function(mw_windows_program name description)
  set(packaging ${CMAKE_SOURCE_DIR}/packaging/windows)
  set(MAPWRIGHT_NAME ${name})
  set(MAPWRIGHT_DESCRIPTION ${description})
  set(MAPWRIGHT_MANIFEST ${packaging}/program.manifest)
  set(MAPWRIGHT_ICON "")
  if("ICON" IN_LIST ARGN)
    set(MAPWRIGHT_ICON "1 ICON \"${MAPWRIGHT_PAINTED}/mapwright.ico\"")
  endif()
  configure_file(${packaging}/program.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc @ONLY)
  target_sources(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
endfunction()

if(MAPWRIGHT_TESTS)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  add_link_options(-static)  # tests start wherever they are
endif()
