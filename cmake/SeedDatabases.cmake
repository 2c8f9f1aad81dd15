# Seed databases: Options.db3 and Statistics.db3 are generated from the SQL in
# res/db/ into the build's resources folder, where AppPaths::Res() finds them. No
# binary database is kept in the source tree.
#
# Included by the top-level CMakeLists.txt; also runs itself in script mode
# (cmake -P) to build one file: the SQL goes into a temporary file that replaces the
# seed only when sqlite3 succeeded, so a failed build never leaves half a seed.

if(CMAKE_SCRIPT_MODE_FILE)
  file(REMOVE "${SEED_OUTPUT}.tmp")
  execute_process(
    COMMAND "${SQLITE3}" -bail "${SEED_OUTPUT}.tmp"
    INPUT_FILE "${SEED_SQL}"
    RESULT_VARIABLE status
    ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    file(REMOVE "${SEED_OUTPUT}.tmp")
    message(FATAL_ERROR "Building ${SEED_OUTPUT} from ${SEED_SQL} failed: ${errors}")
  endif()
  file(RENAME "${SEED_OUTPUT}.tmp" "${SEED_OUTPUT}")
  return()
endif()

find_program(PEDOMETER_SQLITE3 sqlite3 REQUIRED)

set(PEDOMETER_SEED_DATABASES)
foreach(seed Options Statistics)
  set(sql ${CMAKE_SOURCE_DIR}/res/db/${seed}.sql)
  set(output ${CMAKE_BINARY_DIR}/res/${seed}.db3)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/res
    COMMAND ${CMAKE_COMMAND} -DSQLITE3=${PEDOMETER_SQLITE3} -DSEED_SQL=${sql}
            -DSEED_OUTPUT=${output} -P ${CMAKE_CURRENT_LIST_FILE}
    DEPENDS ${sql} ${CMAKE_CURRENT_LIST_FILE}
    COMMENT "Generating seed database ${seed}.db3"
    VERBATIM)
  list(APPEND PEDOMETER_SEED_DATABASES ${output})
endforeach()
add_custom_target(pedometer_seed_databases ALL DEPENDS ${PEDOMETER_SEED_DATABASES})
# pedometer_platform depends on the resources, so every test and tool finds the seeds.
add_dependencies(pedometer_resources pedometer_seed_databases)
