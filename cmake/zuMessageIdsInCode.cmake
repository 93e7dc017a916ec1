# The `message_ids` test: zu/core/zuMessageIds.h is the only place in the
# library's code (tests aside) that spells a message id of the catalogue as a
# number; everything else throws by name. Comments may quote the numbers.
#   cmake -DSOURCE_DIR=<repo> -P zuMessageIdsInCode.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/zuSourceLines.cmake)

file(STRINGS ${SOURCE_DIR}/zu/core/resources/ResourcesEn.msg entries REGEX "^[0-9]+\t")
set(ids "")
foreach(entry IN LISTS entries)
  string(REGEX MATCH "^[0-9]+" id "${entry}")
  list(APPEND ids ${id})
endforeach()
list(JOIN ids "|" alternatives)

set(faults "")
zu_tree_files(tree)
foreach(file IN LISTS tree)
  if(file MATCHES "_test\\.cpp$|^zu/testing/|^zu/core/zuMessageIds\\.h$")
    continue()
  endif()
  zu_source_lines(${file} lines)
  set(number 0)
  foreach(line IN LISTS lines)
    math(EXPR number "${number} + 1")
    string(REGEX REPLACE "//.*" "" code "${line}")
    if(code MATCHES "(^|[^0-9A-Za-z_])(${alternatives})([^0-9A-Za-z_]|$)")
      string(APPEND faults "${file}:${number}: message id ${CMAKE_MATCH_2} spelled as a number; "
                           "use its name from zu/core/zuMessageIds.h\n")
    endif()
  endforeach()
endforeach()

if(faults)
  message(FATAL_ERROR "Message ids outside zuMessageIds.h:\n${faults}")
endif()
