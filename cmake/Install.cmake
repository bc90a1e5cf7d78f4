# The files of `cmake --install` and their places. Each component is one Debian package.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/parser-mx)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(documents_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/libparser-mx-dev)

# The same permissions for every umask.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# In a separate prefix all paths are relative, so that the prefix can be moved. Below /usr the system's search
# order applies, in which a host's own companion library comes first.
set(relocatable_rpath "")
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    file(RELATIVE_PATH bin_to_lib /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
    set(relocatable_rpath "$ORIGIN" "$ORIGIN/${bin_to_lib}")
endif()

# Installs one library and its links into their packages.
function(parser_mx_install_library target component)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${relocatable_rpath}")
    install(
        TARGETS ${target}
        EXPORT parser-mx-targets
        LIBRARY COMPONENT ${component} NAMELINK_COMPONENT dev
        ARCHIVE COMPONENT dev
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endfunction()

parser_mx_install_library(parser-mx parser)
parser_mx_install_library(mxfileext mxfileext)
parser_mx_install_library(device-database database)
install(
    TARGETS datamodel
    EXPORT parser-mx-targets
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
set(rooms_with_headers datamodel devicedb mxfileext vendor/mx)
set(libraries parser-mx mxfileext device-database)
if(PARSER_MX_BUILD_MODULE)
    parser_mx_install_library(mxmodule mxmodule)
    parser_mx_install_library(mxstation mxstation)
    parser_mx_install_library(mxonline mxonline)
    list(APPEND rooms_with_headers mxmodule mxstation mxonline)
    list(APPEND libraries mxmodule mxstation mxonline)
endif()
foreach(room IN LISTS rooms_with_headers)
    install(
        DIRECTORY ${PROJECT_SOURCE_DIR}/${room}/include/
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT dev
        FILES_MATCHING
        PATTERN "*.h")
endforeach()

# An engine that the device database loads on demand, so that its driver is optional.
if(TARGET device-database-postgresql)
    if(relocatable_rpath)
        set_target_properties(device-database-postgresql PROPERTIES INSTALL_RPATH "$ORIGIN/..")
    endif()
    install(
        TARGETS device-database-postgresql
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/device-database COMPONENT postgresql)
endif()

# The CMake package. Users of a static library must link its dependencies too.
list(JOIN libraries ", " component_names)
string(APPEND component_names ", datamodel")
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/parser-mx-config.cmake.in
    ${PROJECT_BINARY_DIR}/parser-mx-config.cmake
    INSTALL_DESTINATION ${package_dir}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/parser-mx-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(
    EXPORT parser-mx-targets
    NAMESPACE parser-mx::
    DESTINATION ${package_dir}
    COMPONENT dev)
install(
    FILES ${PROJECT_BINARY_DIR}/parser-mx-config.cmake
          ${PROJECT_BINARY_DIR}/parser-mx-config-version.cmake
    DESTINATION ${package_dir}
    COMPONENT dev)

# The pkg-config files state their place relative to the prefix.
file(RELATIVE_PATH pkgconfig_to_prefix /${pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix ${pkgconfig_to_prefix})
if(PARSER_MX_STATIC)
    set(pkgconfig_requires Requires)
    set(pkgconfig_driver_libs " -lsqlite3 -ldl")
    set(pkgconfig_module_requires "Requires: parser-mx mxfileext device-database\n")
    set(pkgconfig_module_libs " -lfmt -lyaml-cpp -lPocoXML -lPocoFoundation -lz")
    set(pkgconfig_station_libs " -lfmt -lyaml-cpp -lPocoFoundation -lz")
    set(pkgconfig_online_libs " -lmodbus -lfmt -lyaml-cpp -lPocoFoundation -lz")
else()
    set(pkgconfig_requires Requires.private)
    set(pkgconfig_driver_libs "")
    set(pkgconfig_module_requires "")
    set(pkgconfig_module_libs "")
    set(pkgconfig_station_libs "")
    set(pkgconfig_online_libs "")
endif()
foreach(name IN LISTS libraries)
    get_target_property(library_version ${name} VERSION)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(
        FILES ${PROJECT_BINARY_DIR}/${name}.pc
        DESTINATION ${pkgconfig_dir}
        COMPONENT dev)
endforeach()

if(PARSER_MX_BUILD_TOOL)
    set_target_properties(mxtool PROPERTIES INSTALL_RPATH "${relocatable_rpath}")
    install(TARGETS mxtool RUNTIME COMPONENT tool)
    # Loaded by `mxtool serve`, so that its HTTP library is optional.
    if(TARGET mx-workbench)
        if(relocatable_rpath)
            set_target_properties(mx-workbench PROPERTIES INSTALL_RPATH "$ORIGIN/..")
        endif()
        install(TARGETS mx-workbench LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/mxtool COMPONENT workbench)
    endif()
    install(
        DIRECTORY share/parser-mx
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}
        COMPONENT tool)
    # Manual pages and completions, as far as the build writes them: share/man/man1/*.1,
    # share/bash-completion/completions/mxtool, share/zsh/site-functions/_mxtool.
    foreach(pages man bash-completion zsh)
        install(
            DIRECTORY ${PROJECT_BINARY_DIR}/share/${pages}
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}
            COMPONENT tool
            OPTIONAL)
    endforeach()
    # Compressed like Debian's manual pages; without the time, which would differ in each build.
    install(CODE "
        file(GLOB pages \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATAROOTDIR}/man/man1/mxtool*.1\")
        if(pages)
            execute_process(COMMAND gzip -9nf \${pages} COMMAND_ERROR_IS_FATAL ANY)
        endif()"
        COMPONENT tool)
endif()

if(PARSER_MX_BUILD_MODULE AND CMAKE_INSTALL_PREFIX STREQUAL "/usr" AND NOT PARSER_MX_STATIC)
    include(${PROJECT_SOURCE_DIR}/cmake/PythonPackage.cmake)
endif()

install(
    FILES README.md CHANGELOG.md
    DESTINATION ${documents_dir}
    COMPONENT dev)
install(
    DIRECTORY docs examples
    DESTINATION ${documents_dir}
    COMPONENT dev)
if(PARSER_MX_BUILD_TOOL)
    install(
        DIRECTORY ${PROJECT_BINARY_DIR}/examples/modules
        DESTINATION ${documents_dir}/examples
        COMPONENT dev
        FILES_MATCHING
        PATTERN "*.bin")
endif()
