# The compile and link rules of every target of this project.

# Compile rules: language, visibility, warnings, assertions, paths, instrumentation.
function(parser_mx_rules target)
    parser_mx_unity_by_folder(${target})
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
                # Functions of a library are never replaced inside that library.
                -fno-semantic-interposition
                # Assertions are part of the behaviour, in every build type.
                -UNDEBUG
                # __FILE__ is relative to the root of the project, without a path of the build machine.
                -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
    # As bugprone-reserved-identifier of clang-tidy, which takes much longer.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>)
    # Hardening: memory errors abort. The checks of the C library need an optimised build.
    target_compile_options(
        ${target}
        PRIVATE "$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2;-D_GLIBCXX_ASSERTIONS>"
                -fstack-protector-strong)
    # With them gcc 12 reports overlapping copies and invalid pointers inside its own strings and vectors.
    target_compile_options(
        ${target} PRIVATE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>
                          $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-free-nonheap-object>)
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack)
    # A build identifier would depend on the debug information, which has the build's path. Without it equal
    # sources give equal packages.
    target_link_options(${target} PRIVATE -Wl,--build-id=none)
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

# A unity build compiles the sources of one folder together: local names are unique in a folder, and a new
# source does not regroup the others.
function(parser_mx_unity_by_folder target)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        cmake_path(GET source PARENT_PATH folder)
        string(MAKE_C_IDENTIFIER "${folder}" group)
        if(source MATCHES "\\$<" OR group STREQUAL "")
            continue()
        endif()
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()

function(parser_mx_library_rules target)
    parser_mx_rules(${target})
    target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
endfunction()

# abidw reads the types of these objects' library from their debug information, which the packages do not
# contain. Debug information takes almost a third of the compiler's time: abi/describe takes the types of the
# other libraries from their headers.
function(parser_mx_described_types target)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-g>)
endfunction()

# A library made of object libraries, with its version, its export map and its target name in the CMake
# package. The first number of the version is the SONAME's.
function(parser_mx_library target version map)
    cmake_parse_arguments(ARG "" "" "OBJECTS" ${ARGN})
    list(TRANSFORM ARG_OBJECTS REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>")
    if(PARSER_MX_STATIC)
        add_library(${target} STATIC ${ARG_OBJECTS})
    else()
        add_library(${target} SHARED ${ARG_OBJECTS})
        parser_mx_link_rules(${target} ${CMAKE_CURRENT_SOURCE_DIR}/${map})
    endif()
    add_library(parser-mx::${target} ALIAS ${target})
    parser_mx_library_rules(${target})
    string(REGEX MATCH "^[0-9]+" soversion ${version})
    set_target_properties(${target} PROPERTIES VERSION ${version} SOVERSION ${soversion})
    target_include_directories(
        ${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>)
endfunction()

# Link rules of a shared library: it exports what the map names, and has no undefined symbols.
function(parser_mx_link_rules target map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${map})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${map})
    # A room's objects that a library does not use are left out of it.
    target_link_options(${target} PRIVATE -Wl,--as-needed -Wl,--gc-sections
                                          -Wl,-Bsymbolic-functions)
    if(NOT PARSER_MX_SANITIZE)
        # The program provides the functions of a sanitizer, so they stay undefined here.
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
endfunction()
