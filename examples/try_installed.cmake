# Installs BUILD_DIR to a temporary prefix and builds and runs the C example against it, by find_package and by
# pkg-config. The tree is moved after the installation: nothing in it may depend on where it was installed.
set(work ${BUILD_DIR}/try_installed)
set(prefix "${work}/moved here")
file(REMOVE_RECURSE ${work})

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(check_table how)
  if(NOT output MATCHES "Propane.*hs Vph.*Natural gas.*hs Vph" OR output MATCHES "nan|inf")
    message(FATAL_ERROR "${how}: unexpected output\n${output}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${work}/prefix --config "${CONFIG}")
file(RENAME ${work}/prefix ${prefix})
foreach(file include/tessarel/tessarel.h share/tessarel/BIPs.mix share/tessarel/fluids/propane.saf)
  if(NOT EXISTS "${prefix}/${file}")
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()

run(${CMAKE_COMMAND} -S ${EXAMPLES_DIR}/installed -B ${work}/host "-DCMAKE_PREFIX_PATH=${prefix}"
    -DCMAKE_C_COMPILER=${C_COMPILER})
run(${CMAKE_COMMAND} --build ${work}/host)
run(${work}/host/properties)
check_table("find_package")

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  # pkg-config and the shell disagree about blanks in paths.
  file(RENAME ${prefix} ${work}/moved)
  set(prefix ${work}/moved)
  set(ENV{PKG_CONFIG_PATH} "${prefix}/lib/pkgconfig")
  run(${PKG_CONFIG} --cflags --libs tessarel)
  separate_arguments(flags UNIX_COMMAND "${output}")
  run(${C_COMPILER} ${EXAMPLES_DIR}/properties.c -o ${work}/properties ${flags})
  set(ENV{LD_LIBRARY_PATH} "${prefix}/lib")
  run(${work}/properties)
  check_table("pkg-config")
endif()
