# Reference of the public headers: target docs, built by scripts/docs. Not part of the default build.
configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/docs/Doxyfile @ONLY)
find_program(PARSER_MX_DOXYGEN doxygen)
mark_as_advanced(PARSER_MX_DOXYGEN)
if(PARSER_MX_DOXYGEN)
    add_custom_target(
        docs
        COMMAND ${PARSER_MX_DOXYGEN} ${PROJECT_BINARY_DIR}/docs/Doxyfile
        COMMENT "Writing ${PROJECT_BINARY_DIR}/docs/html"
        VERBATIM)
endif()
