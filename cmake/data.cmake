# The fluid data in the build tree, laid out as installed: lib/BIPs.mix beside the library, fluids/ with the records
# and the database made from them. TESSAREL_FLUID_FILES, TESSAREL_FLUID_DATABASE and TESSAREL_BIPS_FILE name what is to
# be installed.
file(GLOB TESSAREL_FLUID_FILES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/data/fluids/*.saf)
set(TESSAREL_FLUID_DATABASE ${PROJECT_BINARY_DIR}/fluids/fluids.db)
set(TESSAREL_BIPS_FILE ${PROJECT_SOURCE_DIR}/data/BIPs.mix)

add_executable(make_fluid_database ${PROJECT_SOURCE_DIR}/tools/make_fluid_database.cpp)
target_link_libraries(make_fluid_database PRIVATE tessarel_options SQLite::SQLite3)

add_custom_command(
  OUTPUT ${TESSAREL_FLUID_DATABASE}
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/data/fluids ${PROJECT_BINARY_DIR}/fluids
  COMMAND make_fluid_database ${TESSAREL_FLUID_DATABASE} ${PROJECT_SOURCE_DIR}/data/fluids
  DEPENDS ${TESSAREL_FLUID_FILES}
  COMMENT "Making the fluid database"
  VERBATIM)
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/lib/BIPs.mix
  COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/lib
  COMMAND ${CMAKE_COMMAND} -E copy ${TESSAREL_BIPS_FILE} ${PROJECT_BINARY_DIR}/lib/BIPs.mix
  DEPENDS ${TESSAREL_BIPS_FILE}
  VERBATIM)
add_custom_target(tessarel_data ALL DEPENDS ${TESSAREL_FLUID_DATABASE} ${PROJECT_BINARY_DIR}/lib/BIPs.mix)
