# Reference of the public headers: target docs, made by scripts/docs. No part of the build itself.
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
