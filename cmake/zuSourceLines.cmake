# Shared by the source-checking scripts run as tests (zuLayering.cmake,
# zuMessageIdsInCode.cmake): the library's files and their lines.

# Every .h and .cpp under zu/, relative to SOURCE_DIR.
function(zu_tree_files out)
  file(GLOB_RECURSE tree RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/zu/*.h ${SOURCE_DIR}/zu/*.cpp)
  set(${out} ${tree} PARENT_SCOPE)
endfunction()

# The lines of `file` (relative to SOURCE_DIR) as a list, one element a
# line, so that element N - 1 is line N. Characters that CMake's lists treat
# specially ([ ] ; \) are dropped first: no check needs them.
function(zu_source_lines file out)
  file(READ ${SOURCE_DIR}/${file} content)
  string(REGEX REPLACE "[][;\\]" "" content "${content}")
  string(REPLACE "\n" ";" lines "${content}")
  set(${out} "${lines}" PARENT_SCOPE)
endfunction()
