# Script mode: install BUILD_DIR into WORK_DIR/prefix, then configure, build
# and run the consumer in SOURCE_DIR against it.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): ${ARGN}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix}
    "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${LINK_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer)

# The same program through pkg-config.
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --define-variable=prefix=${prefix} --cflags --libs zuutility
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "pkg-config does not know zuutility")
  endif()
  separate_arguments(flags UNIX_COMMAND "${flags}")
  separate_arguments(build_flags UNIX_COMMAND "${CXX_FLAGS} ${LINK_FLAGS}")
  run(${CXX} ${build_flags} ${SOURCE_DIR}/main.cpp ${flags} -Wl,-rpath,${prefix}/lib
      -o ${WORK_DIR}/pc_consumer)
  run(${WORK_DIR}/pc_consumer)
endif()
