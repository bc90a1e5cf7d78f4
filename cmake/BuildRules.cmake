# The rules under which every target of this project is compiled and linked.

# Compile rules: language, visibility, warnings, assertions, paths, instrumentation.
function(parser_mx_rules target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   POSITION_INDEPENDENT_CODE ON)
    target_compile_options(
        ${target}
        PRIVATE -Wall
                -Wextra
                -Wpedantic
                -Wshadow
                -Wconversion
                # Assertions are part of the behaviour, in every build type.
                -UNDEBUG
                # __FILE__ starts at the root of the project, never at a path of the build machine.
                -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
    if(PARSER_MX_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(PARSER_MX_SANITIZE)
        target_compile_options(
            ${target} PRIVATE -fsanitize=${PARSER_MX_SANITIZE} -fno-sanitize-recover=all
                              -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${PARSER_MX_SANITIZE})
    endif()
    if(PARSER_MX_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
        target_link_options(${target} PUBLIC --coverage)
    endif()
endfunction()

# A shared library made of object libraries, with its version and its package target name.
# VERSION is the full version; its first number is the SONAME's.
function(parser_mx_shared_library target version)
    string(REGEX MATCH "^[0-9]+" soversion ${version})
    set_target_properties(${target} PROPERTIES VERSION ${version} SOVERSION ${soversion})
    target_link_options(${target} PRIVATE -Wl,--as-needed)
    if(NOT PARSER_MX_SANITIZE)
        # A sanitizer's own functions come from the program, so they stay undefined here.
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
    add_library(parser-mx::${target} ALIAS ${target})
endfunction()
