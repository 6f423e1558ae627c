# mw_leave_out(VARIABLE): takes those sources from the variable's list that cannot be compiled for Windows. They
# are named, with the reasons, in skipped.txt.
macro(mw_leave_out variable)
  if(WIN32)
    file(STRINGS ${CMAKE_CURRENT_SOURCE_DIR}/windows/skipped.txt leftOut REGEX "^[^#]*\\.cpp ")
    foreach(line ${leftOut})
      string(REGEX REPLACE " .*" "" source "${line}")
      list(REMOVE_ITEM ${variable} ${CMAKE_CURRENT_SOURCE_DIR}/${source})
    endforeach()
  endif()
endmacro()
